#pragma once

#include "visual/FltDegreeOfFreedom.h"
#include "visual/FltMesh.h"
#include "visual/FltVisualFlipBook.h"
#include "visual/FltVisualRecord.h"
#include "visual/FltVisualSenses.h"
#include "visual/FltVisualSwitch.h"

#include <Inventor/SbDPMatrix.h>
#include <Inventor/SbMatrix.h>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

/// What the record of a level of detail says besides its distances.
struct FltVisualLevel {
    double significantSize = 0; ///< As stored.
};

/// Levels of detail, the nearest first. A child is drawn as long as the eye is nearer than its distance, and
/// not nearer than that of the child before. A null one draws nothing. Coarser children may stay while finer
/// ones are added to them.
struct FltVisualLevels {
    std::vector<double> distances; ///< In the world's units: one less than children, the last has no end.
    std::optional<SbVec3f> center; ///< What distances count from; the origin without it.

    /// Whether the child after a child stays where that child is drawn: one value for each child, or none if
    /// each is drawn alone.
    std::vector<bool> nextStays;

    /// One more than the last child that is drawn where a child is: all from that child on are.
    std::size_t endOfDrawn(std::size_t child) const
    {
        std::size_t end = child + 1;
        while (end <= nextStays.size() && nextStays[end - 1])
            ++end;
        return end;
    }
};

/// A part that can be moved. All children and meshes stand below frame⁻¹, the motion, and frame, which act in
/// this order. The motion is, in this order: a scale, a roll about y, a pitch about x, a yaw about z, a
/// translation; each has its current value. The node's own transform acts before all of them.
struct FltVisualJoint : FltDegreeOfFreedom {
    std::optional<SbDPMatrix> frame; ///< Rows of axes and the origin; without it the node's own.
    std::size_t number = 0;          ///< Orders all joints of a database.
};

/// The only child stands at several places.
struct FltVisualCopies {
    std::vector<SbDPMatrix> places; ///< The first is that of the child itself.
};

/// The meshes turn to the eye: their x goes to the right, and their -y to the eye.
struct FltVisualTurning {
    SbVec3d foot;              ///< Where the origin of the meshes stands.
    bool isAboutPoint = false; ///< It turns any way; otherwise about z alone.
    double rows[3][3] = {
        {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}; ///< What turned the stored directions into the meshes'.
};

/// The only child is in another unit.
struct FltVisualScale {
    double factor = 1; ///< All lengths below are multiplied by it.
};

/// A light, which shines on what comes after it in its parent and in all that stands below that.
struct FltVisualLight {
    /// Where it shines from.
    enum class Kind { infinite, local, spot };

    Kind kind = Kind::infinite;       ///< Where it shines from.
    SbVec3d position{0, 0, 0};        ///< Of a local light or a spot.
    SbVec3f direction{0, 0, -1};      ///< In which it shines; of an infinite light or a spot.
    SbColor color{1, 1, 1};           ///< Of all of its light.
    float cutOffAngle = 0;            ///< Of a spot: half its cone, in radians.
    float dropOffRate = 0;            ///< Of a spot: from 0 (even) to 1 (narrow).
    float attenuation[3] = {1, 0, 0}; ///< Constant, linear and quadratic.
};

/// Text that stands upright along x, or lies.
struct FltVisualText {
    /// Which end of a line stands at the place.
    enum class Alignment { left, right, center };

    std::vector<std::string> lines;        ///< In UTF-8, the highest first.
    SbVec3d place{0, 0, 0};                ///< Of the lowest line: its begin, end or middle, by alignment.
    float size = 1;                        ///< From line to line.
    bool isLying = false;                  ///< In the plane of x and y; otherwise of x and z.
    Alignment alignment = Alignment::left; ///< Of all lines.
    std::uint32_t color = ~0U;             ///< Red, green, blue and 255, red highest.
};

/// Another file stands here, which whoever reads the result opens.
struct FltVisualFile {
    std::string path; ///< What to open.
};

/// A node of what is to be seen of a database: plain data, from which any form of it can be made.
///
/// A visual is a tree in which parts may be shared: a node may stand below several parents. What stands in a
/// node is drawn in this order: content (a text), children, meshes. Units are those of the file that the node
/// comes from, unless FltVisualScale stands above.
struct FltVisualNode {
    /// What a node is besides a group.
    using Content = std::variant<
        std::monostate, // a group
        std::unique_ptr<FltVisualLevel>, std::unique_ptr<FltVisualLevels>, std::unique_ptr<FltVisualSwitch>,
        std::unique_ptr<FltVisualJoint>, std::unique_ptr<FltVisualCopies>, std::unique_ptr<FltVisualTurning>,
        std::unique_ptr<FltVisualScale>, std::unique_ptr<FltVisualLight>, std::unique_ptr<FltVisualText>,
        std::unique_ptr<FltVisualFile>, std::unique_ptr<FltVisualFlipBook>>;

    /// The record that a node comes from.
    using Record = FltVisualRecord;

    std::string name;                  ///< As the database has it; empty for a node that no record names.
    std::vector<std::string> comments; ///< Of the database's people.
    Record record;                     ///< The record that it comes from.
    bool isHidden = false;             ///< Nothing of it is to be seen, unless somebody asks for it.
    std::vector<SbDPMatrix> transform; ///< Of children and meshes: the last matrix acts first.
    Content content;                   ///< What it is besides a group.
    FltVisualSenses senses;            ///< In which it stands, its own transform not counted.
    std::vector<std::shared_ptr<FltVisualNode>> children; ///< Null only where one of several is drawn.
    std::vector<FltMesh> meshes;                          ///< Of its own, drawn after its children.

    /// What the node is besides a group.
    /// @return null if it is something else
    template <class Part>
    Part const* as() const
    {
        auto const* const part = std::get_if<std::unique_ptr<Part>>(&content);
        return part != nullptr ? part->get() : nullptr;
    }

    /// The same, to be changed.
    template <class Part>
    Part* as()
    {
        return const_cast<Part*>(static_cast<FltVisualNode const*>(this)->as<Part>());
    }

    /// Makes the node something else than a group.
    template <class Part>
    Part& become(Part part = {})
    {
        return *content.emplace<std::unique_ptr<Part>>(std::make_unique<Part>(std::move(part)));
    }
};
