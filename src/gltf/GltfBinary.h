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
    /// What a view is for, as the format numbers it.
    enum class Target : int { none = 0, vertices = 34962, indices = 34963 };

    /// Adds an empty view. @return its number
    /// @param stride from one vertex to the next, where the view holds vertices; a multiple of 4
    int add(Target target, std::size_t stride = 0);

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
        Target target;
        std::size_t stride;
        std::string bytes;
    };

    std::vector<View> views;
};
