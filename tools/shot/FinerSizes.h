#pragma once

#include "toolkit/SoNodeRef.h"

#include <Inventor/nodes/SoDrawStyle.h>
#include <vector>

class SoNode;

/// Makes the points and lines of a scene as much larger as its picture is drawn finer, so that they come out
/// as large as they are stored. It holds while the object lives.
class FinerSizes
{
public:
    /// @param fineness how many pixels of the finer picture lie side by side in one
    FinerSizes(SoNode* scene, int fineness);
    ~FinerSizes();

    FinerSizes(FinerSizes const&) = delete;
    FinerSizes& operator=(FinerSizes const&) = delete;

    /// What stands before a scene, for points and lines of which nothing is said.
    static SoDrawStyle* makeUsual(int fineness);

private:
    struct Changed {
        SoNodeRef<SoDrawStyle> style;
        float pointSize;
        float lineWidth;
    };
    std::vector<Changed> all;
};
