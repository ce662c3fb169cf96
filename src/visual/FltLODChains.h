#pragma once

#include "model/FltRecordView.h"
#include "visual/FltNodeBuilder.h"
#include "visual/FltVisualOptions.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <utility>
#include <vector>

class FltRecordLOD;

/// Collects the levels of detail of one parent. Those whose distances meet become one node of levels.
class FltLODChains
{
public:
    using Choice = FltVisualOptions::LevelsOfDetail;

    /// @param worldPerUnit what distances are multiplied with, since they are told in the world
    /// @param mayRepeat    whether a traversal may visit so many nodes once more
    FltLODChains(Choice choice, double worldPerUnit, std::function<bool(std::int64_t visits)> mayRepeat)
        : choice(choice), worldPerUnit(worldPerUnit), mayRepeat(std::move(mayRepeat))
    {
    }

    /// A level, with what is drawn in it.
    struct Level {
        double nearest;
        double farthest;
        SbVec3f center;
        bool hasCenter;
        bool isAdditive; ///< Coarser levels stay where it is drawn, and it where finer ones are.
        FltVisualPart part;
    };

    /// Reads a level of detail, without what is drawn.
    /// @return nothing if it is drawn at any distance, and is no business of this class
    static std::optional<Level> read(FltRecordView const& record);

    void add(Level const& level) { levels.push_back(level); }

    /// Adds the nodes of all levels to their parent.
    void finish(FltNodeBuilder& parent);

private:
    static std::optional<Level> levelOf(FltRecordLOD const& record);

    using Chain = std::vector<Level const*>;

    void addChain(Chain const& chain, FltNodeBuilder& parent) const;
    void addLevels(Chain const& chain, FltNodeBuilder& parent) const;
    void addCoarser(Chain const& chain, std::size_t nothings, FltNodeBuilder& node) const;

    Choice choice;
    double worldPerUnit;
    std::function<bool(std::int64_t visits)> mayRepeat;
    std::vector<Level> levels;
};
