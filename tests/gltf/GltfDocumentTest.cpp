#include "gltf/GltfDocument.h"

#include <gtest/gtest.h>

namespace
{

using List = GltfDocument::List;

unsigned wordAt(std::string const& bytes, std::size_t at)
{
    unsigned number = 0;
    for (std::size_t i = 4; i-- > 0;)
        number = number << 8 | static_cast<unsigned char>(bytes[at + i]);
    return number;
}

std::string glbOf(GltfDocument const& document, std::string const& text)
{
    std::string bytes;
    EXPECT_TRUE(document.writeGlb(text, [&](std::string_view piece) { bytes += piece; }));
    return bytes;
}

} // namespace

TEST(GltfDocument, NumbersWhatIsAddedToEachOfItsLists)
{
    GltfDocument document;
    EXPECT_EQ(document.add(List::nodes, {{"name", "a"}}), 0);
    EXPECT_EQ(document.add(List::nodes, {{"name", "b"}}), 1);
    EXPECT_EQ(document.add(List::meshes, {{"name", "m"}}), 0);
    EXPECT_EQ(document.count(List::nodes), 2U);
    GltfJson const json = GltfJson::parse(document.text(1, ""));
    EXPECT_EQ(json["nodes"], GltfJson::parse(R"([{"name": "a"}, {"name": "b"}])"));
    EXPECT_EQ(json["meshes"].size(), 1U);
    EXPECT_EQ(json["scenes"], GltfJson::parse(R"([{"nodes": [1]}])"));
    for (char const* const none :
         {"materials", "extensionsUsed", "extensionsRequired", "extensions", "buffers"})
        EXPECT_FALSE(json.contains(none)) << none;
}

TEST(GltfDocument, NamesEachExtensionOnce)
{
    GltfDocument document;
    document.use("A");
    document.use("B", true);
    document.use("A", true);
    document.use("B");
    document.add(List::lights, {{"type", "point"}});
    GltfJson const json = GltfJson::parse(document.text(0, ""));
    EXPECT_EQ(json["extensionsUsed"], GltfJson({"A", "B"}));
    EXPECT_EQ(json["extensionsRequired"], GltfJson({"B", "A"}));
    EXPECT_EQ(json["extensions"]["KHR_lights_punctual"]["lights"].size(), 1U);
}

TEST(GltfDocument, HasTheAddressOfItsBytesIfTheyStandElsewhere)
{
    GltfDocument document;
    document.binary.bytes(document.binary.add(GltfBinary::Content::anything)) = "12345678";
    EXPECT_EQ(GltfJson::parse(document.text(0, "a.bin"))["buffers"],
              GltfJson::parse(R"([{"byteLength": 8, "uri": "a.bin"}])"));
    EXPECT_EQ(GltfJson::parse(document.text(0, ""))["buffers"], GltfJson::parse(R"([{"byteLength": 8}])"));
}

TEST(GltfDocument, FillsItsChunksToWholeWords)
{
    for (std::size_t const size : {4U, 5U, 6U, 7U}) {
        GltfDocument document;
        std::string const text(size, 'x');
        std::string const alone = glbOf(document, text);
        unsigned const chunk = size == 4 ? 4 : 8;
        EXPECT_EQ(alone.substr(0, 4), "glTF");
        EXPECT_EQ(wordAt(alone, 4), 2U);
        EXPECT_EQ(wordAt(alone, 8), alone.size());
        EXPECT_EQ(wordAt(alone, 12), chunk);
        EXPECT_EQ(alone.substr(16), "JSON" + text + std::string(chunk - size, ' '));
        document.binary.bytes(document.binary.add(GltfBinary::Content::anything)) = "12345678";
        std::string const both = glbOf(document, text);
        EXPECT_EQ(wordAt(both, 8), both.size());
        EXPECT_EQ(wordAt(both, alone.size()), 8U);
        EXPECT_EQ(both.substr(alone.size() + 4), std::string("BIN\0"
                                                             "12345678",
                                                             12));
    }
}
