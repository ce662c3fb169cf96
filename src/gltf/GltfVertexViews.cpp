#include "gltf/GltfVertexViews.h"

#include "gltf/GltfColors.h"

#include <Inventor/SbBox3f.h>

static_assert(__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__, "glTF has the lowest byte first");

namespace
{

/// As the format numbers them.
constexpr int unsignedShort = 5123, floatingPoint = 5126;

void append(std::string& bytes, void const* value, std::size_t size)
{
    bytes.append(static_cast<char const*>(value), size);
}

GltfJson listOf(SbVec3f const& place)
{
    return GltfJson::array(
        {static_cast<double>(place[0]), static_cast<double>(place[1]), static_cast<double>(place[2])});
}

} // namespace

std::string& GltfVertexViews::bytesOf(View& view)
{
    if (!view.number)
        view.number = document.binary.add(view.target, view.stride);
    return document.binary.bytes(*view.number);
}

GltfJson GltfVertexViews::accessor(View const& view, std::size_t offset, int componentType, std::size_t count,
                                   char const* type)
{
    GltfJson told = {{"bufferView", *view.number}};
    if (offset != 0)
        told["byteOffset"] = offset;
    told["componentType"] = componentType;
    told["count"] = count;
    told["type"] = type;
    return told;
}

GltfJson GltfVertexViews::addCorners(GltfCorners const& corners, std::vector<std::uint32_t> const& numbers)
{
    GltfJson attributes = {{"POSITION", addPositions(corners, numbers)}};
    if (!corners.normals.empty())
        attributes["NORMAL"] = addNormals(corners, numbers);
    if (!corners.uvs.empty())
        attributes["TEXCOORD_0"] = addUvs(corners, numbers);
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
    GltfJson told = accessor(positions, offset, floatingPoint, numbers.size(), "VEC3");
    told["min"] = listOf(box.getMin());
    told["max"] = listOf(box.getMax());
    return document.add(GltfDocument::List::accessors, told);
}

int GltfVertexViews::addNormals(GltfCorners const& corners, std::vector<std::uint32_t> const& numbers)
{
    std::string& bytes = bytesOf(normals);
    std::size_t const offset = bytes.size();
    for (std::uint32_t const number : numbers)
        append(bytes, corners.normals[number].getValue(), normals.stride);
    return document.add(GltfDocument::List::accessors,
                        accessor(normals, offset, floatingPoint, numbers.size(), "VEC3"));
}

int GltfVertexViews::addUvs(GltfCorners const& corners, std::vector<std::uint32_t> const& numbers)
{
    std::string& bytes = bytesOf(uvs);
    std::size_t const offset = bytes.size();
    for (std::uint32_t const number : numbers)
        append(bytes, corners.uvs[number].getValue(), uvs.stride);
    return document.add(GltfDocument::List::accessors,
                        accessor(uvs, offset, floatingPoint, numbers.size(), "VEC2"));
}

int GltfVertexViews::addColors(GltfCorners const& corners, std::vector<std::uint32_t> const& numbers)
{
    std::string& bytes = bytesOf(colors);
    std::size_t const offset = bytes.size();
    for (std::uint32_t const number : numbers) {
        auto const color = GltfColors::linear(corners.colors[number]);
        append(bytes, color.data(), colors.stride);
    }
    GltfJson told = accessor(colors, offset, unsignedShort, numbers.size(), "VEC4");
    told["normalized"] = true;
    return document.add(GltfDocument::List::accessors, told);
}

int GltfVertexViews::addIndices(std::vector<std::uint16_t> const& values)
{
    std::string& bytes = bytesOf(indices);
    std::size_t const offset = bytes.size();
    append(bytes, values.data(), values.size() * sizeof values.front());
    return document.add(GltfDocument::List::accessors,
                        accessor(indices, offset, unsignedShort, values.size(), "SCALAR"));
}
