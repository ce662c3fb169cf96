#include "gltf/GltfInstances.h"

#include <algorithm>

namespace
{

void append(std::vector<float>& numbers, SbVec3d const& vector)
{
    for (int axis = 0; axis < 3; ++axis)
        numbers.push_back(static_cast<float>(vector[axis]));
}

} // namespace

int GltfInstances::add(int mesh, SbVec3d const& stand, double step, std::vector<GltfTransform> const& places)
{
    std::vector<float> translations, rotations, scales;
    for (GltfTransform const& place : places) {
        SbVec3d way(place.scale[0] * stand[0], place.scale[1] * stand[1], place.scale[2] * stand[2]);
        place.rotation.multVec(way, way);
        append(translations, place.translation + way);
        append(scales, place.scale * step);
        double x = 0, y = 0, z = 0, w = 0;
        place.rotation.getValue(x, y, z, w);
        for (double const part : {x, y, z, w})
            rotations.push_back(static_cast<float>(part));
    }
    GltfJson attributes = {{"TRANSLATION", addAccessor(translations, places.size(), "VEC3")},
                           {"ROTATION", addAccessor(rotations, places.size(), "VEC4")},
                           {"SCALE", addAccessor(scales, places.size(), "VEC3")}};
    document.use("EXT_mesh_gpu_instancing", true);
    GltfJson node = {{"mesh", mesh}};
    node["extensions"]["EXT_mesh_gpu_instancing"]["attributes"] = std::move(attributes);
    return document.add(GltfDocument::List::nodes, node);
}

int GltfInstances::addAccessor(std::vector<float> const& numbers, std::size_t count, char const* type)
{
    constexpr int floatingPoint = 5126;
    if (!view)
        view = document.binary.add(GltfBinary::Content::anything);
    std::string& bytes = document.binary.bytes(*view);
    GltfJson told = {{"bufferView", *view}};
    if (!bytes.empty())
        told["byteOffset"] = bytes.size();
    told["componentType"] = floatingPoint;
    told["count"] = count;
    told["type"] = type;
    bytes.append(reinterpret_cast<char const*>(numbers.data()), numbers.size() * sizeof numbers.front());
    return document.add(GltfDocument::List::accessors, told);
}
