#pragma once

#include "gltf/GltfBinary.h"
#include "gltf/GltfJson.h"

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// A glTF file while it is made. What is added to a list becomes text at once, so that a list of a million
/// nodes takes no more than its text.
class GltfDocument
{
public:
    enum class List { nodes, meshes, accessors, materials, textures, images, samplers, lights };

    /// Adds to a list. @return the number of what was added
    int add(List list, GltfJson const& value);

    /// How many a list holds.
    std::size_t count(List list) const { return lists[static_cast<std::size_t>(list)].count; }

    /// Bytes of its text.
    std::size_t textSize(List list) const { return lists[static_cast<std::size_t>(list)].text.size(); }

    /// Says that an extension is used.
    /// @param isRequired whether readers without it have to refuse the file
    void use(std::string_view extension, bool isRequired = false);

    GltfBinary binary;

    /// The text of the file.
    /// @param root     the number of the only node of the scene
    /// @param bufferUri where the binary part is; empty for the one of a .glb
    std::string text(int root, std::string const& bufferUri = "") const;

    /// Gives the bytes of a .glb, piece by piece.
    /// @param text from text()
    /// @return false if they are more than the format can count; then nothing is given
    bool writeGlb(std::string const& text, std::function<void(std::string_view piece)> const& take) const;

private:
    static constexpr std::size_t listCount = 8;

    struct Entries {
        std::string text;
        std::size_t count = 0;
    };

    std::array<Entries, listCount> lists;
    std::vector<std::string> used;
    std::vector<std::string> required;
};
