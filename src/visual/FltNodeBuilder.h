#pragma once

#include "visual/FltVisualPart.h"

#include <Inventor/SbMatrix.h>
#include <string>
#include <vector>

/// Fills a node with parts, and keeps the account of what it costs. Nested parts could make a scene deeper
/// than the toolkit's stack.
class FltNodeBuilder
{
public:
    FltNodeBuilder();

    /// What is being filled.
    FltVisualNode& operator*() const { return *part.node; }
    FltVisualNode* operator->() const { return part.node.get(); }

    /// Adds a part. One that would make the scene too deep is left out, and that is reported.
    /// @return whether it was added
    bool add(FltVisualPart const& part);

    /// Adds the place of a part that isn't always shown. Without a part, or with one that is left out,
    /// nothing is shown there.
    void addPlace(FltVisualPart const& part);

    /// Adds a part that stands at several places.
    void addCopies(FltVisualPart const& part, std::vector<SbDPMatrix> const& places);

    void addMesh(FltMesh&& mesh);

    /// Adds a transformation, which all parts stand in. The one that is added last acts first.
    void addMatrix(SbDPMatrix const& matrix);

    /// All later parts stand in a transformation that the content of the node says.
    void stackMatrix(SbDPMatrix const& matrix);

    /// The box of what stands at the origin of the node is this one too.
    void addBox(SbBox3f const& box);

    SbBox3f const& getBox() const { return part.box; }

    /// All traversals visit so many nodes more: a part of this node is drawn at one more place in it.
    void addVisits(std::int64_t visits) { part.visits += visits; }

    /// A finished part as one that isn't to be seen.
    static FltVisualPart hidden(FltVisualPart part);

    /// The node as a part.
    FltVisualPart const& finish() const { return part; }

private:
    FltVisualPart part;
    SbMatrix placement = SbMatrix::identity();
};
