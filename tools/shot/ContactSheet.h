#pragma once

#include "support/Picture.h"

#include <string>
#include <vector>

/// Pictures side by side, each with a line of text below it.
class ContactSheet
{
public:
    /// The shape of a sheet, in pixels and pictures.
    struct Layout {
        int count = 0;   ///< How many pictures there are going to be.
        int columns = 0; ///< 0 for about as many as rows.
        int width = 0;   ///< Of each picture.
        int height = 0;
        bool isTransparent = false; ///< Whether there is an alpha channel in place of paper.

        int columnCount() const;
        long long sheetWidth() const;
        long long sheetHeight() const;
    };

    explicit ContactSheet(Layout const& layout);

    /// Adds the next picture.
    void add(Picture const& picture, std::string const& name);

    /// Has the next place say why there is no picture.
    void addProblem(std::string const& why, std::string const& name);

    Picture const& picture() const { return sheet; }

private:
    struct Place {
        int x;
        int y;
    };
    struct Ink {
        unsigned char red;
        unsigned char green;
        unsigned char blue;
    };

    Place nextPlace();
    void fill(Place place, int width, int height, Ink color);
    void copy(Picture const& picture, Place place);
    void write(std::vector<std::string> const& lines, Place place, int width, Ink ink);

    void caption(std::string const& text, Place place);

    Layout layout;
    Picture sheet;
    int used = 0;
};
