#!/usr/bin/env python3
"""Counts the instructions of conversions, what is drawn, and memory, and compares them with budgets.

All of it is the same on a busy machine and on an idle one. Run by "./dev bench --check"; with --update the
budgets become what was counted.
"""
from __future__ import annotations

import argparse
import json
import pathlib
import re
import subprocess
import sys
import tempfile
from typing import Any, NamedTuple

HERE = pathlib.Path(__file__).resolve().parent
BUDGETS = HERE / 'budgets.json'
FUNCTION = 'convertCounted'
NOTHING = 'nothing'
TENFOLD = 10


class Result(NamedTuple):
    name: str
    items: int
    instructions: int


def count(program: str, folder: pathlib.Path) -> list[Result]:
    """Runs the program under the counter."""
    subprocess.run([program, str(folder), 'write'], check=True)
    out = folder / 'callgrind.out'
    counted = subprocess.run(['valgrind', '--tool=callgrind', '-q', f'--callgrind-out-file={out}.%p',
                              f'--toggle-collect={FUNCTION}', f'--dump-after={FUNCTION}',
                              program, str(folder)], check=True, stdout=subprocess.PIPE, text=True)
    results = []
    for line in counted.stdout.splitlines():
        process, items, name = line.split(' ', 2)
        counts = pathlib.Path(f'{out}.{process}.1').read_text()
        totals = re.search(r'^(?:totals|summary): (\d+)', counts, re.M)
        if totals is None:
            sys.exit(f'check_budgets: nothing was counted for "{name}"')
        results.append(Result(name, int(items), int(totals.group(1))))
    return results


def other_counts(program: pathlib.Path, folder: pathlib.Path) -> dict[str, dict[str, int]]:
    """What the program beside it counts: by kind, and by name."""
    counted = subprocess.run([str(program), str(folder)], check=True, stdout=subprocess.PIPE, text=True)
    results: dict[str, dict[str, int]] = {'counts': {}, 'peaks': {}}
    for line in counted.stdout.splitlines():
        kind, number, name = line.split(' ', 2)
        results[kind + 's'][name] = int(number)
    return results


def check_others(kind: str, counted: dict[str, int], kept: dict[str, int], tolerance: float) -> list[str]:
    """What of one kind is wrong, in words."""
    faults = [f'"{name}" has ' + ('no budget' if name in counted else 'a budget, and was not counted')
              for name in sorted(counted.keys() ^ kept.keys())]
    return faults + [f'{kind}: "{name}" is {counted[name]:,}; its budget is {kept[name]:,}'
                     for name in counted.keys() & kept.keys() if counted[name] > kept[name] * tolerance]


def label(name: str, items: int) -> str:
    return f'{name}, {items}'


def growths(results: list[Result]) -> dict[str, float]:
    """How much more each item takes when there are ten times as many."""
    fixed = next(instructions for name, _, instructions in results if name == NOTHING)
    each: dict[tuple[str, int], float] = {}
    for name, items, instructions in results:
        if items > 0:
            each[name, items] = max(instructions - fixed, 1) / items
    return {name: each[name, TENFOLD * items] / value
            for (name, items), value in each.items() if (name, TENFOLD * items) in each}


def check(results: list[Result], budgets: dict[str, Any]) -> list[str]:
    """What is wrong, in words."""
    faults = []
    counted = {label(name, items): instructions for name, items, instructions in results}
    kept = budgets['instructions']
    for key in sorted(counted.keys() ^ kept.keys()):
        faults.append(f'"{key}" has ' + ('no budget' if key in counted else 'a budget, and was not counted'))
    for key in counted.keys() & kept.keys():
        if counted[key] > kept[key] * budgets['tolerance']:
            faults.append(f'"{key}" takes {counted[key]:,} instructions; its budget is {kept[key]:,}')
    for name, growth in growths(results).items():
        if growth > budgets['mostGrowth']:
            faults.append(f'"{name}": ten times as many take {growth:.2f} times as long each')
    return faults


def main() -> int:
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument('program', help='counted_conversions')
    parser.add_argument('--update', action='store_true', help='make what was counted the budgets')
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        results = count(options.program, pathlib.Path(folder))
        beside = pathlib.Path(options.program).with_name('counted_results')
        others = other_counts(beside, pathlib.Path(folder))
    budgets = json.loads(BUDGETS.read_text())
    growth = growths(results)
    sizes = {(result.name, result.items) for result in results if result.items}
    print(f'{"":40} {"number":>8} {"instructions":>14} {"of budget":>9} {"growth":>7}')
    for name, items, instructions in results:
        budget = budgets['instructions'].get(label(name, items))
        share = f'{instructions / budget:9.2f}' if budget else f'{"-":>9}'
        is_tenfold = (name, items // TENFOLD) in sizes
        grown = f'{growth[name]:7.2f}' if is_tenfold and name in growth else ''
        print(f'{name:40} {items:8} {instructions:14,} {share} {grown}')
    for kind, counted in others.items():
        for name, number in counted.items():
            budget = budgets.get(kind, {}).get(name)
            print(f'{name:40} {"":8} {number:14,} ' + (f'{number / budget:9.2f}' if budget else f'{"-":>9}'))
    if options.update:
        budgets.update(others)
        budgets['instructions'] = {label(name, items): instructions for name, items, instructions in results}
        BUDGETS.write_text(json.dumps(budgets, indent=2) + '\n')
        return 0
    faults = check(results, budgets)
    faults += check_others('counts', others['counts'], budgets['counts'], 1)
    faults += check_others('peaks', others['peaks'], budgets['peaks'], budgets['peakTolerance'])
    for fault in faults:
        print(f'check_budgets: {fault}', file=sys.stderr)
    return 1 if faults else 0


if __name__ == '__main__':
    sys.exit(main())
