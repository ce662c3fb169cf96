#pragma once

#include "loader/FltVisual.h"
#include "visual/FltVisualWalk.h"

#include <cstdint>
#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

/// What is made of a mesh for Python because the visual has it in another form.
struct MeshCorners {
    explicit MeshCorners(FltMesh const& mesh);

    std::vector<std::uint8_t> colors;   ///< Red, green, blue and alpha of each corner.
    std::vector<std::uint32_t> indices; ///< Of triangles or pieces of lines.
};

/// A visual that Python holds.
class LoadedVisual
{
public:
    explicit LoadedVisual(FltVisual loaded);

    FltVisual const visual;

    /// The number of a mesh's texture among the distinct ones; negative if there is none.
    std::int32_t textureOf(std::int32_t number) const;

    /// Those of a mesh of the visual, shared by all that hold them at the same time.
    std::shared_ptr<MeshCorners const> cornersOf(FltMesh const& mesh);

private:
    std::vector<std::int32_t> textureNumbers; ///< Of each texture of the list.
    std::unordered_map<FltMesh const*, std::weak_ptr<MeshCorners const>> corners;
};

/// A mesh at one of its places, which keeps the storage of its arrays.
class PlacedMesh
{
public:
    /// An array in the storage of a mesh.
    struct Array {
        void const* first = nullptr;
        std::size_t rows = 0; ///< None if there is no such array.
        std::size_t columns = 0;
        char const* type = ""; ///< Of an element, as in Python's struct.
    };

    PlacedMesh(std::shared_ptr<LoadedVisual> visual, FltVisualWalk const& walk);

    /// @param which as Python names it
    /// @param layer for the texture coordinates of a further texture: its place in the list
    Array array(std::string_view which, std::size_t layer);

    LoadedVisual& loaded() const { return *visual; }
    FltMesh const& mesh;

private:
    MeshCorners const& corners();

    std::shared_ptr<LoadedVisual> visual;
    std::shared_ptr<MeshCorners const> ownCorners;
    double transform[4][4];
};
