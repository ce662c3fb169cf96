#include "view/LevelsOfDetail.h"

#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoLOD.h>
#include <algorithm>
#include <cfloat>

LevelsOfDetail::LevelsOfDetail(SoNode* scene)
{
    SoSearchAction search;
    search.setType(SoLOD::getClassTypeId());
    search.setInterest(SoSearchAction::ALL);
    search.setSearchingAll(TRUE);
    search.apply(scene);
    for (int i = 0; i < search.getPaths().getLength(); ++i) {
        auto* const lod = static_cast<SoLOD*>(search.getPaths()[i]->getTail());
        float const* const values = lod->range.getValues(0);
        ranges.try_emplace(lod, values, values + lod->range.getNum());
    }
}

float LevelsOfDetail::farthest() const
{
    float most = 0;
    for (auto const& [lod, stored] : ranges)
        for (float const range : stored)
            if (range < FLT_MAX / 2)
                most = std::max(most, range);
    return most;
}

void LevelsOfDetail::followEye()
{
    for (auto const& [lod, stored] : ranges)
        force(*lod, -1);
}

void LevelsOfDetail::setDistance(float distance)
{
    for (auto const& [lod, stored] : ranges) {
        auto const beyond =
            std::find_if(stored.begin(), stored.end(), [&](float range) { return distance < range; });
        force(*lod, static_cast<int>(beyond - stored.begin()));
    }
}

void LevelsOfDetail::force(SoLOD& lod, int child)
{
    auto const stored = ranges.find(&lod);
    if (stored == ranges.end())
        return;
    if (child >= 0) {
        children[&lod] = child;
        draw(lod, child);
        return;
    }
    children.erase(&lod);
    lod.range.setNum(static_cast<int>(stored->second.size()));
    lod.range.setValues(0, static_cast<int>(stored->second.size()), stored->second.data());
}

int LevelsOfDetail::forced(SoLOD const& lod) const
{
    auto const found = children.find(&lod);
    return found != children.end() ? found->second : -1;
}

std::vector<float> LevelsOfDetail::rangesOf(SoLOD& lod) const
{
    auto const stored = ranges.find(&lod);
    return stored != ranges.end() ? stored->second : std::vector<float>();
}

/// No distance is below 0, and none reaches the greatest number.
void LevelsOfDetail::draw(SoLOD& lod, int child)
{
    int const count = std::max(lod.range.getNum(), lod.getNumChildren() - 1);
    std::vector<float> values(static_cast<std::size_t>(std::max(count, 0)), FLT_MAX);
    std::fill_n(values.begin(), std::min(std::max(child, 0), count), 0.0f);
    lod.range.setValues(0, count, values.data());
}
