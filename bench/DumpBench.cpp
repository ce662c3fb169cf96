// Lines of a dump: by FltDump onto a log, over the plain writing of the same bytes, and by the operators of
// the standard library for comparison.

#include "BenchOptions.h"
#include "LogTarget.h"
#include "dump/FltDump.h"

#include <array>
#include <cstdint>
#include <string>

namespace
{

constexpr std::size_t valueCount = 64;

template <class Value>
using Values = std::array<Value, valueCount>;

/// Values that look random, the same in every run.
template <class Value, class Make>
Values<Value> valuesBy(Make make)
{
    Values<Value> values;
    std::uint64_t state = 88172645463325252U;
    for (Value& value : values) {
        state ^= state << 13;
        state ^= state >> 7;
        state ^= state << 17;
        value = static_cast<Value>(make(state));
    }
    return values;
}

double fraction(std::uint64_t random)
{
    return static_cast<double>(random >> 11) / 9007199254740992.0;
}

template <class Value, class Line>
void add(std::string const& name, Values<Value> values, Line line)
{
    auto const byDump = [values, line](std::ostream& os) {
        for (Value const& value : values)
            line(os, value);
    };
    benchmark::RegisterBenchmark((name + "/dump").c_str(), [byDump](benchmark::State& state) {
        LogTarget log;
        for ([[maybe_unused]] auto _ : state)
            byDump(log.stream);
        state.SetItemsProcessed(state.iterations() * std::int64_t(valueCount));
        state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(textOf(byDump).size()));
    });
    benchmark::RegisterBenchmark((name + "/plain").c_str(), [byDump](benchmark::State& state) {
        writePlainly(state, textOf(byDump));
        state.SetItemsProcessed(state.items_processed() * std::int64_t(valueCount));
    });
}

template <class Value>
void addNumbers(std::string const& name, Values<Value> values)
{
    add(name, values, [](std::ostream& os, Value value) { FltDump(os).line("Xcoordinate: ", value); });
    benchmark::RegisterBenchmark((name + "/operators").c_str(), [values](benchmark::State& state) {
        LogTarget log;
        for ([[maybe_unused]] auto _ : state)
            for (Value const& value : values)
                log.stream << "Xcoordinate: " << value << std::endl;
        state.SetItemsProcessed(state.iterations() * std::int64_t(valueCount));
    });
}

void addAll()
{
    using Bits = std::uint64_t;
    addNumbers("int16", valuesBy<std::int16_t>([](Bits random) { return random; }));
    addNumbers("int32", valuesBy<std::int32_t>([](Bits random) { return random; }));
    addNumbers("uint32", valuesBy<std::uint32_t>([](Bits random) { return random; }));
    addNumbers("float, -1 to 1", valuesBy<float>([](Bits random) { return 2 * fraction(random) - 1; }));
    addNumbers("double, zero", valuesBy<double>([](Bits) { return 0; }));
    addNumbers("double, whole", valuesBy<double>([](Bits random) { return random % 100000; }));
    addNumbers("double, millimetres",
               valuesBy<double>([](Bits random) { return static_cast<double>(random % 1000000) / 1000; }));
    addNumbers("double, up to 1e4", valuesBy<double>([](Bits random) { return 1e4 * fraction(random); }));
    addNumbers("double, up to 1e7", valuesBy<double>([](Bits random) { return 1e7 * fraction(random); }));
    addNumbers("double, up to 1e-7", valuesBy<double>([](Bits random) { return 1e-7 * fraction(random); }));
    addNumbers("double, up to 1e80", valuesBy<double>([](Bits random) { return 1e80 * fraction(random); }));

    auto const words = valuesBy<std::uint32_t>([](Bits random) { return random; });
    add("text", words, [](std::ostream& os, std::uint32_t) { FltDump(os).text("idASCII: ", "tower_12"); });
    add("flag", words,
        [](std::ostream& os, std::uint32_t word) { FltDump(os).flag("          No Color: ", word, 30); });
    add("pointer", words,
        [](std::ostream& os, std::uint32_t word) { FltDump(os).pointer(static_cast<std::int32_t>(word)); });
    add("colour byte", words, [](std::ostream& os, std::uint32_t word) {
        FltDump(os).colorByte("packedColor: alpha=", static_cast<std::uint8_t>(word));
    });
}

} // namespace

int main(int argc, char** argv)
{
    BenchOptions options(argc, argv, true);
    int count = static_cast<int>(options.rest.size());
    addAll();
    benchmark::Initialize(&count, options.rest.data());
    benchmark::RunSpecifiedBenchmarks();
}
