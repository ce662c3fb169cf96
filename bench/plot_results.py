#!/usr/bin/env python3
"""Draws what convert_bench measured: bench/plot_results.py RESULTS.json docs/performance.svg

Processor time of each conversion with a log and without one, beside copying the log and beside the toolkit's
own reading of the same scene. Needs the Debian package python3-matplotlib.
"""
from __future__ import annotations

import argparse
import json
import pathlib
from typing import Any

import matplotlib

matplotlib.use('svg')
matplotlib.rcParams['svg.hashsalt'] = 'velloreader'  # the same results give the same file
from matplotlib import pyplot  # noqa: E402

MICROSECONDS = 1e6
BARS = (
    ('with a log', '#1f5f8b', lambda result: result['withLog']['cpuSeconds']),
    ('copying that log (cat)', '#a9c9dd', lambda result: result['catCpuSeconds']),
    ('without a log', '#c4661f', lambda result: result['withoutLog']['cpuSeconds']),
    ("the toolkit's reading of the scene", '#eec39a', lambda result: result['toolkit']['cpuSeconds']),
)
#: What takes far longer for each item stands in a chart of its own.
LARGE = 5.0


def micros(result: dict[str, Any], value: Any) -> float:
    return float(value(result) / result['count'] * MICROSECONDS) if 'withLog' in result else 0.0


def draw(axes: Any, results: list[dict[str, Any]]) -> None:
    height = 0.8 / len(BARS)
    for bar, (name, color, value) in enumerate(BARS):
        places = [-position - bar * height for position in range(len(results))]
        axes.barh(places, [micros(result, value) for result in results], height, color=color, label=name)
    axes.set_yticks([-position - 1.5 * height for position in range(len(results))],
                    [f"{result['name']}, {result['count']:,}" for result in results])
    axes.set_xlabel('microseconds of processor time for each')
    axes.spines[['top', 'right']].set_visible(False)


def main() -> None:
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('results', type=pathlib.Path, help='what convert_bench --json printed')
    parser.add_argument('chart', type=pathlib.Path)
    options = parser.parse_args()
    results = [result for result in json.loads(options.results.read_text()) if 'withLog' in result]
    small = [result for result in results if micros(result, BARS[0][2]) < LARGE]
    large = [result for result in results if micros(result, BARS[0][2]) >= LARGE]
    figure, (upper, lower) = pyplot.subplots(
        2, 1, figsize=(9, 0.6 * len(results) + 1.5), layout='constrained',
        gridspec_kw={'height_ratios': [max(len(small), 1), max(len(large), 1)]})
    draw(upper, small)
    draw(lower, large)
    upper.legend(frameon=False, loc='lower right')
    figure.savefig(options.chart, metadata={'Date': None})


if __name__ == '__main__':
    main()
