#include "gltf/GltfVertexViews.h"

#include "gltf/GltfColors.h"

#include <Inventor/SbBox3f.h>
#include <algorithm>
#include <array>
#include <cmath>

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "glTF has the lowest byte first");

namespace
{

/// As the format numbers them.
constexpr int signedByte = 5120, unsignedShort = 5123, floatingPoint = 5126;

void append(std::string& bytes, void const* value, std::size_t size)
{
    bytes.append(static_cast<char const*>(value), size);
}

GltfJson listOf(SbVec3f const& place)
{
    return GltfJson::array(
        {static_cast<double>(place[0]), static_cast<double>(place[1]), static_cast<double>(place[2])});
}

/// Whether a picture isn't repeated along corners.
bool areInPicture(GltfCorners const& corners, std::vector<std::uint32_t> const& numbers)
{
    auto const isIn = [](float value) { return value >= 0 && value <= 1; };
    return std::all_of(numbers.begin(), numbers.end(), [&](std::uint32_t number) {
        SbVec2f const& uv = corners.uvs[number];
        return isIn(uv[0]) && isIn(uv[1]);
    });
}

} // namespace

std::string& GltfVertexViews::bytesOf(View& view)
{
    if (!view.number)
        view.number = document.binary.add(view.content, view.stride);
    return document.binary.bytes(*view.number);
}

/// @param more members of the accessor
int GltfVertexViews::add(View const& view, std::size_t offset, int componentType, std::size_t count,
                         char const* type, GltfJson const& more)
{
    GltfJson told = {{"bufferView", *view.number}};
    if (offset != 0)
        told["byteOffset"] = offset;
    told["componentType"] = componentType;
    told["count"] = count;
    told["type"] = type;
    told.update(more);
    return document.add(GltfDocument::List::accessors, told);
}

GltfJson GltfVertexViews::addCorners(GltfCorners const& corners, std::vector<std::uint32_t> const& numbers,
                                     std::optional<GltfGrid> const& grid)
{
    GltfJson attributes = {
        {"POSITION", grid ? addPlaces(corners, numbers, *grid) : addPositions(corners, numbers)}};
    if (!corners.normals.empty())
        attributes["NORMAL"] = grid ? addRoundNormals(corners, numbers) : addNormals(corners, numbers);
    if (!corners.uvs.empty())
        attributes["TEXCOORD_0"] =
            grid && areInPicture(corners, numbers) ? addRoundUvs(corners, numbers) : addUvs(corners, numbers);
    if (!corners.colors.empty())
        attributes["COLOR_0"] = addColors(corners, numbers);
    return attributes;
}

int GltfVertexViews::addPositions(GltfCorners const& corners, std::vector<std::uint32_t> const& numbers)
{
    std::string& bytes = bytesOf(positions);
    std::size_t const offset = bytes.size();
    SbBox3f box;
    for (std::uint32_t const number : numbers) {
        SbVec3f const& position = corners.positions[number];
        append(bytes, position.getValue(), positions.stride);
        box.extendBy(position);
    }
    return add(positions, offset, floatingPoint, numbers.size(), "VEC3",
               {{"min", listOf(box.getMin())}, {"max", listOf(box.getMax())}});
}

int GltfVertexViews::addPlaces(GltfCorners const& corners, std::vector<std::uint32_t> const& numbers,
                               GltfGrid const& grid)
{
    std::string& bytes = bytesOf(places);
    std::size_t const offset = bytes.size();
    std::array<std::uint16_t, 3> least = grid.rounded(corners.positions[numbers.front()]), most = least;
    for (std::uint32_t const number : numbers) {
        std::array<std::uint16_t, 3> const place = grid.rounded(corners.positions[number]);
        append(bytes, place.data(), sizeof place);
        bytes.append(places.stride - sizeof place, '\0');
        for (std::size_t axis = 0; axis < place.size(); ++axis) {
            least[axis] = std::min(least[axis], place[axis]);
            most[axis] = std::max(most[axis], place[axis]);
        }
    }
    return add(places, offset, unsignedShort, numbers.size(), "VEC3", {{"min", least}, {"max", most}});
}

int GltfVertexViews::addNormals(GltfCorners const& corners, std::vector<std::uint32_t> const& numbers)
{
    std::string& bytes = bytesOf(normals);
    std::size_t const offset = bytes.size();
    for (std::uint32_t const number : numbers)
        append(bytes, corners.normals[number].getValue(), normals.stride);
    return add(normals, offset, floatingPoint, numbers.size(), "VEC3", GltfJson::object());
}

int GltfVertexViews::addRoundNormals(GltfCorners const& corners, std::vector<std::uint32_t> const& numbers)
{
    constexpr float most = INT8_MAX;
    std::string& bytes = bytesOf(roundNormals);
    std::size_t const offset = bytes.size();
    for (std::uint32_t const number : numbers) {
        std::array<std::int8_t, 4> normal{};
        for (int axis = 0; axis < 3; ++axis)
            normal[static_cast<std::size_t>(axis)] = static_cast<std::int8_t>(
                std::round(std::clamp(corners.normals[number][axis], -1.0F, 1.0F) * most));
        append(bytes, normal.data(), sizeof normal);
    }
    return add(roundNormals, offset, signedByte, numbers.size(), "VEC3", {{"normalized", true}});
}

int GltfVertexViews::addUvs(GltfCorners const& corners, std::vector<std::uint32_t> const& numbers)
{
    std::string& bytes = bytesOf(uvs);
    std::size_t const offset = bytes.size();
    for (std::uint32_t const number : numbers)
        append(bytes, corners.uvs[number].getValue(), uvs.stride);
    return add(uvs, offset, floatingPoint, numbers.size(), "VEC2", GltfJson::object());
}

int GltfVertexViews::addRoundUvs(GltfCorners const& corners, std::vector<std::uint32_t> const& numbers)
{
    constexpr float most = UINT16_MAX;
    std::string& bytes = bytesOf(roundUvs);
    std::size_t const offset = bytes.size();
    for (std::uint32_t const number : numbers)
        for (int axis = 0; axis < 2; ++axis) {
            auto const part = static_cast<std::uint16_t>(std::round(corners.uvs[number][axis] * most));
            append(bytes, &part, sizeof part);
        }
    return add(roundUvs, offset, unsignedShort, numbers.size(), "VEC2", {{"normalized", true}});
}

int GltfVertexViews::addColors(GltfCorners const& corners, std::vector<std::uint32_t> const& numbers)
{
    std::string& bytes = bytesOf(colors);
    std::size_t const offset = bytes.size();
    for (std::uint32_t const number : numbers) {
        auto const color = GltfColors::linear(corners.colors[number]);
        append(bytes, color.data(), colors.stride);
    }
    return add(colors, offset, unsignedShort, numbers.size(), "VEC4", {{"normalized", true}});
}

int GltfVertexViews::addIndices(std::vector<std::uint16_t> const& values, bool areTriangles)
{
    View& view = areTriangles ? triangles : lines;
    std::string& bytes = bytesOf(view);
    std::size_t const offset = bytes.size();
    append(bytes, values.data(), values.size() * sizeof values.front());
    return add(view, offset, unsignedShort, values.size(), "SCALAR", GltfJson::object());
}
