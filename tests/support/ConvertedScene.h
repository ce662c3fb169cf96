#pragma once

#include "support/ConvertedRoot.h"
#include "support/StreamCapture.h"
#include "writer/FltWriter.h"

#include "convert/FltToInventor.h"

#include <cstddef>
#include <string>

class SoNode;

/// The scene that a database is converted to, in memory: no file is read, and the log is kept as text.
class ConvertedScene
{
    ConvertedRoot held;

public:
    /// @param fileName what the conversion takes for the name of the database
    explicit ConvertedScene(FltWriter const& flt, std::string const& fileName = "memory/scene.flt");

    /// The same of the bytes of a database.
    /// @param keptLog whether the log is to be kept, or only counted
    explicit ConvertedScene(std::string bytes, std::string const& fileName = "memory/scene.flt",
                            CaptureBuffer::Kept keptLog = CaptureBuffer::everything);

    /// The scene as text; see sceneText().
    std::string text() const;

    /// The first node of a name, or null.
    SoNode* find(std::string const& name) const;

    SoSeparator* const root = held.get();
    int result = 0;          ///< What FltToInventor::convert() returned.
    int rootReferences = 0;  ///< References that the conversion left on the root.
    std::string log;         ///< What went to std::cout.
    std::size_t logSize = 0; ///< Bytes of the log, kept or not.
    std::string messages;    ///< What went to std::cerr.
};

/// The children of the root that every header makes, in the toolkit's ASCII format, as the beginning of the
/// text of a scene in metres.
std::string rootWith(std::string const& children);
