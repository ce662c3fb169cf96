#pragma once

#include "model/FltModelTree.h"

#include <Inventor/SbDPMatrix.h>
#include <Inventor/SbMatrix.h>
#include <Inventor/SbVec3d.h>
#include <vector>

/// The transformation of a node, from the records that follow it.
class FltTransformation
{
public:
    /// @param allowedError how far rounding to floats may move a place; where it would move it farther,
    ///                     doubles stand in place of floats
    FltTransformation(FltModelTree const& tree, FltModelTree::Number number, double allowedError = 1e-4);

    /// The matrices in the order in which they are added to a scene: the last one acts first.
    std::vector<SbDPMatrix> const& getMatrices() const { return matrices; }

    /// How many copies follow the first, each moved on by getStep().
    int getReplications() const { return replications; }
    SbDPMatrix const& getStep() const { return matrices.back(); }

    /// Where a part and its copies stand, each moved on by a step. Places that numbers can't tell any more
    /// are left out.
    static std::vector<SbDPMatrix> placesOf(SbDPMatrix const& step, int copies, double allowedError = 1e-4);

private:
    /// What is worked out in floats, and in doubles.
    struct Steps {
        SbMatrix inFloats = SbMatrix::identity();
        SbDPMatrix exact = SbDPMatrix::identity();

        void add(SbMatrix const& stepInFloats, SbDPMatrix const& step);
        SbVec3d error() const;
        SbDPMatrix matrix(double allowedError) const;
        bool isRoundedTo(SbDPMatrix const& matrix) const;
    };

    void takeStep(FltRecordView const& record);
    template <class Record>
    void takeStepOf(FltRecordView const& record);

    std::vector<SbDPMatrix> matrices;
    Steps steps;
    bool hasSteps = false;
    int replications = 0;
};
