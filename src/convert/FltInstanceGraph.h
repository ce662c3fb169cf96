#pragma once

#include <cstdint>
#include <vector>

struct FltAllowances;

/// Keeps account of what stands in what while a scene graph is built, so that shared subtrees can make it
/// neither endless nor too deep nor too large for a traversal.
///
/// A scope is a subtree that may stand in several places: the scene itself (scope 0), an instance definition,
/// a replicated node, an external file. The account of a scope is its nodes, its depth, and the scopes in it.
class FltInstanceGraph
{
public:
    /// Where a node stands: so many nodes below the head of its scope.
    struct Place {
        int scope = 0;
        int depth = 0;
    };

    enum class Answer {
        fine,
        endless, ///< The subtree would stand in itself.
        tooDeep, ///< A way from the root to a leaf would be longer than the scene may be deep.
        tooLarge ///< A traversal would meet more nodes than a scene may have.
    };

    /// What stands around a scene that is a part of another one.
    struct Surroundings {
        int depth = 0;                ///< Nodes above it.
        std::int64_t nodes = 0;       ///< Nodes that a traversal meets outside of it.
        std::int64_t occurrences = 1; ///< How often a traversal meets it.
    };

    /// @param allowances of the whole conversion; they have to outlive this object
    FltInstanceGraph(FltAllowances& allowances, Surroundings const& surroundings);
    explicit FltInstanceGraph(FltAllowances& allowances) : FltInstanceGraph(allowances, Surroundings()) {}

    /// The surroundings of a part of the scene.
    Surroundings surroundingsOf(Place at) const;

    /// Enters @p count nodes at a place. An answer other than fine means that they must not be added to the
    /// scene; nothing is entered then.
    Answer addNodes(Place at, int count = 1);

    /// Opens a scope for the subtree whose head stands at @p at.
    int addScope(Place at);

    /// Opens a scope that stands nowhere yet.
    int addUnattachedScope();

    /// Whether a finished subtree, of which only depth and size are known, may stand at a place.
    Answer checkFinished(Place at, int depth, std::int64_t nodes) const;

    /// Opens a scope for such a subtree.
    int addFinishedScope(Place at, int depth, std::int64_t nodes);

    /// Places a scope once more. An answer other than fine means that it must not be placed.
    Answer place(int scope, Place at);

    /// Nodes from the root of all down to a place.
    int depthOf(Place at) const { return scopes[static_cast<std::size_t>(at.scope)].above + at.depth; }

    /// The longest way below the head of the scene.
    int getDepth() const { return deepest - scopes.front().above; }

    /// Nodes that a traversal of the scene meets, those of shared subtrees once for each place.
    std::int64_t getNodes() const { return nodes; }

private:
    struct Scope {
        int above = 0;                ///< Most nodes above the head on any way.
        int depth = 0;                ///< Most nodes below the head, the scopes in it aside.
        std::int64_t nodes = 1;       ///< Nodes of the scope, the scopes in it aside.
        std::int64_t occurrences = 0; ///< How often a traversal meets it.
        std::vector<Place> inside;    ///< The scopes in it, each with its depth below the head.
    };

    Scope& at(int scope) { return scopes[static_cast<std::size_t>(scope)]; }

    /// How many nodes may still be added that a traversal meets so often each.
    std::int64_t nodesLeft(std::int64_t occurrences) const;

    std::vector<Scope> scopes;
    /// Scratch: scopes still to be looked at, each with its depth below the root of all.
    std::vector<Place> ways;
    FltAllowances& allowances;
    Surroundings surroundings;
    int deepest = 0;
    std::int64_t nodes = 1;
};
