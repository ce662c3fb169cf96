#include "convert/FltInstanceGraph.h"

#include "convert/FltAllowances.h"
#include "messages/FltLimits.h"

#include <algorithm>

FltInstanceGraph::FltInstanceGraph(FltAllowances& allowances, Surroundings const& surroundings)
    : allowances(allowances), surroundings(surroundings), deepest(surroundings.depth)
{
    Scope scene;
    scene.above = surroundings.depth;
    scene.occurrences = 1;
    scopes.push_back(scene);
}

FltInstanceGraph::Surroundings FltInstanceGraph::surroundingsOf(Place place) const
{
    std::int64_t const occurrences = scopes[static_cast<std::size_t>(place.scope)].occurrences;
    return {depthOf(place), surroundings.nodes + nodes * surroundings.occurrences,
            occurrences * surroundings.occurrences};
}

std::int64_t FltInstanceGraph::nodesLeft(std::int64_t occurrences) const
{
    std::int64_t const outside = allowances.sceneNodes.getLimit() - surroundings.nodes;
    std::int64_t const most = surroundings.occurrences > 0 ? outside / surroundings.occurrences : outside;
    return std::max<std::int64_t>(occurrences > 0 ? (most - nodes) / occurrences : most, 0);
}

FltInstanceGraph::Answer FltInstanceGraph::addNodes(Place place, int count)
{
    Scope& scope = at(place.scope);
    int const depth = scope.above + place.depth;
    if (depth > FltLimits::sceneDepth)
        return Answer::tooDeep;
    if (count > nodesLeft(scope.occurrences))
        return Answer::tooLarge;
    nodes += scope.occurrences * count;
    scope.nodes += count;
    scope.depth = std::max(scope.depth, place.depth);
    deepest = std::max(deepest, depth);
    return Answer::fine;
}

int FltInstanceGraph::addScope(Place place)
{
    int const scope = addUnattachedScope();
    Scope const& outer = at(place.scope);
    at(scope).above = outer.above + place.depth;
    at(scope).occurrences = outer.occurrences;
    at(scope).nodes = 0; // the head was entered where it stands
    at(place.scope).inside.push_back({scope, place.depth});
    return scope;
}

int FltInstanceGraph::addUnattachedScope()
{
    scopes.emplace_back();
    return static_cast<int>(scopes.size()) - 1;
}

FltInstanceGraph::Answer FltInstanceGraph::checkFinished(Place place, int depth,
                                                         std::int64_t finishedNodes) const
{
    if (depthOf(place) + depth > FltLimits::sceneDepth)
        return Answer::tooDeep;
    if (finishedNodes > nodesLeft(scopes[static_cast<std::size_t>(place.scope)].occurrences))
        return Answer::tooLarge;
    return Answer::fine;
}

int FltInstanceGraph::addFinishedScope(Place place, int depth, std::int64_t finishedNodes)
{
    int const scope = addScope(place);
    at(scope).depth = depth;
    at(scope).nodes = finishedNodes;
    nodes += finishedNodes * at(scope).occurrences;
    deepest = std::max(deepest, at(scope).above + depth);
    return scope;
}

FltInstanceGraph::Answer FltInstanceGraph::place(int scope, Place place)
{
    Scope const& outer = at(place.scope);
    std::int64_t const occurrences = outer.occurrences;
    std::int64_t const most = nodesLeft(occurrences);
    std::int64_t more = 0;

    // Two rounds over every way down from the scope's head: the first only looks, the second enters. The
    // first ends when the ways hold too many nodes, so neither can be long.
    for (bool const enter : {false, true}) {
        ways.assign(1, {scope, outer.above + place.depth});
        while (!ways.empty()) {
            Place const way = ways.back();
            ways.pop_back();
            Scope& met = at(way.scope);
            if (enter) {
                met.occurrences += occurrences;
                met.above = std::max(met.above, way.depth);
                deepest = std::max(deepest, way.depth + met.depth);
            } else {
                more += std::max<std::int64_t>(met.nodes, 1);
                if (way.scope == place.scope)
                    return Answer::endless;
                if (way.depth + met.depth > FltLimits::sceneDepth)
                    return Answer::tooDeep;
                if (more > most || !allowances.instanceCheckSteps.spend(1))
                    return Answer::tooLarge;
            }
            for (Place const& inner : met.inside)
                ways.push_back({inner.scope, way.depth + inner.depth});
        }
    }
    nodes += more * occurrences;
    at(place.scope).inside.push_back({scope, place.depth});
    return Answer::fine;
}
