#pragma once

#include "complete/FltScenePart.h"

#include <Inventor/SbMatrix.h>
#include <Inventor/nodes/SoGroup.h>
#include <vector>

/// Fills a group with parts, and keeps the account of what it costs. Nested parts could make a scene deeper
/// than the toolkit's stack.
class FltGroupBuilder
{
public:
    /// @param group gets its children. It is kept alive meanwhile.
    explicit FltGroupBuilder(SoGroup* group);

    /// Adds a part. One that would make the scene too deep is left out, and that is reported.
    /// @return whether it was added
    bool add(FltScenePart const& part);

    /// Adds one node that draws a part at several places.
    /// @return whether it was added; see add()
    bool addCopies(FltScenePart const& part, std::vector<SbMatrix> const& places);

    /// Adds a node that draws nothing.
    void addProperty(SoNode* node);

    /// Adds a transformation, which all later parts stand in.
    void addMatrix(SbMatrix const& matrix);

    /// All later parts stand in a transformation that was added as a property.
    void stackMatrix(SbMatrix const& matrix) { placement.multLeft(matrix); }

    /// Whether nothing was added.
    bool isEmpty() const { return part.visits == 1; }

    SbBox3f const& getBox() const { return part.box; }

    /// The group as a part.
    FltScenePart const& finish() const { return part; }

private:
    SoGroup* group;
    FltScenePart part;
    SbMatrix placement = SbMatrix::identity();
};
