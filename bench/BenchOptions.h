#pragma once

#include <string>
#include <vector>

/// The options that all benchmarks understand, so that "./dev bench" can hand the same ones to each.
struct BenchOptions {
    bool json = false;  ///< --json: for programs, not for people.
    bool large = false; ///< --large: also the sizes that take minutes.
    int runs = 3;       ///< --runs=N: the best of N runs counts.

    /// What is left for Google Benchmark, with the program's name in front.
    std::vector<char*> rest;

    /// Reads the command line; prints the usage and ends the program for --help or what nobody knows.
    /// @param takesRest whether options of Google Benchmark are of use to the program
    BenchOptions(int argc, char** argv, bool takesRest);

private:
    std::string format = "--benchmark_format=json";
};
