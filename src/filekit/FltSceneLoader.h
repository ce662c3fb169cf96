#pragma once

class SoSeparator;

/// Converts databases for programs that know nothing of the library's ways: std::cout stays theirs, textures
/// are found beside the database, and a file that isn't OpenFlight gives nothing rather than an empty scene.
///
/// Messages go to std::cerr, and the listing of the records beside the database, as always.
class FltSceneLoader
{
public:
    /// @return the root of the scene graph with one reference, which is the caller's; null if the file can't
    /// be read as OpenFlight
    /// @throw std::bad_alloc or what else the standard library throws
    static SoSeparator* load(char const* fileName);
};
