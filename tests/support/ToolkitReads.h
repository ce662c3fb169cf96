#pragma once

#include <Inventor/SbImage.h>

/// Counts the files of pictures that the toolkit is about to read by its own library.
class ToolkitReads
{
public:
    ToolkitReads() { SbImage::addReadImageCB(count, this); }
    ~ToolkitReads() { SbImage::removeReadImageCB(count, this); }
    ToolkitReads(ToolkitReads const&) = delete;
    ToolkitReads& operator=(ToolkitReads const&) = delete;

    int number = 0;

private:
    static SbBool count(SbString const& /*name*/, SbImage* /*image*/, void* self)
    {
        ++static_cast<ToolkitReads*>(self)->number;
        return FALSE;
    }
};
