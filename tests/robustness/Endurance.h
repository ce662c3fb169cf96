#pragma once

#include "support/SmallVertexPalettes.h"
#include "writer/EveryRecord.h"

#include <Inventor/errors/SoDebugError.h>
#include <Inventor/errors/SoReadError.h>
#include <cstddef>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#ifdef __SANITIZE_ADDRESS__
constexpr bool isSanitized = true;
#else
constexpr bool isSanitized = false;
#endif

/// While this object lives the toolkit doesn't report what it thinks of broken scenes.
class QuietToolkit
{
public:
    QuietToolkit()
    {
        SoDebugError::setHandlerCallback([](SoError const*, void*) {}, nullptr);
        SoReadError::setHandlerCallback([](SoError const*, void*) {}, nullptr);
    }
    ~QuietToolkit()
    {
        SoDebugError::setHandlerCallback(debugCallback, debugData);
        SoReadError::setHandlerCallback(readCallback, readData);
    }

    QuietToolkit(QuietToolkit const&) = delete;
    QuietToolkit& operator=(QuietToolkit const&) = delete;

private:
    SoErrorCB* debugCallback = SoDebugError::getHandlerCallback();
    void* debugData = SoDebugError::getHandlerData();
    SoErrorCB* readCallback = SoReadError::getHandlerCallback();
    void* readData = SoReadError::getHandlerData();
};

/// Databases that hold every record of the format, to be broken byte by byte.
std::vector<FltTopic> const& topics();

/// The name of one of them, for a test that is made for each.
std::string nameOfTopic(testing::TestParamInfo<std::size_t> const& info);

/// What a conversion of a broken database came to.
struct Endured {
    int records = 0;            ///< That the log dumps; 0 if the log wasn't kept.
    std::size_t logBytes = 0;   ///< Of the log.
    std::size_t sceneBytes = 0; ///< Of the scene in the toolkit's binary format.
    bool wasRefused = false;    ///< By the exception that a negative number of mask words is answered with.
};

/// Converts a database, does with the scene what a host does, and destroys it. Any exception but the one that
/// is allowed goes on.
/// @param use what is done besides a traversal
enum class Use {
    traverse,     ///< Nothing.
    countRecords, ///< The log is looked at.
    everything,   ///< All that useScene() does.
};
Endured endure(std::string const& bytes, Use use = Use::traverse);

/// A database of a switch that asks the allocator for a negative number of words.
FltWriter withNegativeSwitch();

/// Whether a database holds a switch whose number of mask words is negative.
bool hasNegativeSwitch(std::string const& bytes);

/// How many records stand whole in a database.
int countWholeRecords(std::string const& bytes);
