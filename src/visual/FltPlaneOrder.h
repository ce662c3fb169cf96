#pragma once

#include "model/FltModel.h"
#include "visual/FltPlaneSet.h"

#include <Inventor/SbDPMatrix.h>
#include <cstdint>
#include <vector>

/// Which faces are drawn over others in their plane, because a relative priority says so: of groups, Objects
/// and faces below one parent the faces of the one with the higher priority lie on those of the others.
class FltPlaneOrder
{
public:
    using Number = FltModelTree::Number;

    explicit FltPlaneOrder(FltModel const& model);

    /// How many faces a face lies on, besides the one of which it is a sub-face.
    int levelOf(Number face) const
    {
        auto const at = static_cast<std::size_t>(face);
        return at < levels.size() ? levels[at] : 0;
    }

private:
    /// A face below a node whose children have an order.
    struct Entry {
        std::int32_t plane;
        int priority; ///< Of the child above it.
        Number face;
    };

    int priorityOf(Number number) const;
    bool isOrdered(Number parent) const;
    bool isSurface(Number number) const;
    void findEnds();
    void findPlanes();
    void readPoints(Number surface, std::vector<SbVec3d>& points);
    template <class List>
    void readList(FltRecordView const& record, std::vector<SbVec3d>& points) const;
    void order(Number parent);
    void raise(std::vector<Entry>& entries);

    FltModel const& model;
    std::vector<std::uint8_t> levels;  ///< By the number of a face; empty if nothing has an order.
    std::vector<std::uint8_t> heights; ///< How many sub-faces lie one on the other on a face.
    std::vector<Number> ends;          ///< One more than the highest number below a node.
    std::vector<std::int32_t> planes;  ///< Of faces and meshes.
    FltVertexStore oldVertices;        ///< Those that stand in faces.
    std::int64_t entriesLeft;          ///< An order inside another one looks at the same faces again.
};
