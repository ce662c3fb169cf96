// Sends databases of random structure through every door of the library, one after the other.
//
//     structures DATABASES [PART OF]
//     structures --only NUMBER
//
// Of the DATABASES databases this process does the part PART of OF; with --only it does the one of that
// number, and leaves its files in the directory structures-NUMBER. Prints how far it is on a terminal, and
// figures in the end, which Ctrl-C brings about early. The number of the database that ends a process stays
// in structures-PART.txt. One that takes too much processor time ends it, too.

#include "robustness/Endurance.h"
#include "robustness/EveryDoor.h"
#include "robustness/LastDatabase.h"
#include "robustness/StructuralDatabase.h"
#include "support/ProcessUsage.h"
#include "support/ScratchFolder.h"
#include "support/SmallVertexPalettes.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInteraction.h>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <sys/time.h>
#include <unistd.h>

namespace
{

/// Seconds of processor time that one database may take: many times what the slowest does.
constexpr int mostSeconds = isSanitized ? 300 : 60;

volatile std::sig_atomic_t isToEnd = 0;

/// Ends the process if the processor time of a database runs out before the next is begun.
void beginTimeOfADatabase()
{
    itimerval const limit{{0, 0}, {mostSeconds, 0}};
    ::setitimer(ITIMER_PROF, &limit, nullptr);
}

void endForLackOfTime(int)
{
    static char const text[] = "\nThe database takes too much processor time.\n";
    static_cast<void>(!::write(STDERR_FILENO, text, sizeof text - 1));
    std::abort();
}

class Structures
{
public:
    void pass(unsigned number)
    {
        StructuralDatabase const database(number);
        ScratchFolder const folder;
        std::string const path = database.save(folder.path(""));
        beginTimeOfADatabase();
        double const before = ProcessUsage::processorSeconds();
        EveryDoor::Passage const passage = EveryDoor::go(path, number, hasNegativeSwitch(database));
        double const seconds = ProcessUsage::processorSeconds() - before;
        if (seconds > mostTime) {
            mostTime = seconds;
            slowest = number;
        }
        scenes += passage.scenes;
        refusals += passage.refusals;
        damaged += database.isDamaged() ? 1 : 0;
        ++done;
    }

    void report() const
    {
        std::printf(
            "%u databases, %u of them damaged: %d scenes, %d loads refused\n"
            "at most %.2f s of processor time, for the number %u; peak memory of the process: %zu MB\n",
            done, damaged, scenes, refusals, mostTime, slowest, ProcessUsage::peakMemory() >> 20);
        std::fflush(stdout); // the leak sanitizer ends a process without
    }

private:
    static bool hasNegativeSwitch(StructuralDatabase const& database)
    {
        return std::any_of(database.files().begin(), database.files().end(),
                           [](auto const& file) { return ::hasNegativeSwitch(file.bytes); });
    }

    unsigned done = 0;
    unsigned damaged = 0;
    int scenes = 0;
    int refusals = 0;
    double mostTime = 0;
    unsigned slowest = 0;
};

void passPart(unsigned databases, unsigned part, unsigned of)
{
    Structures structures;
    LastDatabase const last("structures-" + std::to_string(part) + ".txt");
    for (unsigned number = part; number < databases && isToEnd == 0; number += of) {
        last.keep(std::to_string(number) + "\n");
        structures.pass(number);
        if (::isatty(STDERR_FILENO) != 0)
            std::fprintf(stderr, "\r%u of %u", number, databases);
    }
    structures.report();
}

void passOne(unsigned number)
{
    std::string const folder = "structures-" + std::to_string(number);
    std::filesystem::create_directories(folder);
    static_cast<void>(StructuralDatabase(number).save(folder));
    Structures structures;
    structures.pass(number);
    structures.report();
}

} // namespace

int main(int argc, char** argv)
{
    bool const isOne = argc == 3 && std::strcmp(argv[1], "--only") == 0;
    if (!isOne && argc != 2 && argc != 4) {
        std::fprintf(stderr, "usage: structures DATABASES [PART OF]\n       structures --only NUMBER\n");
        return 2;
    }
    for (int const signal : {SIGINT, SIGTERM})
        std::signal(signal, [](int) { isToEnd = 1; });
    std::signal(SIGPROF, endForLackOfTime);
    SoDB::init();
    SoInteraction::init();
    QuietToolkit const quiet;
    SmallVertexPalettes const small(4);
    auto const number = [argv](int i) { return static_cast<unsigned>(std::strtoul(argv[i], nullptr, 10)); };
    if (isOne)
        passOne(number(2));
    else
        passPart(number(1), argc == 4 ? number(2) : 0, argc == 4 ? std::max(number(3), 1U) : 1);
    return 0;
}
