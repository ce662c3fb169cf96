// Converts broken databases one after the other, and does with each scene all that a host does.
//
//     soak LOADS [PART OF]
//
// The seeds are small databases of each kind of record and of each feature of the conversion, at each revision at
// which the format changes. LOADS of their small changes are taken evenly from all of them, of which this process
// does the part PART of OF. What is beyond all small changes are several at a time, chosen at random, the same in
// each run. Prints what it does on a terminal, and figures in the end. The database that crashes a process stays in
// soak-PART.flt.

#include "robustness/Endurance.h"
#include "robustness/Mutations.h"
#include "support/ProcessUsage.h"
#include "support/SmallVertexPalettes.h"
#include "writer/EveryRecord.h"

#include "messages/FltWarningMessageConsole.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInteraction.h>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

namespace
{

constexpr int revisions[] = {11, 13, 14, 1420, 1421, 1500, 1510, 1540, 1550, 1570, 1580};

/// A file that holds the database at hand whatever happens to the process.
class LastDatabase
{
public:
    explicit LastDatabase(std::string const& name)
        : file(::open(name.c_str(), O_RDWR | O_CREAT | O_TRUNC, 0644))
    {
        if (file < 0)
            throw std::runtime_error(name + ": cannot write");
    }
    ~LastDatabase() { ::close(file); }
    LastDatabase(LastDatabase const&) = delete;
    LastDatabase& operator=(LastDatabase const&) = delete;

    void keep(std::string const& bytes) const
    {
        if (::ftruncate(file, static_cast<off_t>(bytes.size())) != 0 ||
            ::pwrite(file, bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size()))
            throw std::runtime_error("the disk is full");
    }

private:
    int file;
};

struct Seed {
    FltTopic topic;
    Mutations mutations;

    explicit Seed(FltTopic&& given) : topic(std::move(given)), mutations(topic.bytes, topic.begin, topic.end)
    {
    }
    Seed(Seed const&) = delete;
    Seed& operator=(Seed const&) = delete;
};

class Soak
{
public:
    Soak(long loads, long part, long of)
        : loads(loads), part(part), of(of), last("soak-" + std::to_string(part) + ".flt")
    {
        for (int const revision : revisions)
            for (FltTopic& topic : everyTopicInBrief(revision))
                seeds.push_back(std::make_unique<Seed>(std::move(topic)));
        for (auto const& seed : seeds)
            all += seed->mutations.size();
    }

    void run()
    {
        auto const step = std::max(static_cast<double>(all) / static_cast<double>(loads), 1.0);
        for (long i = part; i < loads; i += of) {
            auto const index = static_cast<std::size_t>(static_cast<double>(i) * step);
            load(index < all ? smallChange(index) : severalChanges(static_cast<unsigned>(i)));
            if (::isatty(STDERR_FILENO) != 0 && done % 256 == 0)
                std::fprintf(stderr, "\r%ld of %ld", i, loads);
        }
        report();
    }

private:
    std::string smallChange(std::size_t index) const
    {
        for (auto const& seed : seeds) {
            if (index < seed->mutations.size())
                return seed->mutations[index];
            index -= seed->mutations.size();
        }
        return {};
    }

    std::string severalChanges(unsigned number) const
    {
        std::mt19937 random(number);
        FltTopic const& topic = seeds[random() % seeds.size()]->topic;
        std::string bytes = topic.bytes;
        for (unsigned changes = 2 + random() % 6; changes > 0; --changes)
            bytes[topic.begin + random() % (topic.end - topic.begin)] = static_cast<char>(random());
        return bytes;
    }

    void load(std::string const& bytes)
    {
        last.keep(bytes);
        auto const before = std::chrono::steady_clock::now();
        Endured const endured = endure(bytes, Use::everything);
        std::chrono::duration<double, std::micro> const time = std::chrono::steady_clock::now() - before;
        FltWarningMessageConsole::setOfMessages.clear();
        auto const size = static_cast<double>(std::max<std::size_t>(bytes.size(), 1024));
        slowest = std::max(slowest, time.count() / size);
        largestLog = std::max(largestLog, static_cast<double>(endured.logBytes) / size);
        largestScene = std::max(largestScene, static_cast<double>(endured.sceneBytes) / size);
        refused += endured.wasRefused ? 1 : 0;
        ++done;
    }

    void report() const
    {
        std::printf(
            "%zu seeds with %zu small changes; %ld databases converted and used, %ld of them refused\n"
            "at most, for each byte of a file: %.2f us, %.0f bytes of log, %.0f bytes of scene\n"
            "peak memory of the process: %zu MB\n",
            seeds.size(), all, done, refused, slowest, largestLog, largestScene,
            ProcessUsage::peakMemory() >> 20);
    }

    long loads;
    long part;
    long of;
    LastDatabase last;
    std::vector<std::unique_ptr<Seed>> seeds;
    std::size_t all = 0;
    long done = 0;
    long refused = 0;
    double slowest = 0;
    double largestLog = 0;
    double largestScene = 0;
};

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2 && argc != 4) {
        std::fprintf(stderr, "usage: soak LOADS [PART OF]\n");
        return 2;
    }
    SoDB::init();
    SoInteraction::init();
    QuietToolkit const quiet;
    SmallVertexPalettes const small(4);
    bool const isWhole = argc == 2;
    long const loads = std::max(std::atol(argv[1]), 1L);
    Soak(loads, isWhole ? 0 : std::atol(argv[2]), isWhole ? 1 : std::max(std::atol(argv[3]), 1L)).run();
    return 0;
}
