#include "loader/FltVisual.h"

#include "loader/FltLoader.h"
#include "support/CompleteDatabase.h"
#include "support/SmallPictures.h"
#include "support/Text.h"

#include <array>
#include <gtest/gtest.h>

using Fields = FltWriter::Fields;

namespace
{

/// A database in a process in which the toolkit isn't started.
class FltVisualTest : public testing::Test
{
protected:
    FltVisual load(CompleteDatabase const& from) { return loader.loadVisual(write(from)); }

    static std::string write(CompleteDatabase const& database)
    {
        return database.folder.write("model.flt", database.writer.bytes());
    }

    /// Why a database isn't loaded.
    FltLoadError::Kind failureOf(std::string const& path)
    {
        try {
            loader.loadVisual(path);
        } catch (FltLoadError const& error) {
            return error.kind();
        }
        ADD_FAILURE() << path << " was loaded";
        return FltLoadError::Kind::failed;
    }

    FltLoader loader;
    CompleteDatabase database;
};

/// The first mesh on the way down along first children.
FltMesh const* firstMesh(FltVisualNode const& node)
{
    if (!node.meshes.empty())
        return &node.meshes.front();
    return node.children.empty() ? nullptr : firstMesh(*node.children.front());
}

FltTexture named(std::string const& name, std::string const& database)
{
    FltTexture texture;
    texture.name = name;
    texture.database = database;
    return texture;
}

} // namespace

TEST_F(FltVisualTest, HoldsMeshesByAppearanceWithTheirTextures)
{
    database.folder.write("tree.rgb", SmallPictures::plainSgi(4, 77));
    std::vector<double> const offsets = database.square();
    database.writer.add("TexturePattern", {{"fileName", "tree.rgb"}, {"patternIndex", 3}});
    database.begin();
    database.object(offsets, CompleteDatabase::face({{"texturePatternIndex", 3}}, CompleteDatabase::red));
    FltVisual const visual = load(database);
    FltMesh const* const mesh = firstMesh(*visual.root);
    ASSERT_NE(mesh, nullptr);
    EXPECT_EQ(mesh->positions.size(), 4U);
    EXPECT_EQ(mesh->normals, std::vector<SbVec3f>(4, SbVec3f(0, 0, 1)));
    EXPECT_EQ(mesh->uvs.size(), 4U);
    EXPECT_EQ(mesh->colors, std::vector<std::uint32_t>{0xff0000ff});
    EXPECT_EQ(mesh->indices, (std::vector<std::int32_t>{0, 1, 2, 3, FltMesh::end}));
    EXPECT_EQ(mesh->origin, SbVec3d(0, 0, 0));
    ASSERT_EQ(mesh->texture, 0);
    ASSERT_EQ(visual.textures.size(), 1U);
    EXPECT_EQ(visual.textures[0].path, database.folder / "tree.rgb");
    ASSERT_NE(visual.textures[0].pixels, nullptr);
    EXPECT_EQ(visual.textures[0].pixels->bytes[0], 77);
}

/// What is cut out needs its picture, which is found after all else.
TEST_F(FltVisualTest, KnowsWhatIsCutOutOfItsPicture)
{
    auto const leaves = [](int x, int y) -> std::array<unsigned char, 4> {
        return {30, 90, 20, static_cast<unsigned char>((x + y) % 2 * 255)};
    };
    database.folder.write("leaves.rgba", SmallPictures::clearSgi(8, leaves));
    std::vector<double> const offsets = database.square();
    database.writer.add("TexturePattern", {{"fileName", "leaves.rgba"}, {"patternIndex", 3}});
    database.begin();
    database.object(offsets, CompleteDatabase::face({{"texturePatternIndex", 3}, {"templateBillboard", 1}}));
    FltVisual const visual = load(database);
    EXPECT_TRUE(firstMesh(*visual.root)->isCutOut);
    EXPECT_FALSE(firstMesh(*visual.root)->isBlended);
}

TEST_F(FltVisualTest, TellsOfTexturesThatAreMissingAsALoadDoes)
{
    std::vector<double> const offsets = database.square();
    database.writer.add("TexturePattern", {{"fileName", "none.rgb"}, {"patternIndex", 0}});
    database.begin();
    database.object(offsets, CompleteDatabase::face({{"texturePatternIndex", 0}}));
    FltVisual const visual = load(database);
    ASSERT_EQ(visual.messages.size(), 1U);
    EXPECT_EQ(countOf(visual.messages[0].text, "Texture none.rgb isn't shown"), 1);
    EXPECT_EQ(visual.textures[0].pixels, nullptr);
}

TEST_F(FltVisualTest, HoldsText)
{
    database.begin().add("Text", {{"ZupperRightCorner", 2}});
    database.writer.add("Comment", {{"textDescription", "Gate 7\nOpen"}});
    FltVisual const visual = load(database);
    auto const* const text = visual.root->children.at(0)->as<FltVisualText>();
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->lines, (std::vector<std::string>{"Gate 7", "Open"}));
    EXPECT_EQ(text->size, 1);
    EXPECT_FALSE(text->isLying);
    EXPECT_TRUE(visual.root->children.at(0)->comments.empty());
}

