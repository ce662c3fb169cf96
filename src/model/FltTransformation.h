#pragma once

#include "model/FltModelTree.h"

#include <Inventor/SbMatrix.h>
#include <vector>

/// The transformation of a node, from the records that follow it.
class FltTransformation
{
public:
    FltTransformation(FltModelTree const& tree, FltModelTree::Number number);

    /// The matrices in the order in which they are added to a scene: the last one acts first.
    std::vector<SbMatrix> const& getMatrices() const { return matrices; }

    /// How many copies follow the first, each moved on by getStep().
    int getReplications() const { return replications; }
    SbMatrix const& getStep() const { return matrices.back(); }

    /// Where a part and its copies stand, each moved on by a step. Places that numbers can't tell any more
    /// are left out.
    static std::vector<SbMatrix> placesOf(SbMatrix const& step, int copies);

private:
    void takeStep(FltRecordView const& record);

    std::vector<SbMatrix> matrices;
    SbMatrix steps = SbMatrix::identity();
    bool hasSteps = false;
    int replications = 0;
};
