#pragma once

#include "writer/FltWriter.h"

#include "convert/FltToInventor.h"

#include <string>

class SoNode;
class SoSeparator;

/// The scene that a database is converted to, in memory: no file is read, and the log is kept as text.
class ConvertedScene
{
public:
    /// @param fileName what the conversion takes for the name of the database
    explicit ConvertedScene(FltWriter const& flt, std::string const& fileName = "memory/scene.flt");

    /// The same of the bytes of a database.
    explicit ConvertedScene(std::string bytes, std::string const& fileName = "memory/scene.flt");
    ~ConvertedScene();

    ConvertedScene(ConvertedScene const&) = delete;
    ConvertedScene& operator=(ConvertedScene const&) = delete;

    /// The scene as text; see sceneText().
    std::string text() const;

    /// The first node of a name, or null.
    SoNode* find(std::string const& name) const;

    SoSeparator* root;    ///< Ref'd by this object beside what the conversion did.
    int result = 0;       ///< What FltToInventor::convert() returned.
    int rootReferences;   ///< References that the conversion left on the root.
    std::string log;      ///< What went to std::cout.
    std::string messages; ///< What went to std::cerr.

private:
    void convert(std::string bytes, std::string const& fileName);
    void release();
};

/// The children of the root that every header makes, in the toolkit's ASCII format, as the beginning of the
/// text of a scene in metres.
std::string rootWith(std::string const& children);
