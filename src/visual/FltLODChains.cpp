#include "visual/FltLODChains.h"

#include "records/FltOpcode.h"
#include "records/FltRecordLOD.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace
{

constexpr std::uint32_t freezeCenterFlag = 0x20000000;
constexpr std::uint32_t additiveFlag = 0x40000000; // of the newer form; the old one has another use for it

/// Distances meet if they differ by less than this part of them.
constexpr double meeting = 1e-6;

/// Files mark either of the two levels.
template <class Level>
bool staysBelow(Level const& coarser, Level const& finer)
{
    return coarser.isAdditive || finer.isAdditive;
}

/// A distance of the old form. One below zero is none.
double signedNumber(std::uint32_t stored)
{
    return static_cast<std::int32_t>(stored);
}

} // namespace

std::optional<FltLODChains::Level> FltLODChains::read(FltRecordView const& record)
{
    if (record.opcode == FltOpcode::lod)
        return levelOf(FltDecoded<FltRecordLOD>(record));
    FltDecoded<FltRecordOLDLOD> old(record);
    FltRecordLOD level(record.classLength());
    level.switchInDistance = signedNumber(old.switchInDistance);
    level.switchOutDistance = signedNumber(old.switchOutDistance);
    level.flags = old.flags & ~additiveFlag;
    level.XcenterCoordinate = old.XcenterCoordinate;
    level.YcenterCoordinate = old.YcenterCoordinate;
    level.ZcenterCoordinate = old.ZcenterCoordinate;
    return levelOf(level);
}

std::optional<FltLODChains::Level> FltLODChains::levelOf(FltRecordLOD const& record)
{
    double const farthest = record.switchInDistance;
    double const nearest = record.switchOutDistance;
    if (!(nearest >= 0) || !(farthest > nearest))
        return std::nullopt;
    SbVec3f const center(static_cast<float>(record.XcenterCoordinate),
                         static_cast<float>(record.YcenterCoordinate),
                         static_cast<float>(record.ZcenterCoordinate));
    bool const isFinite = std::isfinite(center.sqrLength());
    bool const hasCenter = isFinite && (center != SbVec3f(0, 0, 0) || (record.flags & freezeCenterFlag) != 0);
    bool const isAdditive = (record.flags & additiveFlag) != 0;
    return Level{nearest, farthest, center, hasCenter, isAdditive, {}};
}

void FltLODChains::finish(FltNodeBuilder& parent)
{
    std::stable_sort(levels.begin(), levels.end(),
                     [](Level const& left, Level const& right) { return left.nearest < right.nearest; });
    std::multimap<double, Level const*> waiting;
    for (Level const& level : levels)
        waiting.emplace(level.nearest, &level);
    while (!waiting.empty()) {
        Chain chain;
        auto next = waiting.begin();
        while (next != waiting.end()) {
            chain.push_back(next->second);
            waiting.erase(next);
            double const end = chain.back()->farthest;
            next = waiting.lower_bound(end * (1 - meeting));
            if (next != waiting.end() && next->first > end * (1 + meeting))
                next = waiting.end();
        }
        addChain(chain, parent);
    }
    levels.clear();
}

void FltLODChains::addChain(Chain const& chain, FltNodeBuilder& parent) const
{
    switch (choice) {
    case Choice::all:
        addLevels(chain, parent);
        break;
    case Choice::highest:
        for (std::size_t i = 0; i == 0 || (i < chain.size() && staysBelow(*chain[i], *chain[i - 1])); ++i)
            parent.add(chain[i]->part);
        break;
    case Choice::lowest:
        parent.add(chain.back()->part);
        break;
    }
}

/// Nearer than the first level and farther than the last one nothing is drawn.
void FltLODChains::addLevels(Chain const& chain, FltNodeBuilder& parent) const
{
    FltNodeBuilder builder;
    FltVisualLevels& node = builder->become<FltVisualLevels>();
    FltVisualPart const nothing;
    std::size_t const nothings = chain.front()->nearest > 0 ? 1 : 0;
    if (chain.front()->nearest > 0) {
        builder.addPlace(nothing);
        node.distances.push_back(chain.front()->nearest * worldPerUnit);
    }
    for (Level const* level : chain) {
        builder.addPlace(level->part);
        node.distances.push_back(level->farthest * worldPerUnit);
    }
    builder.addPlace(nothing);
    addCoarser(chain, nothings, builder);
    auto const stored =
        std::find_if(chain.begin(), chain.end(), [](Level const* level) { return level->hasCenter; });
    if (stored != chain.end())
        node.center = (*stored)->center;
    else if (!builder.getBox().isEmpty())
        node.center = builder.getBox().getCenter();
    parent.add(builder.finish());
}

/// Has coarser levels stay below those that are added to them.
/// @param nothings places before that of the first level
void FltLODChains::addCoarser(Chain const& chain, std::size_t nothings, FltNodeBuilder& node) const
{
    FltVisualLevels& levels = *node->as<FltVisualLevels>();
    std::int64_t visits = 0; // of all that is drawn with the level before
    for (std::size_t i = chain.size() - 1; i > 0; --i) {
        visits += chain[i]->part.visits + 1;
        if (!staysBelow(*chain[i], *chain[i - 1]) || !mayRepeat(visits)) {
            visits = 0;
            continue;
        }
        levels.nextStays.resize(nothings + chain.size());
        levels.nextStays[nothings + i - 1] = true;
        node.addVisits(visits);
    }
}
