#pragma once

#include "view/RecordFile.h"

#include <unordered_map>

class SoNode;

/// Finds for the nodes of a scene the records that they were made from, by their names and places.
///
/// A record is looked for by its name among the records one level below that of the nearest matched node
/// above, each record once, in the order of the file. Names are compared as the toolkit writes them in nodes.
/// The nodes of external files have no records here.
class RecordMatch
{
public:
    RecordMatch() = default;
    RecordMatch(SoNode* root, RecordFile const& file);

    /// The index in RecordFile::hierarchy(); -1 for a node without a record.
    int recordOf(SoNode const* node) const;

    /// The node of a record; null if none was made from it.
    SoNode* nodeOf(int record) const;

    std::size_t size() const { return records.size(); }

private:
    std::unordered_map<SoNode const*, int> records;
    std::unordered_map<int, SoNode*> nodes;
};
