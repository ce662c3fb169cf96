// Looks for the databases that take most memory and most time for their size: each kind of record, each
// feature and each fault, repeated to a size, converted in a process of its own.
//
//     costs [KILOBYTES]
//
// All are looked at when they are small, the worst of them at the size given, a megabyte without one, and at
// four times as much. What a database of a header alone takes is left out.
//
// Small databases may cost more than their size explains: those of features are written as Open Inventor and
// as VRML97 too. None of less than 100 kB may take more than 60 MB or a second; otherwise the program fails.

#include "robustness/Endurance.h"
#include "support/ProcessUsage.h"
#include "support/ScratchFolder.h"
#include "writer/EveryRecord.h"

#include "loader/FltLoader.h"
#include "records/FltRecordTable.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <functional>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace
{

constexpr int revision = 1580;
constexpr int highestOpcode = 160;

/// Something to be repeated in a database.
struct Pattern {
    std::string name;
    std::string bytes;
    std::string head; ///< Once in front of all.
};

enum class Conversion { exact, exactWithLog, complete };

char const* nameOf(Conversion conversion)
{
    return conversion == Conversion::exact      ? "exact"
           : conversion == Conversion::complete ? "complete"
                                                : "exact, log";
}

struct Cost {
    Pattern const* pattern;
    Conversion conversion;
    std::size_t bytes;  ///< Of the file.
    double memory;      ///< Bytes for each byte of the file.
    double nanoseconds; ///< Of processor time for each byte of the file.
};

std::string record(std::string_view name, FltWriter::Fields const& fields = {})
{
    return FltWriter(revision).add(name, fields).lastRecord();
}

std::string push()
{
    return record("PushLevel");
}
std::string pop()
{
    return record("PopLevel");
}

std::string const& header()
{
    static std::string const bytes = FltWriter(revision).bytes();
    return bytes;
}

/// A record of this opcode and length, filled with a byte.
std::string filled(int opcode, std::size_t length, char byte)
{
    return FltWriter(revision).addRaw(opcode, std::string(length - 4, byte)).lastRecord();
}

void addRecords(std::vector<Pattern>& patterns)
{
    for (int opcode = 1; opcode <= highestOpcode; ++opcode) {
        std::size_t const whole = std::max<std::size_t>(FltRecordTable::reachOf(opcode, 0, revision), 16);
        for (std::size_t const length : {std::size_t{4}, whole, std::size_t{1000}})
            for (char const byte : {'\0', '\xff'}) {
                std::string const name = std::to_string(opcode) + " of " + std::to_string(length) +
                                         " bytes " + (byte == 0 ? "00" : "FF");
                std::string const bytes = filled(opcode, length, byte);
                patterns.push_back({name, bytes, push()});
                if (length == whole) {
                    patterns.push_back({name + ", a level below each", bytes + push() + pop(), push()});
                    patterns.push_back({name + ", one below the other", bytes + push(), push()});
                }
            }
    }
}

void addTopics(std::vector<Pattern>& patterns)
{
    for (FltTopic const& topic : everyTopicInBrief(revision))
        patterns.push_back({"the topic " + topic.name,
                            topic.bytes.substr(topic.begin, topic.end - topic.begin),
                            topic.bytes.substr(header().size(), topic.begin - header().size())});
}

void addFeatures(std::vector<Pattern>& patterns)
{
    FltWriter flt(revision);
    flt.vertexPalette();
    std::vector<double> corners;
    for (int i = 0; i < 3; ++i)
        corners.push_back(flt.vertex("VertexColor", i, i * i, 0));
    std::string const palette = flt.bytes().substr(header().size());
    std::string const object = record("Object", {{"idASCII", "o"}}) + push();
    std::string const face = record("Face") + push() + record("VertexList", {{"offsets", corners}}) + pop();
    std::string const definition = record("InstanceDefinition", {{"instanceDefinitionNumber", 1}});
    std::string const reference = record("InstanceReference", {{"instanceDefinitionNumber", 1}});
    auto const replicated = [](std::string const& node, int copies) {
        return node + record("Replicate", {{"numberOfReplications", copies}}) +
               record("Translate", {{"deltaX", 1}});
    };
    std::string const replica = replicated(record("Group"), 30000) + push();
    std::string const row = replicated(record("Group"), 1000) + push();
    patterns.insert(
        patterns.end(),
        {{"objects of one face", object + face + pop(), palette + push()},
         {"faces that lie on one another", face + record("PushSubface"), palette + push() + object},
         {"instances in their own definition", definition + push() + reference + reference + pop(), push()},
         {"replicas", replica + object + face + pop() + pop(), palette + push()},
         {"replicas of nothing", replica + pop(), push()},
         {"replicas of replicas", row + row + object + face + pop() + pop() + pop(), palette + push()},
         {"replicas in one another", row + object + face + pop(), palette + push()},
         {"replicated instances", replicated(reference, 30000),
          palette + push() + definition + push() + object + face + pop() + pop()},
         {"replicated instances of replicas", replicated(reference, 1000),
          palette + push() + definition + push() + row + object + face + pop() + pop() + pop()},
         {"one replica of much", object + face + pop(), palette + push() + replica},
         {"levels of detail in one another", record("LOD", {{"switchInDistance", 9}}) + push(), push()},
         {"missing files", record("ExternalReference", {{"asciiPath", "none.flt"}}), push()}});
}

/// A database of a pattern, at least so large.
std::string databaseOf(Pattern const& pattern, std::size_t size)
{
    std::string bytes = header() + pattern.head;
    bytes.reserve(size + pattern.bytes.size());
    while (bytes.size() < size)
        bytes += pattern.bytes;
    return bytes;
}

void convert(std::string const& path, Conversion conversion)
{
    FltLoader loader;
    loader.exact = conversion != Conversion::complete;
    if (conversion == Conversion::exactWithLog)
        loader.log = path + ".log";
    try {
        FltScene const scene = loader.load(path);
    } catch (FltLoadError const&) {
        return; // refused, which costs something too
    }
}

/// Runs a piece of work in a process of its own, and takes what it hands over.
std::pair<double, double> inAChild(std::function<std::pair<double, double>()> const& work)
{
    int ends[2];
    if (::pipe(ends) != 0)
        throw std::runtime_error("no pipe");
    pid_t const child = ::fork();
    if (child == 0) {
        std::pair<double, double> const figures = work();
        bool const isSent = ::write(ends[1], &figures, sizeof figures) == sizeof figures;
        ::_exit(isSent ? 0 : 1);
    }
    ::close(ends[1]);
    std::pair<double, double> figures;
    bool const isTaken = ::read(ends[0], &figures, sizeof figures) == sizeof figures;
    ::close(ends[0]);
    int status = 0;
    if (child < 0 || ::waitpid(child, &status, 0) != child || status != 0 || !isTaken)
        throw std::runtime_error("a conversion ended its process");
    return figures;
}

Cost measured(Pattern const& pattern, Conversion conversion, std::size_t size, ScratchFolder const& folder)
{
    std::string const database = databaseOf(pattern, size);
    std::string const least = folder.write("header.flt", header());
    std::string const path = folder.write("large.flt", database);
    auto const [memory, seconds] = inAChild([&] {
        convert(least, conversion);
        double const memoryBefore = static_cast<double>(ProcessUsage::peakMemory());
        double const before = ProcessUsage::processorSeconds();
        convert(path, conversion);
        return std::pair{static_cast<double>(ProcessUsage::peakMemory()) - memoryBefore,
                         ProcessUsage::processorSeconds() - before};
    });
    auto const bytes = static_cast<double>(database.size());
    return {&pattern, conversion, database.size(), memory / bytes, seconds * 1e9 / bytes};
}

using Figure = double Cost::*;

void sortByWorst(std::vector<Cost>& costs, Figure figure)
{
    std::sort(costs.begin(), costs.end(),
              [&](Cost const& one, Cost const& other) { return one.*figure > other.*figure; });
}

/// Prints the worst by one figure, beside what they take at four times the size.
void printWorst(std::vector<Cost> costs, Figure figure, char const* unit, std::size_t size,
                ScratchFolder const& folder)
{
    constexpr std::size_t promising = 40;
    constexpr std::size_t shown = 10;
    sortByWorst(costs, figure);
    costs.resize(std::min(promising, costs.size()));
    for (Cost& cost : costs)
        cost = measured(*cost.pattern, cost.conversion, size, folder);
    sortByWorst(costs, figure);
    std::printf("\nMost %s for each byte, at %zu bytes and at four times the size:\n", unit, size);
    for (std::size_t i = 0; i < std::min(shown, costs.size()); ++i) {
        Cost const larger = measured(*costs[i].pattern, costs[i].conversion, 4 * size, folder);
        std::printf("%10.1f %10.1f  %s, %s\n", costs[i].*figure, larger.*figure,
                    costs[i].pattern->name.c_str(), nameOf(costs[i].conversion));
    }
}

/// What it takes to load a database and to write its scene in a form.
struct SmallCost {
    std::string what;
    double megabytes;
    double seconds;
};

/// Runs flt2iv on a database.
rusage usageOf(std::string const& path, std::string const& form)
{
    pid_t const child = ::fork();
    if (child == 0) {
        int const nowhere = ::open("/dev/null", O_WRONLY);
        ::dup2(nowhere, STDOUT_FILENO);
        ::dup2(nowhere, STDERR_FILENO);
        ::execl(VELLOREADER_PROGRAMS "flt2iv", "flt2iv", "--to", form.c_str(), path.c_str(), nullptr);
        ::_exit(2);
    }
    rusage usage = {};
    int status = 0;
    if (child < 0 || ::wait4(child, &status, 0, &usage) != child || !WIFEXITED(status) ||
        WEXITSTATUS(status) != 0)
        throw std::runtime_error("flt2iv failed with " + path);
    return usage;
}

/// Prints the worst small databases. @return whether none takes too much
bool checkSmall(std::vector<Pattern> const& patterns, ScratchFolder const& folder)
{
    constexpr double mostMegabytes = 60;
    constexpr double mostSeconds = 1;
    constexpr std::size_t shown = 10;
    std::vector<SmallCost> costs;
    for (Pattern const& pattern : patterns)
        for (std::size_t const kilobytes : {20, 97})
            for (std::string const form : {"iv", "wrl"}) {
                std::string const path = folder.write("small.flt", databaseOf(pattern, kilobytes << 10));
                rusage const usage = usageOf(path, form);
                costs.push_back(
                    {pattern.name + " of " + std::to_string(kilobytes) + " kB as " + form,
                     static_cast<double>(usage.ru_maxrss) / 1024,
                     static_cast<double>(usage.ru_utime.tv_sec + usage.ru_stime.tv_sec) +
                         static_cast<double>(usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) * 1e-6});
            }
    bool areAllWithin = true;
    auto const print = [&](char const* title, double SmallCost::*figure, double most) {
        std::sort(costs.begin(), costs.end(),
                  [&](SmallCost const& one, SmallCost const& other) { return one.*figure > other.*figure; });
        std::printf("\nMost %s for a small database; at most %g:\n", title, most);
        for (std::size_t i = 0; i < std::min(shown, costs.size()); ++i)
            std::printf("%10.2f  %s\n", costs[i].*figure, costs[i].what.c_str());
        areAllWithin = areAllWithin && costs.front().*figure <= most;
    };
    print("megabytes", &SmallCost::megabytes, mostMegabytes);
    print("seconds", &SmallCost::seconds, mostSeconds);
    return areAllWithin;
}

int run(std::size_t size)
{
    constexpr std::size_t firstLook = 16; // times smaller
    QuietToolkit const quiet;
    ScratchFolder const folder;
    std::vector<Pattern> patterns;
    addFeatures(patterns);
    addTopics(patterns);
    bool const areSmallWithin = checkSmall(patterns, folder);
    addRecords(patterns);
    std::vector<Cost> costs;
    for (Pattern const& pattern : patterns)
        for (Conversion const conversion :
             {Conversion::exact, Conversion::exactWithLog, Conversion::complete}) {
            if (::isatty(STDERR_FILENO) != 0)
                std::fprintf(stderr, "\r%zu of %zu ", costs.size(), patterns.size() * 3);
            costs.push_back(measured(pattern, conversion, size / firstLook, folder));
        }
    std::printf("%zu databases\n", costs.size());
    printWorst(costs, &Cost::memory, "bytes of memory", size, folder);
    printWorst(costs, &Cost::nanoseconds, "nanoseconds", size, folder);
    return areSmallWithin ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    unsigned long const kilobytes = argc == 2 ? std::strtoul(argv[1], nullptr, 10) : 1024;
    if (argc > 2 || kilobytes == 0) {
        std::fprintf(stderr, "usage: costs [KILOBYTES]\n");
        return 2;
    }
    try {
        return run(kilobytes * 1024);
    } catch (std::exception const& problem) {
        std::fprintf(stderr, "costs: %s\n", problem.what());
        return 1;
    }
}
