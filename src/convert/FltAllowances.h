#pragma once

#include "convert/FltAllowance.h"

#include <initializer_list>

/// What the conversion of a file, and of all that it refers to, may use up.
struct FltAllowances {
    /// Allows more, since so many more bytes of the database were read.
    void growBy(std::int64_t bytes)
    {
        for (FltAllowance* allowance : {&sceneNodes, &instanceCheckSteps, &lodCentreSteps, &commentText,
                                        &switchNames, &oldVertexIndices})
            allowance->growBy(bytes);
    }

    FltAllowance sceneNodes{FltLimits::sceneNodes}; ///< A limit alone: what is spent is in FltInstanceGraph.
    FltAllowance instanceCheckSteps{FltLimits::instanceCheckSteps};
    FltAllowance lodCentreSteps{FltLimits::lodCentreSteps};
    FltAllowance commentText{FltLimits::commentText};
    FltAllowance switchNames{FltLimits::switchNames};
    FltAllowance oldVertexIndices{FltLimits::oldVertexIndices};
};
