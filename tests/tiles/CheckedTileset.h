#pragma once

#include <Inventor/SbDPMatrix.h>
#include <Inventor/SbVec3d.h>
#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <set>
#include <string>
#include <vector>

/// A tileset with all files that belong to it, as a viewer goes through it. What is wrong with it fails the
/// test: members of another kind, boxes that stick out of those around them, errors that grow on the way
/// down.
class CheckedTileset
{
public:
    using Json = nlohmann::json;

    /// A .glb in it.
    struct Content {
        std::string uri;
        SbDPMatrix matrix;          ///< From its own z-up coordinates to the earth.
        std::array<SbVec3d, 4> box; ///< The middle and half of three sides, on the earth.
        double error = 0;
        std::size_t depth = 0; ///< Files of tilesets on the way to it.
    };

    explicit CheckedTileset(std::string const& path) : folder(std::filesystem::path(path).parent_path())
    {
        checkFile(std::filesystem::path(path).filename().string(), nullptr, 0);
    }

    std::vector<Content> contents;
    std::vector<std::size_t> entries; ///< Of each file.
    Json first;                       ///< The first file.

    Content const& of(std::string const& uri) const
    {
        static Content const nothing{};
        for (Content const& one : contents)
            if (one.uri == uri)
                return one;
        ADD_FAILURE() << "no entry has " << uri;
        return nothing;
    }

    std::size_t count(std::string const& uri) const
    {
        std::size_t number = 0;
        for (Content const& one : contents)
            number += one.uri == uri ? 1 : 0;
        return number;
    }

    /// Whether a place on the earth is in the box of an entry.
    static bool isIn(SbVec3d const& place, std::array<SbVec3d, 4> const& box)
    {
        constexpr double slack = 1e-6;
        for (std::size_t side = 1; side < 4; ++side) {
            double const length = box.at(side).length();
            if (std::abs((place - box[0]).dot(box.at(side)) / length) > length + slack)
                return false;
        }
        return true;
    }

private:
    struct Parent {
        std::array<SbVec3d, 4> box;
        double error;
        SbDPMatrix matrix;
    };

    static std::array<SbVec3d, 4> boxOf(Json const& entry, SbDPMatrix const& matrix)
    {
        auto const numbers = entry.at("boundingVolume").at("box").get<std::array<double, 12>>();
        std::array<SbVec3d, 4> box;
        for (std::size_t i = 0; i < 4; ++i) {
            SbVec3d const local(&numbers.at(3 * i));
            for (int axis = 0; axis < 3; ++axis)
                EXPECT_TRUE(std::isfinite(local[axis]));
            if (i == 0)
                matrix.multVecMatrix(local, box.at(i));
            else
                matrix.multDirMatrix(local, box.at(i));
        }
        return box;
    }

    static void expectInside(std::array<SbVec3d, 4> const& inner, std::array<SbVec3d, 4> const& outer)
    {
        for (int const x : {-1, 1})
            for (int const y : {-1, 1})
                for (int const z : {-1, 1})
                    EXPECT_TRUE(isIn(inner[0] + inner[1] * x + inner[2] * y + inner[3] * z, outer))
                        << "a box sticks out of the one around it";
    }

    static void expectMembers(Json const& object, std::set<std::string> const& known)
    {
        for (auto const& [name, value] : object.items())
            EXPECT_TRUE(known.count(name)) << name;
    }

    void checkFile(std::string const& name, Parent const* parent, std::size_t depth)
    {
        ASSERT_TRUE(files.insert(name).second) << name << " is referred to twice";
        std::ifstream stream(folder / name);
        Json const json = Json::parse(stream);
        expectMembers(json, {"asset", "geometricError", "root"});
        EXPECT_EQ(json.at("asset").at("version"), "1.1");
        EXPECT_GE(json.at("geometricError").get<double>(),
                  json.at("root").at("geometricError").get<double>());
        EXPECT_TRUE(parent != nullptr || json.at("root").contains("refine"));
        if (depth == 0)
            first = json;
        std::size_t const file = entries.size();
        entries.push_back(0);
        check(json.at("root"), parent, file, depth);
    }

    void check(Json const& entry, Parent const* parent, std::size_t file, std::size_t depth)
    {
        ++entries[file];
        expectMembers(entry,
                      {"transform", "boundingVolume", "geometricError", "refine", "content", "children"});
        Parent own{{}, entry.at("geometricError").get<double>(), SbDPMatrix::identity()};
        if (entry.contains("transform")) {
            auto const numbers = entry.at("transform").get<std::array<double, 16>>();
            for (std::size_t i = 0; i < 16; ++i)
                own.matrix[static_cast<int>(i / 4)][static_cast<int>(i % 4)] = numbers.at(i);
            for (int row = 0; row < 4; ++row)
                EXPECT_EQ(own.matrix[row][3], row == 3 ? 1 : 0);
        }
        if (parent != nullptr)
            own.matrix.multRight(parent->matrix);
        own.box = boxOf(entry, own.matrix);
        EXPECT_GE(own.error, 0);
        if (parent != nullptr) {
            EXPECT_LE(own.error, parent->error);
            expectInside(own.box, parent->box);
        }
        if (entry.contains("refine")) {
            std::string const refine = entry["refine"];
            EXPECT_TRUE(refine == "ADD" || refine == "REPLACE") << refine;
        }
        EXPECT_TRUE(entry.contains("content") || entry.contains("children"));
        if (entry.contains("content")) {
            expectMembers(entry["content"], {"uri"});
            std::string const uri = entry["content"].at("uri");
            if (std::filesystem::path(uri).extension() == ".json")
                checkFile(uri, &own, depth + 1);
            else
                contents.push_back({uri, own.matrix, own.box, own.error, depth});
        }
        if (entry.contains("children")) {
            EXPECT_FALSE(entry["children"].empty());
            for (Json const& child : entry["children"])
                check(child, &own, file, depth);
        }
    }

    std::filesystem::path folder;
    std::set<std::string> files;
};
