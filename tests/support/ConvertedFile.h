#pragma once

#include "support/ConvertedRoot.h"
#include "support/SceneText.h"
#include "support/StreamCapture.h"

#include "convert/FltToInventor.h"

#include <string>

/// A file's conversion as a host runs it, with std::cout put back after it.
class ConvertedFile
{
    ConvertedRoot held;

public:
    explicit ConvertedFile(std::string const& path)
        : ConvertedFile(path, StreamCapture(std::cout), StreamCapture(std::cerr))
    {
    }

    std::string text() const { return sceneText(root); }

    SoSeparator* const root = held.get();
    int const rootReferences = held.getReferences(); ///< As the conversion left them.
    std::string messages;                            ///< What went to std::cerr.
    std::string beforeTheLog;                        ///< What went to std::cout before the log was open.

private:
    ConvertedFile(std::string const& path, StreamCapture const& out, StreamCapture const& err)
        : held(FltToInventor::convertFromFile(path.c_str())), messages(err.str()), beforeTheLog(out.str())
    {
    }
};
