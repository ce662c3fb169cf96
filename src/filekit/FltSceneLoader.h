#pragma once

class SoSeparator;

/// Converts databases for programs that know nothing of the library's rules: the scene shows what the
/// modeller saw, textures are found next to the database, and a file that isn't OpenFlight gives null.
///
/// Messages go to std::cerr.
class FltSceneLoader
{
public:
    /// @return the root of the scene graph with one reference, which is the caller's; null if the file can't
    ///         be read as OpenFlight
    /// @throw std::bad_alloc, or any other exception of the standard library
    static SoSeparator* load(char const* fileName);
};
