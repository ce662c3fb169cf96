#pragma once

#include <cstddef>
#include <vector>

class SoNode;

/// The nodes of a scene graph while it is built, which notify nobody of their changes.
///
/// A node that changes notifies all its parents, up to the root. Nobody listens before the scene is finished,
/// and each new node would cost such a walk.
///
/// A silent node doesn't forget what the toolkit found out about its children either. So a box that was taken
/// of a part of the scene has to be noted, and forgotten before nodes are added there.
class FltSilencedScene
{
public:
    /// The place of a node among the others, in the order in which they were silenced.
    using Order = std::size_t;

    /// Silences a node, which has to live until end(). May be null.
    Order silence(SoNode* node);

    /// Notes that a box was taken of a subtree: of the node at @p first, and of all that came after it.
    void noteBox(Order first);

    /// Makes the toolkit forget the box of the subtree that holds the node at @p order, if one was taken.
    void forgetBox(Order order);

    /// Makes every node forget what it remembers of its children, and notify again.
    void end();

private:
    /// Nodes from one up to and without another.
    struct Range {
        Order begin;
        Order end;
    };

    std::vector<SoNode*> silencedNodes;
    std::vector<Range> boxedNodes; ///< In ascending order; none lies in another.
};