TEST_F(FltVisualTest, SharesAFileThatTwoReferencesName)
{
    CompleteDatabase child(1570, {{"vertexCoordinateUnits", 4}});
    std::vector<double> const offsets = child.square();
    child.begin();
    child.object(offsets);
    database.folder.write("child.flt", child.writer.bytes());
    database.begin().add("ExternalReference", {{"asciiPath", "child.flt"}});
    database.writer.add("ExternalReference", {{"asciiPath", "child.flt"}});
    FltVisual const visual = load(database);
    ASSERT_EQ(visual.root->children.size(), 2U);
    FltVisualNode const& first = *visual.root->children[0]->children.at(0);
    FltVisualNode const& second = *visual.root->children[1]->children.at(0);
    ASSERT_NE(first.as<FltVisualScale>(), nullptr);
    EXPECT_FLOAT_EQ(static_cast<float>(first.as<FltVisualScale>()->factor), 0.3048F);
    EXPECT_EQ(first.children.at(0), second.children.at(0));
    EXPECT_EQ(first.children.at(0)->record.file, 1U);
    EXPECT_EQ(visual.files,
              (std::vector<std::string>{database.folder / "model.flt", database.folder / "child.flt"}));
    EXPECT_TRUE(visual.references.at(1).isLoaded);
}

TEST_F(FltVisualTest, LeavesTheNamesOfFilesWhereThatIsWanted)
{
    database.folder.write("child.flt", CompleteDatabase().writer.bytes());
    database.begin().add("ExternalReference", {{"asciiPath", "child.flt"}});
    loader.references = FltLoader::References::asFile;
    FltVisual const visual = load(database);
    auto const* const file = visual.root->children.at(0)->children.at(0)->as<FltVisualFile>();
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(file->path, database.folder / "child.flt");
}

TEST_F(FltVisualTest, ObeysTheChoiceOfLevelsAndUnits)
{
    CompleteDatabase feet(1570, {{"vertexCoordinateUnits", 4}});
    std::vector<double> const offsets = feet.square();
    feet.begin();
    feet.writer.add("LOD", {{"switchInDistance", 10}}).push();
    feet.object(offsets);
    FltVisual const inMetres = load(feet);
    ASSERT_NE(inMetres.root->as<FltVisualScale>(), nullptr);
    auto const* const levels = inMetres.root->children.at(0)->children.at(0)->as<FltVisualLevels>();
    ASSERT_NE(levels, nullptr);
    EXPECT_EQ(levels->distances, std::vector<double>{10 * 0.3048});
    loader.units = FltLoader::Units::stored;
    loader.levelsOfDetail = FltLoader::LevelsOfDetail::highest;
    FltVisual const stored = load(feet);
    EXPECT_EQ(stored.root->as<FltVisualScale>(), nullptr);
    EXPECT_EQ(stored.root->children.at(0)->as<FltVisualLevels>(), nullptr);
}

TEST_F(FltVisualTest, KnowsTheRecordOfEachNode)
{
    database.begin().add("Group", {{"idASCII", "g"}});
    std::size_t const offset = database.writer.bytes().size() - database.writer.lastRecord().size();
    FltVisual const visual = load(database);
    EXPECT_EQ(visual.root->record.offset, 0U);
    EXPECT_EQ(visual.root->children.at(0)->name, "g");
    EXPECT_EQ(visual.root->children.at(0)->record.offset, offset);
}

TEST_F(FltVisualTest, FailsWithTheErrorsOfALoad)
{
    using Kind = FltLoadError::Kind;
    EXPECT_EQ(failureOf(database.folder / "none.flt"), Kind::cannotOpen);
    EXPECT_EQ(failureOf(database.folder.write("text.flt", "hello, this is no database")),
              Kind::notOpenFlight);
    std::string const sound = write(database);
    loader.progress = [](std::string const&, std::uint64_t, std::uint64_t) { return false; };
    EXPECT_EQ(failureOf(sound), Kind::cancelled);
    loader.progress = nullptr;
    loader.exact = true;
    EXPECT_EQ(failureOf(sound), Kind::refused);
}

TEST_F(FltVisualTest, TellsWhatIsLeftOutAndWhatTheHeaderSays)
{
    database.begin().add("Sound");
    FltVisual const visual = load(database);
    ASSERT_EQ(visual.omissions.size(), 1U);
    EXPECT_EQ(visual.omissions[0].count, 1U);
    EXPECT_EQ(visual.info.revision, 1570);
    EXPECT_EQ(visual.info.bytes, database.writer.bytes().size());
    EXPECT_GT(visual.info.records, 0U);
}

TEST_F(FltVisualTest, ListsEachTextureOnceWhereItFirstCame)
{
    FltVisual visual;
    visual.textures = {named("b", "1"), named("", "1"), named("a", "1"), named("b", "1"), named("b", "2")};
    std::vector<std::string> names;
    for (FltTexture const& texture : visual.distinctTextures())
        names.push_back(texture.name + texture.database);
    EXPECT_EQ(names, (std::vector<std::string>{"b1", "a1", "b2"}));
}
