#pragma once

#include "toolkit/VelloReaderExport.h"
#include "visual/FltVisualNode.h"
#include "visual/FltVisualOptions.h"

#include <Inventor/SbDPMatrix.h>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

/// Goes over the meshes of a visual as they stand in the world: one after the other, each with its place.
///
///     FltVisualWalk walk(loader.loadVisual("airfield.flt").root);
///     while (walk.next())
///         use(walk.mesh(), walk.matrix());
///
/// What stands at several places comes once for each. Joints are at their current values, turning faces as
/// the database stores them, a switch shows the children of its current mask, and a flip-book its first
/// frame. Hidden nodes and meshes are passed over. The toolkit needn't be started.
class VELLOREADER_API FltVisualWalk
{
public:
    /// Which levels of detail are gone over.
    using LevelsOfDetail = FltVisualOptions::LevelsOfDetail;

    /// @param root   stays alive as long as the walk
    /// @param levels which levels of detail of each group are gone over
    explicit FltVisualWalk(std::shared_ptr<FltVisualNode const> root,
                           LevelsOfDetail levels = LevelsOfDetail::highest);

    /// Goes on to the next mesh, or the first one. @return whether there is one; the other functions are for
    /// that case
    bool next();

    /// The mesh itself, which lives as long as the visual.
    FltMesh const& mesh() const { return *current; }

    /// Brings a point of the mesh, its origin and position added in doubles, into the world: point * matrix.
    /// Where its determinant is negative, the sides of faces are turned.
    SbDPMatrix const& matrix() const { return frames.back().matrix; }

    /// The name of the nearest node above the mesh that has one; empty if there is none.
    std::string const& name() const { return frames.back().named->name; }

    /// The record of the nearest node above the mesh that has one.
    FltVisualNode::Record record() const { return frames.back().recorded->record; }

private:
    /// A node on the way to the mesh.
    struct Frame {
        FltVisualNode const* node;
        FltVisualNode const* named;
        FltVisualNode const* recorded;
        SbDPMatrix matrix;              ///< Of its children and meshes; not of copies, which have one each.
        std::size_t level;              ///< The one that is chosen; of other nodes, none.
        std::vector<SbDPMatrix> places; ///< Of copies.
        std::size_t step = 0;           ///< Children that are done, of each copy.
        std::size_t mesh = 0;           ///< Meshes that are done.
    };

    VELLOREADER_INNER void enter(FltVisualNode const& node, SbDPMatrix const& above);
    VELLOREADER_INNER bool goDown();

    std::shared_ptr<FltVisualNode const> root;
    LevelsOfDetail levels;
    std::vector<Frame> frames;
    FltMesh const* current = nullptr;
};
