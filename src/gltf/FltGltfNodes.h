#pragma once

#include "gltf/FltGltfLosses.h"
#include "gltf/FltGltfMeshes.h"
#include "gltf/FltGltfOptions.h"
#include "gltf/GltfDocument.h"
#include "gltf/GltfInstances.h"
#include "gltf/GltfTransforms.h"
#include "loader/FltVisual.h"
#include "visual/FltLocalZeros.h"
#include "visual/FltVisualBounds.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// The nodes of a glTF file: those of a visual, each once for each place where it stands.
class FltGltfNodes
{
public:
    /// All have to outlive this object.
    FltGltfNodes(FltVisual const& visual, FltGltfOptions const& options, GltfDocument& document,
                 FltGltfMeshes& meshes, FltGltfLosses& losses);

    /// Writes all of them. @return the number of the one at the top
    int write();

    /// Triangles that are drawn.
    std::uint64_t triangles() const { return triangleCount; }

private:
    /// Where a node stands.
    struct Place {
        SbVec3d around{0, 0, 0};            ///< What counts as zero there.
        SbDPMatrix outer;                   ///< From there into what is written.
        std::optional<SbDPMatrix> workedIn; ///< What points have to bring along besides.
        double metresPerUnit = 1;           ///< As they are written.
        bool isShared = false;              ///< Whether what stands there may stand elsewhere, too.
    };

    /// What a parent knows of a child.
    struct Child {
        std::optional<std::size_t> number = std::nullopt; ///< Of a child that isn't always shown.
        bool isShown = true;
        std::vector<int> coarser = {};      ///< Nodes that stand for it farther away.
        std::vector<double> coverages = {}; ///< The parts of the screen above which each is drawn.
    };

    /// The nodes that a node of the visual becomes, one in the other.
    struct Chain {
        std::vector<GltfTransform> transforms;
        std::size_t named = 0; ///< The one that has the name: of a joint, the one that moves.
    };

    /// Where the copies of a part stand that are told at once.
    struct Copies {
        SbVec3d around;                   ///< What counts as zero in each.
        double metresPerUnit;             ///< As the first is written.
        std::vector<SbDPMatrix> matrices; ///< From there to what is written.
    };

    static constexpr int none = -1;

    int writeNode(std::shared_ptr<FltVisualNode> const& node, Place const& place, Child const& child);
    Place enter(FltVisualNode const& node, Place const& place, Chain& chain);
    void enterJoint(FltVisualNode const& node, FltVisualJoint const& joint, Place const& place, Place& inside,
                    Chain& chain);
    void addMatrix(SbDPMatrix matrix, Place& inside, Chain& chain);
    std::vector<int> writeChildren(FltVisualNode const& node, Place const& inside);
    Copies enter(FltVisualNode const& part, Copies const& copies);
    static Copies forChildren(Copies inside);
    bool areOfOneKind(FltVisualNode const& part, Copies const& copies);
    int writeCopies(FltVisualNode const& part, Copies const& copies);
    bool writeAtOnce(std::vector<int>& list, FltVisualNode const& part, FltVisualCopies const& copies,
                     Place const& inside);
    void writeLevels(FltVisualNode const& node, Place const& inside, std::vector<int>& list);
    Child writeCoarser(FltVisualNode const& node, std::size_t finest, Place const& inside);
    void writeChosen(FltVisualNode const& node, Place const& inside, std::vector<int>& list);
    void addChild(std::vector<int>& list, std::shared_ptr<FltVisualNode> const& node, Place const& place,
                  Child const& child);
    int finish(FltVisualNode const& node, Chain const& chain, Place const& inside, Child const& child,
               std::vector<int>& children);
    FltGltfMeshes::Place meshPlaceOf(Place const& inside) const;
    GltfJson contentOf(FltVisualNode const& node, Place const& inside, std::vector<int>& children);
    GltfJson extrasOf(FltVisualNode const& node, Place const& inside);
    int addLight(FltVisualLight const& light);
    void tellOfPlace(FltVisualNode const& node, Child const& child, GltfJson& json, GltfJson& extras);
    bool keepsCoarser(FltVisualNode const& node) const;
    static bool isShown(FltVisualNode const& node, std::size_t child);
    void tellWhatIsLost(FltVisualNode const& node);
    bool hasRoom() const;

    FltVisual const& visual;
    FltGltfOptions const& options;
    GltfDocument& document;
    FltGltfMeshes& meshes;
    FltGltfLosses& losses;
    GltfInstances instances;
    std::shared_ptr<FltVisualNode> root;
    FltLocalZeros zeros;
    FltVisualBounds bounds;
    std::size_t mostText;
    std::uint64_t triangleCount = 0;
    std::uint64_t copiesLeft = 500'000; ///< Places of nodes and meshes that may be looked at for copies.
    int hiddenAround = 0;               ///< Nodes around what is written now that aren't drawn.
    std::map<std::string, int> lights;  ///< By their texts.
};
