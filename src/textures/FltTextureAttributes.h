#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// What the file "NAME.attr" beside a picture says of it as a texture.
struct FltTextureAttributes {
    /// What lies beyond the edges of the picture.
    enum class Wrap : std::uint8_t {
        repeat, ///< The picture again.
        clamp,  ///< The colour of the edge.
        mirror, ///< The picture again, each the other way round than the one before.
    };

    /// What the colours of the picture do to those of the face.
    enum class Environment : std::uint8_t {
        modulate, ///< They are multiplied.
        blend,    ///< The brighter the picture, the more of white there is.
        decal,    ///< They lie on it, by their alpha.
        replace,  ///< They take its place.
        add,      ///< They are added.
    };

    /// How the colour between pixels is made.
    enum class Filter : std::uint8_t {
        point,           ///< That of the nearest pixel.
        bilinear,        ///< The mean of the four around it.
        mipmapPoint,     ///< That of the nearest pixel in the smaller picture that fits best.
        mipmapLinear,    ///< The mean of the nearest pixels of the two smaller pictures that fit best.
        mipmapBilinear,  ///< The mean of four pixels of the smaller picture that fits best.
        mipmapTrilinear, ///< The mean of four pixels of each of the two that fit best.
    };

    /// In place of the number of a kind of file.
    static constexpr std::int32_t unknownKind = -1;

    std::string path;                                ///< Of the file; empty if there is none.
    Wrap wrapU = Wrap::repeat;                       ///< To the left and to the right.
    Wrap wrapV = Wrap::repeat;                       ///< Below and above.
    Environment environment = Environment::modulate; ///< What the colours do.
    Filter minification = Filter::mipmapTrilinear;   ///< Where the picture is drawn smaller than it is.
    Filter magnification = Filter::bilinear;         ///< Where it is drawn larger.
    std::int32_t kindOfFile = unknownKind;           ///< As stored: which kind of picture is meant.
    std::vector<std::string> problems;               ///< What counts as not given, and why.
};
