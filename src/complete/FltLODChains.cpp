#include "complete/FltLODChains.h"

#include "records/FltOpcode.h"

#include <Inventor/nodes/SoInfo.h>
#include <Inventor/nodes/SoLOD.h>
#include <algorithm>
#include <cmath>
#include <map>

namespace
{

constexpr std::uint32_t freezeCenterFlag = 0x20000000;

/// Distances meet if they differ by less than this part of them.
constexpr double meeting = 1e-6;

FltScenePart emptyPart()
{
    auto* const info = new SoInfo;
    info->string = "nothing";
    return {SoNodeRef<SoNode>(info), SbBox3f(), 1, 1};
}

} // namespace

bool FltLODChains::add(FltRecordView const& record, FltScenePart const& part)
{
    bool const isOld = record.opcode == FltOpcode::oldLOD;
    auto const numberAt = [&](std::size_t at) { return static_cast<double>(record.int32At(at)); };
    double const farthest = isOld ? numberAt(12) : record.doubleAt(16);
    double const nearest = isOld ? numberAt(16) : record.doubleAt(24);
    if (!(nearest >= 0) || !(farthest > nearest))
        return false;
    std::uint32_t const flags = record.word32At(isOld ? 24 : 36);
    SbVec3f center;
    for (std::size_t i = 0; i < 3; ++i)
        center[static_cast<int>(i)] =
            static_cast<float>(isOld ? numberAt(28 + 4 * i) : record.doubleAt(40 + 8 * i));
    bool const isFinite = std::isfinite(center.sqrLength());
    bool const hasCenter = isFinite && (center != SbVec3f(0, 0, 0) || (flags & freezeCenterFlag) != 0);
    levels.push_back({nearest, farthest, center, hasCenter, part});
    return true;
}

void FltLODChains::finish(FltGroupBuilder& group)
{
    std::stable_sort(levels.begin(), levels.end(),
                     [](Level const& left, Level const& right) { return left.nearest < right.nearest; });
    std::multimap<double, Level const*> waiting;
    for (Level const& level : levels)
        waiting.emplace(level.nearest, &level);
    while (!waiting.empty()) {
        std::vector<Level const*> chain;
        auto next = waiting.begin();
        while (next != waiting.end()) {
            chain.push_back(next->second);
            waiting.erase(next);
            double const end = chain.back()->farthest;
            next = waiting.lower_bound(end * (1 - meeting));
            if (next != waiting.end() && next->first > end * (1 + meeting))
                next = waiting.end();
        }
        addChain(chain, group);
    }
    levels.clear();
}

void FltLODChains::addChain(std::vector<Level const*> const& chain, FltGroupBuilder& group) const
{
    switch (choice) {
    case FltLODChoice::stored:
        addLOD(chain, group);
        break;
    case FltLODChoice::highest:
        group.add(chain.front()->part);
        break;
    case FltLODChoice::lowest:
        group.add(chain.back()->part);
        break;
    }
}

/// Nearer than the first level and farther than the last one nothing is drawn.
void FltLODChains::addLOD(std::vector<Level const*> const& chain, FltGroupBuilder& group) const
{
    auto* const lod = new SoLOD;
    FltGroupBuilder builder(lod);
    int ranges = 0;
    auto const addRange = [&](double distance) {
        lod->range.set1Value(ranges++, static_cast<float>(distance * worldPerUnit));
    };
    if (chain.front()->nearest > 0) {
        builder.add(emptyPart());
        addRange(chain.front()->nearest);
    }
    for (Level const* level : chain) {
        if (!builder.add(level->part))
            builder.add(emptyPart());
        addRange(level->farthest);
    }
    builder.add(emptyPart());
    auto const stored =
        std::find_if(chain.begin(), chain.end(), [](Level const* level) { return level->hasCenter; });
    if (stored != chain.end())
        lod->center = (*stored)->center;
    else if (!builder.getBox().isEmpty())
        lod->center = builder.getBox().getCenter();
    group.add(builder.finish());
}
