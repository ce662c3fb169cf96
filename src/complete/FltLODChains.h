#pragma once

#include "complete/FltGroupBuilder.h"
#include "model/FltRecordView.h"

#include <vector>

/// Which levels of detail a scene shows.
enum class FltLODChoice {
    stored,  ///< Each between its distances.
    highest, ///< The finest of those whose distances meet, at any distance.
    lowest,  ///< The coarsest of them.
};

/// Collects the levels of detail of one parent. Those whose distances meet become one SoLOD.
class FltLODChains
{
public:
    /// @param worldPerUnit what distances are multiplied with, since the toolkit measures in the world
    FltLODChains(FltLODChoice choice, double worldPerUnit) : choice(choice), worldPerUnit(worldPerUnit) {}

    /// Adds a level of detail.
    /// @return false if it is drawn at any distance, and is no business of this class
    bool add(FltRecordView const& record, FltScenePart const& part);

    /// Adds the nodes of all levels to their parent.
    void finish(FltGroupBuilder& group);

private:
    struct Level {
        double nearest;
        double farthest;
        SbVec3f center;
        bool hasCenter;
        FltScenePart part;
    };

    void addChain(std::vector<Level const*> const& chain, FltGroupBuilder& group) const;
    void addLOD(std::vector<Level const*> const& chain, FltGroupBuilder& group) const;

    FltLODChoice choice;
    double worldPerUnit;
    std::vector<Level> levels;
};
