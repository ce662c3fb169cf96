// Converts broken databases one after the other, and does with each scene all that a host does.
//
//     soak LOADS [PART OF]
//
// Of the LOADS databases this process does the part PART of OF. Prints how far it is on a terminal, and
// figures in the end, which Ctrl-C brings about early. The database that crashes a process stays in
// soak-PART.flt.

#include "robustness/BrokenDatabases.h"
#include "robustness/Endurance.h"
#include "robustness/LastDatabase.h"
#include "support/ProcessUsage.h"
#include "support/SmallVertexPalettes.h"

#include "messages/FltWarningMessageConsole.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInteraction.h>
#include <algorithm>
#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <unistd.h>

namespace
{

volatile std::sig_atomic_t isToEnd = 0;

class Soak
{
public:
    Soak(std::size_t loads, std::size_t part)
        : databases(loads), last("soak-" + std::to_string(part) + ".flt")
    {
    }

    void run(std::size_t part, std::size_t of)
    {
        for (std::size_t i = part; i < databases.size() && isToEnd == 0; i += of) {
            load(databases[i]);
            if (::isatty(STDERR_FILENO) != 0 && done % 256 == 0)
                std::fprintf(stderr, "\r%zu of %zu", i, databases.size());
        }
        report();
    }

private:
    void load(std::string const& bytes)
    {
        last.keep(bytes);
        double const before = ProcessUsage::processorSeconds();
        Endured const endured = endure(bytes, Use::everything);
        double const microseconds = (ProcessUsage::processorSeconds() - before) * 1e6;
        FltWarningMessageConsole::setOfMessages.clear();
        // What every conversion costs doesn't count for the smallest files.
        auto const size = static_cast<double>(std::max<std::size_t>(bytes.size(), 1024));
        slowest = std::max(slowest, microseconds / size);
        largestLog = std::max(largestLog, static_cast<double>(endured.logBytes) / size);
        largestScene = std::max(largestScene, static_cast<double>(endured.sceneBytes) / size);
        refused += endured.wasRefused ? 1 : 0;
        ++done;
    }

    void report() const
    {
        std::printf(
            "%zu seeds with %zu small changes; %zu databases converted and used, %zu of them refused\n"
            "at most, for each byte of a file: %.2f us of processor time, %.0f bytes of log, %.0f bytes of "
            "scene\n"
            "peak memory of the process: %zu MB\n",
            databases.countSeeds(), databases.countSmallChanges(), done, refused, slowest, largestLog,
            largestScene, ProcessUsage::peakMemory() >> 20);
        std::fflush(stdout); // the leak sanitizer ends a process without
    }

    BrokenDatabases databases;
    LastDatabase last;
    std::size_t done = 0;
    std::size_t refused = 0;
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
    for (int const signal : {SIGINT, SIGTERM})
        std::signal(signal, [](int) { isToEnd = 1; });
    SoDB::init();
    SoInteraction::init();
    QuietToolkit const quiet;
    SmallVertexPalettes const small(4);
    auto const number = [argv](int i) { return std::size_t{std::strtoul(argv[i], nullptr, 10)}; };
    std::size_t const part = argc == 4 ? number(2) : 0;
    std::size_t const of = argc == 4 ? std::max<std::size_t>(number(3), 1) : 1;
    Soak(number(1), part).run(part, of);
    return 0;
}
