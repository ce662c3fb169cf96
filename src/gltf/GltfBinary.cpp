#include "gltf/GltfBinary.h"

#include <algorithm>
#include <cstring>
#include <meshoptimizer.h>
#include <optional>
#include <utility>

namespace
{

using Content = GltfBinary::Content;

/// As the format numbers what views are for.
std::optional<int> targetOf(Content content)
{
    constexpr int corners = 34962, indices = 34963;
    switch (content) {
    case Content::anything:
        return std::nullopt;
    case Content::corners:
        return corners;
    case Content::triangles:
    case Content::indices:
        return indices;
    }
    return std::nullopt;
}

char const* modeOf(Content content)
{
    return content == Content::corners     ? "ATTRIBUTES"
           : content == Content::triangles ? "TRIANGLES"
                                           : "INDICES";
}

/// What the extension is made for. They are kept by the library for the whole process.
void chooseVersions()
{
    static bool const areChosen = [] {
        meshopt_encodeVertexVersion(0);
        meshopt_encodeIndexVersion(1);
        return true;
    }();
    static_cast<void>(areChosen);
}

std::string compressedCorners(std::string const& bytes, std::size_t stride)
{
    std::size_t const count = bytes.size() / stride;
    std::string packed(meshopt_encodeVertexBufferBound(count, stride), '\0');
    packed.resize(meshopt_encodeVertexBuffer(reinterpret_cast<unsigned char*>(packed.data()), packed.size(),
                                             bytes.data(), count, stride));
    return packed;
}

std::string compressedIndices(std::string const& bytes, bool areTriangles)
{
    constexpr std::size_t corners = std::size_t(UINT16_MAX) + 1;
    std::vector<std::uint16_t> values(bytes.size() / sizeof(std::uint16_t));
    std::memcpy(values.data(), bytes.data(), values.size() * sizeof values.front());
    std::vector<unsigned> const indices(values.begin(), values.end());
    std::string packed(areTriangles ? meshopt_encodeIndexBufferBound(indices.size(), corners)
                                    : meshopt_encodeIndexSequenceBound(indices.size(), corners),
                       '\0');
    auto* const begin = reinterpret_cast<unsigned char*>(packed.data());
    packed.resize(areTriangles
                      ? meshopt_encodeIndexBuffer(begin, packed.size(), indices.data(), indices.size())
                      : meshopt_encodeIndexSequence(begin, packed.size(), indices.data(), indices.size()));
    return packed;
}

} // namespace

int GltfBinary::add(Content content, std::size_t stride)
{
    views.push_back({content, stride, {}});
    return static_cast<int>(views.size()) - 1;
}

bool GltfBinary::compress()
{
    chooseVersions();
    for (View& view : views) {
        if (view.content == Content::anything || view.bytes.empty())
            continue;
        std::string packed = view.content == Content::corners
                                 ? compressedCorners(view.bytes, view.stride)
                                 : compressedIndices(view.bytes, view.content == Content::triangles);
        if (packed.empty() || packed.size() >= view.bytes.size())
            continue;
        view.sizeWithout = view.bytes.size();
        view.countWithout = view.sizeWithout / view.sizeOfOne();
        view.bytes = std::move(packed);
    }
    return sizeWithout() != 0;
}

std::size_t GltfBinary::sizeWithout() const
{
    std::size_t size = 0;
    for (View const& view : views)
        size += view.sizeWithout + gapAfter(view.sizeWithout);
    return size;
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
    std::size_t offset = 0, offsetWithout = 0;
    for (View const& view : views) {
        bool const isPacked = view.sizeWithout != 0;
        GltfJson told = {{"buffer", isPacked ? 1 : 0},
                         {"byteOffset", isPacked ? offsetWithout : offset},
                         {"byteLength", isPacked ? view.sizeWithout : view.bytes.size()}};
        if (view.stride != 0)
            told["byteStride"] = view.stride;
        if (std::optional<int> const target = targetOf(view.content))
            told["target"] = *target;
        if (isPacked)
            told["extensions"]["EXT_meshopt_compression"] = {{"buffer", 0},
                                                             {"byteOffset", offset},
                                                             {"byteLength", view.bytes.size()},
                                                             {"byteStride", view.sizeOfOne()},
                                                             {"mode", modeOf(view.content)},
                                                             {"count", view.countWithout}};
        all.push_back(std::move(told));
        offset += view.bytes.size() + gapAfter(view.bytes.size());
        offsetWithout += view.sizeWithout + gapAfter(view.sizeWithout);
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
