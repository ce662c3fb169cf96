#include "gltf/GltfBinary.h"

#include <cstring>
#include <gtest/gtest.h>
#include <meshoptimizer.h>

namespace
{

using Content = GltfBinary::Content;

/// Numbers as they stand in a view.
template <class Number>
std::string bytesOf(std::vector<Number> const& numbers)
{
    std::string bytes(numbers.size() * sizeof(Number), '\0');
    std::memcpy(bytes.data(), numbers.data(), bytes.size());
    return bytes;
}

std::string allBytes(GltfBinary const& binary)
{
    std::string bytes;
    binary.forEachPiece([&bytes](std::string_view piece) { bytes += piece; });
    return bytes;
}

/// The bytes of a compressed view, as a reader finds them.
std::string decoded(GltfBinary const& binary, GltfJson const& view)
{
    GltfJson const& packed = view["extensions"]["EXT_meshopt_compression"];
    std::string const all = allBytes(binary);
    auto const* const source =
        reinterpret_cast<unsigned char const*>(all.data()) + packed["byteOffset"].get<std::size_t>();
    std::size_t const size = packed["byteLength"], count = packed["count"], stride = packed["byteStride"];
    std::string bytes(count * stride, '\0');
    int problem = -1;
    if (packed["mode"] == "ATTRIBUTES")
        problem = meshopt_decodeVertexBuffer(bytes.data(), count, stride, source, size);
    else if (packed["mode"] == "TRIANGLES")
        problem = meshopt_decodeIndexBuffer(bytes.data(), count, stride, source, size);
    else if (packed["mode"] == "INDICES")
        problem = meshopt_decodeIndexSequence(bytes.data(), count, stride, source, size);
    EXPECT_EQ(problem, 0);
    EXPECT_EQ(bytes.size(), view["byteLength"]);
    return bytes;
}

} // namespace

TEST(GltfBinary, hasViewsOneAfterTheOther)
{
    GltfBinary binary;
    binary.bytes(binary.add(Content::anything)) = "picture";
    binary.bytes(binary.add(Content::corners, 12)) = std::string(24, 'x');
    binary.bytes(binary.add(Content::triangles)) = std::string(6, 'x');
    GltfJson const list = binary.list();
    EXPECT_EQ(list[0], (GltfJson{{"buffer", 0}, {"byteOffset", 0}, {"byteLength", 7}}));
    EXPECT_EQ(list[1]["byteOffset"], 8);
    EXPECT_EQ(list[1]["byteStride"], 12);
    EXPECT_EQ(list[1]["target"], 34962) << "of corners, as the format has it";
    EXPECT_EQ(list[2]["target"], 34963) << "of their numbers";
    EXPECT_EQ(binary.size(), 40U);
    EXPECT_EQ(allBytes(binary).size(), 40U);
    EXPECT_EQ(binary.sizeWithout(), 0U);
}

TEST(GltfBinary, isCompressedAsReadersUnpackIt)
{
    std::vector<float> corners;
    std::vector<std::uint16_t> triangles, lines;
    for (std::uint16_t i = 0; i < 300; ++i) {
        corners.insert(corners.end(), {static_cast<float>(i), 1, 2});
        triangles.insert(triangles.end(),
                         {i, static_cast<std::uint16_t>(i + 1), static_cast<std::uint16_t>(i + 2)});
        lines.insert(lines.end(), {i, static_cast<std::uint16_t>(i + 1)});
    }
    lines.pop_back();
    GltfBinary binary;
    binary.bytes(binary.add(Content::anything)) = "picture";
    binary.bytes(binary.add(Content::corners, 12)) = bytesOf(corners);
    binary.bytes(binary.add(Content::triangles)) = bytesOf(triangles);
    binary.bytes(binary.add(Content::indices)) = bytesOf(lines);
    ASSERT_NE(bytesOf(lines).size() % 4, 0U) << "so that there is a gap behind them";
    binary.bytes(binary.add(Content::corners, 12)) = bytesOf(corners);
    std::size_t const before = binary.size();
    EXPECT_TRUE(binary.compress());
    EXPECT_LT(binary.size(), before / 2);
    EXPECT_EQ(binary.sizeWithout(), before - 8) << "all but the picture";
    GltfJson const list = binary.list();
    EXPECT_FALSE(list[0].contains("extensions"));
    EXPECT_EQ(decoded(binary, list[1]), bytesOf(corners));
    EXPECT_EQ(decoded(binary, list[3]), bytesOf(lines));
    EXPECT_EQ(list[4]["byteOffset"].get<std::size_t>() + bytesOf(corners).size(), binary.sizeWithout());
    // Triangles may begin with another of their corners.
    std::string const unpacked = decoded(binary, list[2]);
    ASSERT_EQ(unpacked.size(), bytesOf(triangles).size());
    std::vector<std::uint16_t> found(triangles.size());
    std::memcpy(found.data(), unpacked.data(), unpacked.size());
    for (std::size_t i = 0; i < found.size(); i += 3)
        EXPECT_EQ(found[i] + found[i + 1] + found[i + 2], triangles[i] + triangles[i + 1] + triangles[i + 2]);
}

TEST(GltfBinary, staysAsItIsWhereThatIsSmaller)
{
    GltfBinary binary;
    binary.bytes(binary.add(Content::corners, 4)) = "abcd";
    static_cast<void>(binary.add(Content::triangles));
    EXPECT_FALSE(binary.compress());
    EXPECT_EQ(allBytes(binary), "abcd");
}
