#include "BenchOptions.h"

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace
{

constexpr char usage[] = "Options of all benchmarks:\n"
                         "  --json     results as JSON\n"
                         "  --large    also the sizes that take minutes\n"
                         "  --runs=N   the best of N runs counts; 3 unless told\n"
                         "  --benchmark_...  options of Google Benchmark, for those that use it\n";

[[noreturn]] void end(std::FILE* stream, int code)
{
    std::fputs(usage, stream);
    std::exit(code);
}

} // namespace

BenchOptions::BenchOptions(int argc, char** argv, bool takesRest)
{
    rest.push_back(argv[0]);
    for (int i = 1; i < argc; ++i) {
        std::string_view const option = argv[i];
        if (option == "--json")
            json = true;
        else if (option == "--large")
            large = true;
        else if (option.substr(0, 7) == "--runs=" && std::atoi(argv[i] + 7) > 0)
            runs = std::atoi(argv[i] + 7);
        else if (option.substr(0, 12) == "--benchmark_")
            rest.push_back(argv[i]);
        else if (option == "--help" || option == "-h")
            end(stdout, 0);
        else
            end(stderr, 2);
    }
    if (json && takesRest)
        rest.push_back(format.data());
}
