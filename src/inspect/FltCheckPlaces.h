#pragma once

#include "inspect/FltCheckFamily.h"
#include "inspect/FltCheckedModel.h"
#include "inspect/FltNodeBoxes.h"

#include <string>
#include <vector>

/// What is judged by the places of the geometry: stored boxes, the ranges of levels of detail that stand for
/// one another; and the transformations of nodes.
class FltCheckPlaces : private FltCheckFamily
{
public:
    FltCheckPlaces(FltCheckedModel const& checked, FltNodeBoxes const& boxes, FltFindingList& findings)
        : FltCheckFamily(checked.inventory, findings), checked(checked), boxes(boxes)
    {
    }

    void check();

private:
    /// A level of detail beside others.
    struct Level {
        FltInventory::LevelOfDetail const* lod;
        double transition;
        bool isAdditive;
        double reach; ///< The farthest distance that it, or one like it before, is seen from.
    };

    static std::string placeOf(SbVec3d const& vector);
    void checkTransformation(std::uint32_t node);
    void checkBox(std::uint32_t node);
    void checkLevels();
    void checkSiblings(std::vector<Level>& levels);
    void checkPair(Level const& near, Level const& far);
    Level levelOf(FltInventory::LevelOfDetail const& lod) const;
    bool areAlike(Level const& left, Level const& right) const;

    FltCheckedModel const& checked;
    FltNodeBoxes const& boxes;
};
