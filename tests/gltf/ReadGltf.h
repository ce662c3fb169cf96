#pragma once

#include <Inventor/SbDPMatrix.h>
#include <Inventor/SbDPRotation.h>
#include <Inventor/SbVec3d.h>
#include <array>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

/// A .glb as a reader sees it. What is wrong with it fails the test.
class ReadGltf
{
public:
    using Json = nlohmann::json;

    explicit ReadGltf(std::string const& glb)
    {
        EXPECT_EQ(glb.substr(0, 4), "glTF");
        EXPECT_EQ(wordAt(glb, 8), glb.size());
        std::size_t const length = wordAt(glb, 12);
        json = Json::parse(glb.substr(20, length));
        if (glb.size() > 20 + length)
            binary = glb.substr(28 + length);
    }

    Json json;
    std::string binary;

    /// The first node of a name.
    Json const& node(std::string const& name) const
    {
        static Json const nothing;
        for (Json const& one : json.at("nodes"))
            if (one.value("name", "") == name)
                return one;
        ADD_FAILURE() << "no node is named " << name;
        return nothing;
    }

    /// A node by its number.
    Json const& nodeAt(std::size_t number) const { return json.at("nodes").at(number); }

    /// How many there are of something, such as "nodes".
    std::size_t count(std::string const& list) const
    {
        return json.contains(list) ? json.at(list).size() : 0;
    }

    /// What a node does to what stands in it.
    static SbDPMatrix matrixOf(Json const& node)
    {
        SbDPMatrix matrix = SbDPMatrix::identity();
        EXPECT_FALSE(node.contains("matrix"));
        if (node.contains("scale"))
            matrix.setScale(vectorOf(node.at("scale")));
        if (node.contains("rotation")) {
            auto const q = node.at("rotation").get<std::array<double, 4>>();
            SbDPMatrix turn;
            turn.setRotate(SbDPRotation(q.data()));
            matrix.multRight(turn);
        }
        if (node.contains("translation")) {
            SbDPMatrix move;
            move.setTranslate(vectorOf(node.at("translation")));
            matrix.multRight(move);
        }
        return matrix;
    }

    /// A corner as it is drawn.
    struct Corner {
        SbVec3d place; ///< In the world, in which y goes up.
        SbVec3d normal{0, 0, 0};
        std::array<double, 2> uv{};
        std::array<double, 4> color{1, 1, 1, 1};
    };

    /// The corners of all triangles that are drawn.
    std::vector<Corner> corners() const
    {
        std::vector<Corner> all;
        for (Json const& number : json.at("scenes").at(0).at("nodes"))
            collect(number.get<std::size_t>(), SbDPMatrix::identity(), all);
        return all;
    }

    /// The numbers of an accessor, one after the other.
    std::vector<double> numbers(std::size_t accessor) const
    {
        Json const& told = json.at("accessors").at(accessor);
        Json const& view = json.at("bufferViews").at(told.at("bufferView").get<std::size_t>());
        std::size_t const parts = partsOf(told.at("type"));
        bool const isFloat = told.at("componentType") == 5126;
        std::size_t const size = isFloat ? 4 : 2;
        std::size_t const stride = view.value("byteStride", parts * size);
        std::size_t const begin =
            view.at("byteOffset").get<std::size_t>() + told.value("byteOffset", std::size_t(0));
        std::vector<double> values;
        for (std::size_t i = 0; i < told.at("count").get<std::size_t>(); ++i)
            for (std::size_t part = 0; part < parts; ++part) {
                char const* const at = binary.data() + begin + i * stride + part * size;
                EXPECT_LE(begin + i * stride + (part + 1) * size, binary.size());
                values.push_back(isFloat ? valueAt<float>(at) : valueAt<std::uint16_t>(at));
            }
        return values;
    }

    static SbVec3d vectorOf(Json const& list) { return SbVec3d(list.get<std::array<double, 3>>().data()); }

private:
    static std::size_t wordAt(std::string const& bytes, std::size_t at)
    {
        return valueAt<std::uint32_t>(bytes.data() + at);
    }
    template <class Value>
    static Value valueAt(char const* at)
    {
        Value value;
        std::memcpy(&value, at, sizeof value);
        return value;
    }
    static std::size_t partsOf(std::string const& type)
    {
        return type == "SCALAR" ? 1 : static_cast<std::size_t>(type.back() - '0');
    }

    void collect(std::size_t number, SbDPMatrix const& above, std::vector<Corner>& all) const
    {
        Json const& node = nodeAt(number);
        SbDPMatrix const matrix = matrixOf(node) * above;
        if (node.contains("mesh"))
            for (Json const& primitive :
                 json.at("meshes").at(node.at("mesh").get<std::size_t>()).at("primitives"))
                if (primitive.value("mode", 4) == 4)
                    collectCorners(primitive, matrix, all);
        if (node.contains("children"))
            for (Json const& child : node.at("children"))
                collect(child.get<std::size_t>(), matrix, all);
    }

    void collectCorners(Json const& primitive, SbDPMatrix const& matrix, std::vector<Corner>& all) const
    {
        Json const& attributes = primitive.at("attributes");
        auto const list = [&](char const* name) {
            return attributes.contains(name) ? numbers(attributes.at(name).get<std::size_t>())
                                             : std::vector<double>();
        };
        auto const places = list("POSITION"), normals = list("NORMAL"), uvs = list("TEXCOORD_0"),
                   colors = list("COLOR_0");
        for (double const index : numbers(primitive.at("indices").get<std::size_t>())) {
            auto const at = static_cast<std::size_t>(index);
            Corner corner;
            matrix.multVecMatrix(SbVec3d(&places.at(3 * at)), corner.place);
            if (!normals.empty())
                matrix.multDirMatrix(SbVec3d(&normals.at(3 * at)), corner.normal);
            if (!uvs.empty())
                corner.uv = {uvs.at(2 * at), uvs.at(2 * at + 1)};
            for (std::size_t i = 0; i < 4 && !colors.empty(); ++i)
                corner.color.at(i) = colors.at(4 * at + i) / 65535;
            all.push_back(corner);
        }
    }
};
