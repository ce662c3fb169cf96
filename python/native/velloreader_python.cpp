// What the Python package calls.

#include "filekit/FltSceneLoader.h"
#include "toolkit/VelloReaderExport.h"

#include <Inventor/errors/SoDebugError.h>
#include <Inventor/errors/SoReadError.h>
#include <Inventor/nodes/SoGroup.h>
#include <Inventor/nodes/SoSeparator.h>
#include <exception>
#include <iostream>
#include <sstream>

namespace
{

/// Collects the messages on std::cerr and those of the toolkit while this object lives.
class MessageCollector
{
public:
    MessageCollector()
        : before(std::cerr.rdbuf(text.rdbuf())), state(std::cerr.rdstate()),
          debugHandler(SoDebugError::getHandlerCallback()), debugData(SoDebugError::getHandlerData()),
          readHandler(SoReadError::getHandlerCallback()), readData(SoReadError::getHandlerData())
    {
        SoDebugError::setHandlerCallback(take, this);
        SoReadError::setHandlerCallback(take, this);
    }
    ~MessageCollector()
    {
        SoReadError::setHandlerCallback(readHandler, readData);
        SoDebugError::setHandlerCallback(debugHandler, debugData);
        std::cerr.rdbuf(before);
        std::cerr.clear(state);
    }

    MessageCollector(MessageCollector const&) = delete;
    MessageCollector& operator=(MessageCollector const&) = delete;

    void add(char const* message, int level) { text << message << "\n(Warning Level: " << level << ")\n\n"; }
    std::string str() const { return text.str(); }

private:
    static void take(SoError const* error, void* collector)
    {
        static_cast<MessageCollector*>(collector)->add(error->getDebugString().getString(), 2);
    }

    std::ostringstream text;
    std::streambuf* before;
    std::ios_base::iostate state;
    SoErrorCB* debugHandler;
    void* debugData;
    SoErrorCB* readHandler;
    void* readData;
};

} // namespace

extern "C" {

/// Converts a database and adds the root of its scene to @p parent.
/// @param report gets the messages of the conversion: for each its text, a line "(Warning Level: n)" and an
///               empty line
/// @return 1 if that worked, 0 if the file isn't OpenFlight, -1 if memory ran out
VELLOREADER_API int velloreader_load(SoGroup* parent, char const* fileName,
                                     void (*report)(char const* messages))
{
    int result = 0;
    std::string messages;
    try {
        MessageCollector collector;
        try {
            if (SoSeparator* const root = FltSceneLoader::load(fileName)) {
                parent->addChild(root);
                root->unref();
                result = 1;
            }
        } catch (std::bad_alloc const&) {
            result = -1;
        } catch (std::exception const& problem) {
            collector.add(problem.what(), 3);
        }
        messages = collector.str();
    } catch (std::bad_alloc const&) {
        result = -1;
    }
    report(messages.c_str());
    return result;
}

/// Gives a reference to a node back.
VELLOREADER_API void velloreader_unref(SoNode* node)
{
    node->unref();
}
}
