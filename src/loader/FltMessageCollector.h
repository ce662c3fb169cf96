#pragma once

#include "loader/FltMessage.h"
#include "messages/FltWarningMessageConsole.h"
#include "toolkit/SoErrorRedirect.h"

#include <Inventor/errors/SoDebugError.h>
#include <Inventor/errors/SoMemoryError.h>
#include <Inventor/errors/SoReadError.h>
#include <string>
#include <unordered_map>
#include <vector>

/// Takes the messages of the library and of the toolkit while it lives, so that nothing is printed.
///
/// Several may stand in one another: a load that a callback starts has one of its own.
class FltMessageCollector : private FltWarningMessageConsole::Listener
{
public:
    FltMessageCollector();
    ~FltMessageCollector() override;

    FltMessageCollector(FltMessageCollector const&) = delete;
    FltMessageCollector& operator=(FltMessageCollector const&) = delete;

    /// Adds a message, or counts it if the same came before.
    void add(FltMessage message);

    /// The file that messages without a place are about from now on.
    void setFile(std::string const& newFile) { file = newFile; }
    std::string const& getFile() const { return file; }

    std::vector<FltMessage>& messages() { return collected; }

private:
    void take(char const* text, int level, FltWarningMessageConsole::Place const* place) override;
    void takeCount(std::string const& kind, int more) override;
    static void takeToolkitMessage(SoError const* error, void* collector);

    std::string file;
    std::vector<FltMessage> collected;
    std::unordered_map<std::string, std::size_t> positions; ///< Of each message by its text and place.
    FltWarningMessageConsole::Session session;
    Listener* listenerBefore;
    SoErrorRedirect<SoDebugError> debugErrors{takeToolkitMessage, this};
    SoErrorRedirect<SoReadError> readErrors{takeToolkitMessage, this};
    SoErrorRedirect<SoMemoryError> memoryErrors{takeToolkitMessage, this};
};
