// Converts any bytes in memory as a database, does with the scene what a host does, and destroys it.

#include "support/ConvertedScene.h"
#include "support/SceneTraversal.h"
#include "support/SmallVertexPalettes.h"

#include "messages/FltWarningMessageConsole.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInteraction.h>
#include <Inventor/errors/SoDebugError.h>
#include <Inventor/nodes/SoSeparator.h>
#include <cstddef>
#include <cstdint>
#include <new>
#include <string>

extern "C" int LLVMFuzzerInitialize(int* /*argc*/, char*** /*argv*/)
{
    SoDB::init();
    SoInteraction::init();
    SoDebugError::setHandlerCallback([](SoError const*, void*) {}, nullptr);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    static SmallVertexPalettes const small(16);
    try {
        ConvertedScene const scene(std::string(reinterpret_cast<char const*>(data), size));
        traverseScene(scene.root);
        countTriangles(scene.root);
        static_cast<void>(scene.text());
    } catch (std::bad_array_new_length const&) {
        // what a switch with a negative number of mask words is answered with
    }
    FltWarningMessageConsole::setOfMessages.clear();
    return 0;
}
