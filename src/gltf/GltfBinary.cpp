#include "gltf/GltfBinary.h"

#include <utility>

int GltfBinary::add(Target target, std::size_t stride)
{
    views.push_back({target, stride, {}});
    return static_cast<int>(views.size()) - 1;
}

std::size_t GltfBinary::size() const
{
    std::size_t size = 0;
    for (View const& view : views)
        size += view.bytes.size() + gapAfter(view.bytes.size());
    return size;
}

GltfJson GltfBinary::list() const
{
    GltfJson all = GltfJson::array();
    std::size_t offset = 0;
    for (View const& view : views) {
        GltfJson told = {{"buffer", 0}, {"byteOffset", offset}, {"byteLength", view.bytes.size()}};
        if (view.stride != 0)
            told["byteStride"] = view.stride;
        if (view.target != Target::none)
            told["target"] = static_cast<int>(view.target);
        all.push_back(std::move(told));
        offset += view.bytes.size() + gapAfter(view.bytes.size());
    }
    return all;
}

void GltfBinary::forEachPiece(std::function<void(std::string_view piece)> const& take) const
{
    constexpr std::string_view zeros("\0\0\0", 3);
    for (View const& view : views) {
        take(view.bytes);
        take(zeros.substr(0, gapAfter(view.bytes.size())));
    }
}
