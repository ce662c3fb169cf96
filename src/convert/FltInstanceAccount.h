#pragma once

#include "convert/FltInstanceGraph.h"
#include "toolkit/SoNodeRef.h"

#include <Inventor/nodes/SoNode.h>
#include <map>

class FltOneTimeWarnings;

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

    /// @param depthAbove nodes above the scene when it is a part of another one
    explicit FltInstanceAccount(FltOneTimeWarnings& warnings, int depthAbove = 0)
        : graph(depthAbove), warnings(warnings)
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
    int addFinishedScope(Place at, FltInstanceAccount const& part);

    /// Enters a definition. One that has the number already is replaced.
    void define(int number, SoNode* node, int scope);

    /// The definition of a number, or null.
    Definition const* findDefinition(int number) const;

    FltInstanceGraph const& getGraph() const { return graph; }

private:
    bool isFine(FltInstanceGraph::Answer answer);

    FltInstanceGraph graph;
    FltOneTimeWarnings& warnings;
    std::map<int, Definition> instanceDefinitions;
};
