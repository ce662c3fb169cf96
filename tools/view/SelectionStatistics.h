#pragma once

#include "loader/FltScene.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>

class FltInventory;
class SoNode;

/// What a part of a scene is made of, counted as fltinfo counts the whole.
class SelectionStatistics
{
public:
    struct Numbers {
        bool hasRecord = false;     ///< Whether faces and vertices are known.
        std::uint64_t faces = 0;    ///< Face records, each file once.
        std::uint64_t vertices = 0; ///< Of the palettes and of meshes, each once.
        std::uint64_t triangles = 0;
        std::uint64_t textures = 0; ///< Different ones that are drawn.
        std::uint64_t bytes = 0;    ///< Of the nodes in memory, roughly.

        /// "1 face, 2 triangles, 4 vertices, 1 texture, about 2.3 kB"
        std::string describe() const;
    };

    /// @param scene lives longer than this
    explicit SelectionStatistics(FltScene const& scene);
    ~SelectionStatistics();

    /// @param place of the record that the node stands for; none if it stands for none
    Numbers of(SoNode& node, std::optional<FltRecordPlace> const& place);

private:
    FltInventory const* inventoryOf(std::string const& file);
    void addRecords(FltRecordPlace const& place, Numbers& numbers, std::set<std::string>& seen);
    void addReferences(FltInventory const& inventory, std::uint64_t begin, std::uint64_t end,
                       Numbers& numbers, std::set<std::string>& seen);

    FltScene const& scene;
    std::map<std::string, std::unique_ptr<FltInventory>> inventories; ///< By file; null if it can't be read.
};
