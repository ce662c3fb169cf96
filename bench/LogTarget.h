#pragma once

#include "dump/FltLogBuffer.h"

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <sstream>
#include <string>
#include <unistd.h>

/// A log that goes to nowhere: what remains is the work of making it.
class LogTarget
{
public:
    LogTarget() { stream.buffer.open("/dev/null"); }
    ~LogTarget() { stream.buffer.close(); }
    LogTarget(LogTarget const&) = delete;
    LogTarget& operator=(LogTarget const&) = delete;

    FltLogStream stream;
};

/// The text that a writer makes.
template <class Writer>
std::string textOf(Writer const& writer)
{
    std::ostringstream os;
    writer(os);
    return os.str();
}

/// Plain writing: finished text, handed over in 64 kB blocks.
inline void writePlainly(benchmark::State& state, std::string const& text)
{
    std::string block;
    while (block.size() < 65536)
        block += text;
    double const pieces = static_cast<double>(block.size()) / static_cast<double>(text.size());
    int const file = open("/dev/null", O_WRONLY | O_CLOEXEC);
    std::string room(block.size(), '\0');
    for ([[maybe_unused]] auto _ : state) {
        block.copy(room.data(), block.size());
        benchmark::DoNotOptimize(write(file, room.data(), room.size()));
    }
    close(file);
    state.counters["each"] = benchmark::Counter(static_cast<double>(state.iterations()) * pieces,
                                                benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
    state.SetItemsProcessed(static_cast<std::int64_t>(static_cast<double>(state.iterations()) * pieces));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(block.size()));
}
