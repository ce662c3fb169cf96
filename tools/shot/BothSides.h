#pragma once

#include "toolkit/SoNodeRef.h"

#include <Inventor/nodes/SoShapeHints.h>
#include <utility>
#include <vector>

/// Has all shapes of a scene show both sides as long as it lives. Which side is the front stays as it is: in
/// mirrors it is the other one.
class BothSides
{
public:
    /// @param scene may be null
    explicit BothSides(SoNode* scene);
    ~BothSides();
    BothSides(BothSides const&) = delete;
    BothSides& operator=(BothSides const&) = delete;

private:
    std::vector<std::pair<SoNodeRef<SoShapeHints>, int>> before; ///< What each said of its shapes.
};
