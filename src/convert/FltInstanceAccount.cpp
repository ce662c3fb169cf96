#include "convert/FltInstanceAccount.h"

#include "convert/FltAllowances.h"
#include "convert/FltOneTimeWarnings.h"
#include "messages/FltLimits.h"

#include <string>

FltInstanceAccount::Place FltInstanceAccount::openScope(Place at)
{
    return at.depth > 0 ? Place{graph.addScope(at), 0} : at;
}

std::optional<int> FltInstanceAccount::placeFinished(Place at, int depth, std::int64_t nodes)
{
    if (!isFine(graph.checkFinished(at, depth, nodes)))
        return std::nullopt;
    return graph.addFinishedScope(at, depth, nodes);
}

void FltInstanceAccount::define(int number, SoNode* node, int scope)
{
    instanceDefinitions[number] = {SoNodeRef<SoNode>(node), scope};
}

FltInstanceAccount::Definition const* FltInstanceAccount::findDefinition(int number) const
{
    auto const found = instanceDefinitions.find(number);
    return found != instanceDefinitions.end() ? &found->second : nullptr;
}

bool FltInstanceAccount::isFine(FltInstanceGraph::Answer answer)
{
    switch (answer) {
    case FltInstanceGraph::Answer::fine:
        return true;
    case FltInstanceGraph::Answer::endless:
        warnings.notify("WARNING ! An instance holds a reference to itself, which is left out");
        break;
    case FltInstanceGraph::Answer::tooDeep:
        warnings.notify("WARNING ! The scene is more than " + std::to_string(FltLimits::sceneDepth) +
                        " nodes deep: what lies deeper is left out");
        break;
    case FltInstanceGraph::Answer::tooLarge:
        warnings.notify("WARNING ! The instances of the file make a scene of more than " +
                        std::to_string(allowances.sceneNodes.getLimit()) +
                        " nodes: further ones are left out");
        break;
    }
    return false;
}
