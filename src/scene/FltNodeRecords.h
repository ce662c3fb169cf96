#pragma once

#include "visual/FltVisualNode.h"

#include <Inventor/nodes/SoNode.h>
#include <cstdint>
#include <utility>
#include <vector>

/// Which record each node of a scene comes from. Nodes that a record needed besides have none of their own:
/// they stand below one that has.
class FltNodeRecords
{
public:
    using Record = FltVisualNode::Record;

    /// What is known of a node: the record, and the node that stands for it.
    using Entry = std::pair<SoNode const*, Record>;

    /// Notes the record of a node, which must not be noted twice.
    void add(SoNode const* node, Record const& record);

    /// Notes which faces, lines or points of a shape come from which record.
    void addShape(SoNode const* shape, std::vector<FltMesh::Part> const& parts);

    /// Has find() know what was noted.
    void finish();

    bool isEmpty() const { return records.empty(); }

    /// Has find() know the other nodes of a scene too. It is looked through whole, so it is done for those
    /// who ask. The toolkit can't be asked what holds a node: SoBase::getAuditors() ends the process.
    void addParts(SoNode const& root);

    /// The record of a node, or else that of the nearest node above it that has one. Of several places of a
    /// node without a record the first one counts.
    /// @return null for a node that isn't known
    Entry const* find(SoNode const& node) const;

    /// The record of a face, a line or a point of a shape whose parts were noted.
    /// @return null for another shape
    Record const* findPart(SoNode const& shape, int number) const;

private:
    using Part = std::pair<SoNode const*, std::uint32_t>;
    using Shape = std::pair<SoNode const*, std::vector<FltMesh::Part>>;

    std::uint32_t numberOf(SoNode const* node) const;

    std::vector<Entry> records; ///< By address.
    std::vector<Shape> shapes;  ///< By address.
    std::vector<Part> parts;    ///< By address: nodes without a record, and the number of the one above them.
};
