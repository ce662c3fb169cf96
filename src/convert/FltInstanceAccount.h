#pragma once

#include "convert/FltInstanceGraph.h"
#include "toolkit/SoNodeRef.h"

#include <Inventor/nodes/SoNode.h>
#include <map>
#include <optional>

class FltOneTimeWarnings;
struct FltAllowances;

/// The account of instances of one conversion: what stands in what, and the instance definitions that records
/// refer to by number. What would make the scene endless, too deep or too large is refused with a
/// warning, one for each reason.
class FltInstanceAccount
{
public:
    using Place = FltInstanceGraph::Place;

    /// A subtree that may stand in several places.
    struct Definition {
        SoNodeRef<SoNode> node;
        int scope = 0; ///< The subtree in the graph.
    };

    /// @param allowances of the whole conversion; they have to outlive this object
    /// @param surroundings of the scene when it is a part of another one
    FltInstanceAccount(FltOneTimeWarnings& warnings, FltAllowances& allowances,
                       FltInstanceGraph::Surroundings const& surroundings = {})
        : graph(allowances, surroundings), allowances(allowances), warnings(warnings)
    {
    }

    /// Enters a node.
    /// @return false, after a warning, if it must not be added to the scene
    bool addNode(Place at) { return isFine(graph.addNodes(at)); }

    /// Places a scope once more.
    /// @return false, after a warning, if it must not be placed
    bool place(int scope, Place at) { return isFine(graph.place(scope, at)); }

    /// Makes the node at a place the head of a scope, if it isn't one.
    /// @return its place as that
    Place openScope(Place at);

    /// Opens a scope for a node that stands nowhere yet.
    Place openUnattachedScope() { return {graph.addUnattachedScope(), 0}; }

    /// Opens a scope for a finished part of the scene that kept its own account.
    int addFinishedScope(Place at, int depth, std::int64_t nodes)
    {
        return graph.addFinishedScope(at, depth, nodes);
    }

    /// The same for one that was made for another place.
    /// @return nothing, after a warning, if it must not be placed
    std::optional<int> placeFinished(Place at, int depth, std::int64_t nodes);

    /// Enters a definition. One that has the number already is replaced.
    void define(int number, SoNode* node, int scope);

    /// The definition of a number, or null.
    Definition const* findDefinition(int number) const;

    FltInstanceGraph const& getGraph() const { return graph; }

private:
    bool isFine(FltInstanceGraph::Answer answer);

    FltInstanceGraph graph;
    FltAllowances const& allowances;
    FltOneTimeWarnings& warnings;
    std::map<int, Definition> instanceDefinitions;
};
