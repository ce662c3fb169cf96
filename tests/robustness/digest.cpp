// Prints digests of what conversions of broken databases come to, to be compared with those of other
// compilers, optimisations and sanitizers.
//
//     digest DATABASES
//
// A line for each hundred databases: the digests of their logs, of their messages, and of their scenes.

#include "robustness/BrokenDatabases.h"
#include "robustness/Endurance.h"
#include "support/ConvertedScene.h"
#include "support/RecordText.h"
#include "support/SceneText.h"
#include "support/SmallVertexPalettes.h"

#include "messages/FltWarningMessageConsole.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInteraction.h>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>

namespace
{

/// The FNV-1a hash of several texts.
class Digest
{
public:
    void add(std::string const& text)
    {
        for (char const c : text)
            value = (value ^ static_cast<unsigned char>(c)) * 0x100000001b3U;
    }
    unsigned long long get() const { return value; }

private:
    std::uint64_t value = 0xcbf29ce484222325U;
};

struct Digests {
    Digest log;
    Digest messages;
    Digest scene;
};

void addConversion(Digests& digests, std::string const& bytes)
{
    try {
        ConvertedScene const scene(bytes);
        digests.log.add(withoutAddress(scene.log));
        digests.messages.add(scene.messages);
        digests.scene.add(writtenScene(scene.root, false));
    } catch (std::bad_array_new_length const&) {
        digests.messages.add("refused");
    }
    FltWarningMessageConsole::setOfMessages.clear();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: digest DATABASES\n");
        return 2;
    }
    SoDB::init();
    SoInteraction::init();
    QuietToolkit const quiet;
    SmallVertexPalettes const small(4);
    BrokenDatabases const databases(std::strtoul(argv[1], nullptr, 10));
    std::size_t const inALine = 100;
    for (std::size_t first = 0; first < databases.size(); first += inALine) {
        Digests digests;
        for (std::size_t i = first; i < first + inALine && i < databases.size(); ++i)
            addConversion(digests, databases[i]);
        std::printf("%8zu  log %016llx  messages %016llx  scene %016llx\n", first, digests.log.get(),
                    digests.messages.get(), digests.scene.get());
    }
    return 0;
}
