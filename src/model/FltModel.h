#pragma once

#include "model/FltModelRecordReader.h"
#include "model/FltModelTree.h"
#include "model/FltPaletteSet.h"
#include "model/FltVertexStore.h"
#include "records/FltRecordHeader.h"

#include <cstdint>
#include <memory>
#include <string>

/// One database as it was read: its hierarchy, vertices and palettes. The bytes of the file have to outlive
/// it.
struct FltModel {
    /// @param levelsAbove the levels that lead to the file, in those that refer to it
    FltModel(std::string const& fileName, char const* begin, std::size_t size, bool salvages,
             int levelsAbove = 0)
        : fileName(fileName), size(size), reader(begin, size, salvages), palettes(fileName), tree(levelsAbove)
    {
    }

    std::string fileName;
    std::size_t size; ///< Of the file in bytes.
    FltModelRecordReader reader;
    std::uint64_t records = 0;                     ///< Read so far.
    std::shared_ptr<FltRecordHeader const> header; ///< Null without one.
    int revision = 0;
    double metresPerUnit = 1;
    FltPaletteSet palettes;
    FltVertexStore vertices;
    FltModelTree tree;
};
