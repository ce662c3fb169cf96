#pragma once

#include "globe/FltGlobeMap.h"
#include "globe/FltGlobeMesh.h"
#include "visual/FltVisualBounds.h"
#include "visual/FltVisualNode.h"

#include <Inventor/SbDPMatrix.h>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// Brings the nodes of a visual to the globe. What stands in the coordinates of the database is bent to it
/// corner by corner; models, which are placed by instances and references, and what moves stand there as a
/// whole and are those of the visual itself.
class FltGlobeNodes
{
public:
    using Node = std::shared_ptr<FltVisualNode>;

    /// @param map has to outlive this object
    explicit FltGlobeNodes(FltGlobeMap const& map) : map(map), meshes(map) {}

    /// The node and all that stands in it, in the frame of the map.
    /// @param node as the root of a visual, whose nodes stay as they are
    Node placed(Node const& node);

    /// What has no place on the earth: corners, and parts that stand as a whole.
    std::uint64_t lostCorners() const { return meshes.lost(); }
    std::uint64_t lostParts() const { return lost; } ///< @copydoc lostCorners()

    /// Parts in which nothing is, since they stand too deep.
    std::uint64_t tooDeep() const { return deep; }

private:
    using Record = FltVisualNode::Record;
    using Key = std::pair<FltVisualNode const*, double>;

    Node place(Node const& node, SbDPMatrix const& around, Record const& above);
    Node bent(FltVisualNode const& from, SbDPMatrix const& around, Record const& above);
    Node stood(Node const& node, SbDPMatrix const& around, bool isModel);
    Node stoodCopies(FltVisualNode const& from, SbDPMatrix const& around, Record const& above);
    void takeContent(FltVisualNode const& from, SbDPMatrix const& inside, FltVisualNode& node);
    void takeLight(FltVisualLight const& light, SbDPMatrix const& inside, FltVisualNode& node);
    SbVec3d middleOf(FltVisualNode const& node, bool isModel);
    static bool isFromElsewhere(Node const& node, Record const& above);

    FltGlobeMap const& map;
    FltGlobeMesh meshes;
    FltVisualBounds bounds;
    std::map<Key, Node> known; ///< What stands at several places, by its node and the unit around it.
    std::uint64_t lost = 0;
    std::uint64_t deep = 0;
};
