#pragma once

#include <Inventor/SbBox3f.h>

class SoSeparator;

/// The edges of a box, as a scene that can't be picked and takes no light.
class SelectionBox
{
public:
    explicit SelectionBox(SbBox3f const& box);
    ~SelectionBox();
    SelectionBox(SelectionBox const&) = delete;
    SelectionBox& operator=(SelectionBox const&) = delete;

    SoSeparator* node() const { return separator; }

private:
    SoSeparator* separator;
};
