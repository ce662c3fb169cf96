#pragma once

#include "scene/FltAppearanceNodes.h"
#include "scene/FltNodeNames.h"
#include "scene/FltNodeRecords.h"
#include "scene/FltSceneFlipBook.h"
#include "scene/FltSceneJoint.h"
#include "scene/FltSceneSwitch.h"
#include "visual/FltLocalZeros.h"
#include "visual/FltVisualNode.h"

#include <Inventor/nodes/SoSeparator.h>
#include <array>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

/// A visual as nodes of the toolkit, and what belongs to them.
struct FltMadeScene {
    SoNodeRef<SoSeparator> root;
    FltNodeNames names; ///< Of its nodes, which have none yet.
    FltNodeRecords records;
    std::vector<FltSceneSwitch> switches;    ///< In the order of their numbers.
    std::vector<FltSceneJoint> joints;       ///< In the order of their numbers.
    std::vector<FltSceneFlipBook> flipBooks; ///< In the order of their numbers.
};

/// Makes the nodes of a visual: the toolkit's own, so that the scene survives copying, writing and reading
/// back. The toolkit must be started.
class FltSceneMaker
{
public:
    /// @param root     a group or a scale, of which all nodes know their senses. All that nobody else holds
    ///                 is given away as soon as its nodes are made.
    /// @param textures that meshes name. They have to outlive this call.
    /// @param metresPerUnit of the scene's coordinates
    static FltMadeScene make(std::shared_ptr<FltVisualNode> root, std::vector<FltTexture> const& textures,
                             double metresPerUnit = 1);

    /// The same of a visual that stays as it is.
    static FltMadeScene makeOfKept(std::shared_ptr<FltVisualNode const> const& root,
                                   std::vector<FltTexture> const& textures, double metresPerUnit = 1);

private:
    FltSceneMaker(FltVisualNode const& root, std::vector<FltTexture> const& textures, double metresPerUnit,
                  bool keepsVisual)
        : keepsVisual(keepsVisual), appearances(textures), localZeros(root, metresPerUnit)
    {
    }

    /// Nodes of a part that stands at several places.
    struct Shared {
        std::shared_ptr<FltVisualNode> visual;    ///< So that no other one gets its address.
        std::array<SoNodeRef<SoNode>, 2> forms{}; ///< Outside of mirrors, and in them.
    };
    class Turned;

    FltMadeScene madeOf(FltVisualNode& root);
    SoNodeRef<SoNode> nodeOf(std::shared_ptr<FltVisualNode>& child);
    SoNodeRef<SoNode> sharedNodeOf(std::shared_ptr<FltVisualNode> const& visual);
    SoNodeRef<SoNode> makeNode(FltVisualNode& visual);
    SoNodeRef<SoNode> makeShownNode(FltVisualNode& visual);
    std::vector<SoNodeRef<SoNode>> nodesOfChildren(FltVisualNode& visual);
    SbVec3d wayTo(FltVisualNode const& child) const;
    template <class Make>
    SoNodeRef<SoNode> makeInZerosOf(FltVisualNode const& visual, Make make);
    SoNodeRef<SoNode> makeByContent(FltVisualNode& visual);
    SoNodeRef<SoNode> makeGroup(FltVisualNode& visual, SoGroup* group);
    SoNodeRef<SoNode> makeSwitch(FltVisualNode& visual);
    SoNodeRef<SoNode> makeLevels(FltVisualNode& visual);
    SoNodeRef<SoNode> makeTurning(FltVisualNode& visual);
    SoNodeRef<SoNode> makeCopies(FltVisualNode& visual);
    SoNodeRef<SoNode> makeCopies(FltVisualNode& visual, std::vector<SbDPMatrix> const& places);
    SoNodeRef<SoNode> makeScale(FltVisualNode& visual);
    SoNodeRef<SoNode> makeLight(FltVisualNode& visual);
    void begin(FltVisualNode const& visual, SoGroup& group);
    void addTransform(FltVisualNode const& visual, SoGroup& group);
    void addJoint(FltVisualNode const& visual, FltVisualJoint const& joint, SoGroup& group);
    void addChildren(FltVisualNode& visual, SoGroup& group);
    void addFlipBook(FltVisualNode& visual, SoGroup& group);
    void addMeshes(FltVisualNode& visual, SoGroup& group);
    void name(SoNode* node, FltVisualNode const& visual);
    bool isUsedUp(FltVisualNode const& visual) const;
    template <class Part>
    Part& entryOf(std::vector<Part>& list, FltVisualNode const& visual);

    FltMadeScene scene;
    bool const keepsVisual;
    bool isMirrored = false; ///< Whether what is being made stands in an odd number of mirrors.
    double worldPerUnit = 1; ///< Where the nodes are that are being made.
    FltAppearanceNodes appearances;
    FltLocalZeros const localZeros;
    FltLocalZeros::Zeros zeros; ///< Of the node that is being made.
    std::unordered_map<FltVisualNode const*, Shared> sharedNodes;
    std::unordered_map<FltVisualNode const*, std::size_t> entries; ///< In the lists of switches and joints.
};
