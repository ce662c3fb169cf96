#pragma once

#include "inspect/FltCheckedModel.h"

#include <Inventor/SbBox3d.h>
#include <cstdint>
#include <vector>

/// The boxes around the faces of nodes, each in the frame of its node: where its matrices haven't acted yet.
class FltNodeBoxes
{
public:
    explicit FltNodeBoxes(FltCheckedModel const& checked);

    /// Adds a vertex of a face that stands directly below a node.
    void add(std::uint32_t node, SbVec3d const& position);

    /// Adds the boxes of all nodes to those above them. Call it once, when all vertices are there.
    void join();

    /// The box of what stands below a node: directly before join(), and all of it afterwards.
    SbBox3d const& boxOf(std::uint32_t node) const { return boxes[node]; }

    /// The same where the matrices of the node have acted.
    SbBox3d placedBoxOf(std::uint32_t node) const;

    /// Whether faces are all that stands below a node, and nothing moves them.
    bool isPlain(std::uint32_t node) const { return plain[node]; }

    /// How far floats are from the vertices directly below a node, at most.
    double errorOf(std::uint32_t node) const { return errors[node]; }

private:
    bool isPlainItself(std::uint32_t node) const;

    FltCheckedModel const& checked;
    std::vector<SbBox3d> boxes;
    std::vector<double> errors;
    std::vector<bool> plain;
};
