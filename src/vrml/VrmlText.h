#pragma once

#include "textures/PicturePixels.h"

#include <Inventor/SbVec2f.h>
#include <Inventor/SbVec3d.h>
#include <Inventor/SbVec3f.h>
#include <cstdint>
#include <cstdio>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

/// The text of a VRML97 file, node by node. What is not a number becomes 0, and infinities the largest
/// numbers.
class VrmlText
{
public:
    /// @param stream takes the text. Whether it took everything its error flag tells.
    explicit VrmlText(FILE* stream);
    ~VrmlText();

    VrmlText(VrmlText const&) = delete;
    VrmlText& operator=(VrmlText const&) = delete;

    /// Begins a node.
    /// @param head its type, or a field and the type of the node in it: "geometry IndexedFaceSet"
    /// @param name of the node; empty for none
    void begin(std::string_view head, std::string const& name = "");
    void end(); ///< Ends a node.

    void beginList(std::string_view field); ///< Begins a field that holds nodes.
    void endList();                         ///< Ends it.

    /// A whole field, of words that need no care.
    void field(std::string_view name, std::string_view words);
    void flag(std::string_view name, bool value) { field(name, value ? "TRUE" : "FALSE"); }

    /// @name Fields of numbers
    /// @{
    void field(std::string_view name, std::initializer_list<double> numbers);
    void field(std::string_view name, std::initializer_list<float> numbers);
    void field(std::string_view name, SbVec3d const& value) { field(name, {value[0], value[1], value[2]}); }
    void field(std::string_view name, SbVec3f const& value) { field(name, {value[0], value[1], value[2]}); }
    /// @}

    /// A field of texts, each in UTF-8. What controls a terminal, ends of lines among it, becomes blanks.
    void texts(std::string_view name, std::vector<std::string> const& values);

    /// @name Lists of numbers
    /// Between beginList() and endList().
    /// @{
    void item(double number);
    void item(std::int32_t number);
    void item(SbVec2f const& value);
    void item(SbVec3f const& value);
    /// @}

    /// A field of pixels, row by row from the bottom.
    void image(std::string_view name, PicturePixels const& pixels);

private:
    void line();
    void put(std::string_view words);
    void put(float number);
    void put(double number);
    void separate();

    FILE* stream;
    std::string waiting;
    std::size_t depth = 0;
    int itemsOfLine = 0;
};
