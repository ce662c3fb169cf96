#pragma once

#include "gltf/GltfJson.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

/// The binary part of a glTF file: views, each of which grows by itself, and stand one after the other in the
/// end.
class GltfBinary
{
public:
    /// What a view holds.
    enum class Content { anything, corners, triangles, indices };

    /// Adds an empty view. @return its number
    /// @param stride from one corner to the next, where the view holds corners; a multiple of 4. Indices have
    ///               2 bytes each
    int add(Content content, std::size_t stride = 0);

    /// Compresses the views of corners and indices by EXT_meshopt_compression. Nothing can be added to them
    /// any more. @return whether there are any
    bool compress();

    /// Bytes of the views that are compressed, as they are without that.
    std::size_t sizeWithout() const;

    /// The bytes of a view, to be added to.
    std::string& bytes(int view) { return views[static_cast<std::size_t>(view)].bytes; }

    /// All bytes with those between the views, which begin at multiples of 4.
    std::size_t size() const;

    /// What the file says of the views.
    GltfJson list() const;

    /// Calls a function with all bytes, piece by piece.
    void forEachPiece(std::function<void(std::string_view piece)> const& take) const;

    /// How many bytes are missing to a multiple of 4.
    static std::size_t gapAfter(std::size_t size) { return (4 - size % 4) % 4; }

private:
    struct View {
        Content content;
        std::size_t stride;
        std::string bytes;
        std::size_t sizeWithout = 0;  ///< Of one that is compressed, as it was before.
        std::size_t countWithout = 0; ///< Of what was in it.

        std::size_t sizeOfOne() const { return content == Content::corners ? stride : 2; }
    };

    std::vector<View> views;
};
