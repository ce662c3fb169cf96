#pragma once

#include "convert/FltVertexPalette.h"

/// While this object lives conversions begin with room for few vertices: a conversion of a small database
/// takes a fraction of the time, and a few vertices are enough to make a form grow.
class SmallVertexPalettes
{
public:
    explicit SmallVertexPalettes(int capacity) : before(FltVertexPalette::initialCapacity)
    {
        FltVertexPalette::initialCapacity = capacity;
    }
    ~SmallVertexPalettes() { FltVertexPalette::initialCapacity = before; }

    SmallVertexPalettes(SmallVertexPalettes const&) = delete;
    SmallVertexPalettes& operator=(SmallVertexPalettes const&) = delete;

private:
    int before;
};
