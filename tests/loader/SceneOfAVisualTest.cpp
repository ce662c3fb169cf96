#include "loader/FltLoader.h"
#include "support/CompleteDatabase.h"
#include "support/SceneText.h"

#include <Inventor/nodes/SoSeparator.h>
#include <gtest/gtest.h>

namespace
{

/// A database with a part that stands at several places, a switch and a joint.
class SceneOfAVisual : public testing::Test
{
protected:
    SceneOfAVisual()
    {
        database.writer.add("TexturePattern", {{"fileName", "none.rgb"}, {"patternIndex", 3}});
        std::vector<double> const square = database.square();
        FltWriter& flt = database.begin();
        flt.add("InstanceDefinition", {{"instanceDefinitionNumber", 1}}).push();
        database.object(square, CompleteDatabase::face({{"texturePatternIndex", 3}})).writer.pop();
        flt.add("InstanceReference", {{"instanceDefinitionNumber", 1}});
        flt.add("InstanceReference", {{"instanceDefinitionNumber", 1}});
        flt.add(
            "Switch",
            {{"idASCII", "lamp"}, {"numberOfMasks", 2}, {"numberOf32BitWordsPerMask", 1}, {"masks", {1, 2}}});
        flt.push();
        database.object(square).object(square).writer.pop();
        flt.add("DOF", {{"idASCII", "door"}, {"XCurrentValue", 2}}).push();
        database.object(square).writer.pop().pop();
        path = database.folder.write("a.flt", database.writer.bytes());
    }

    CompleteDatabase database;
    std::string path;
    FltLoader loader;
};

TEST_F(SceneOfAVisual, isTheOneThatTheLoaderGives)
{
    FltScene const loaded = loader.load(path);
    FltScene const made = FltLoader::makeScene(loader.loadVisual(path));
    EXPECT_EQ(sceneText(made.root()), sceneText(loaded.root()));
    EXPECT_EQ(made.messages().size(), loaded.messages().size());
    ASSERT_EQ(made.textures().size(), 1U);
    EXPECT_EQ(made.textures()[0].name, loaded.textures().at(0).name);
    EXPECT_EQ(made.info().records, loaded.info().records);
    ASSERT_EQ(made.switches().size(), 1U);
    EXPECT_EQ(made.switches()[0].name, "lamp");
    ASSERT_EQ(made.degreesOfFreedom().size(), 1U);
    EXPECT_EQ(made.degreesOfFreedom()[0].translation[0].current, 2);
    ASSERT_TRUE(made.recordOf(*made.root()->getChild(0)));
    EXPECT_EQ(made.recordOf(*made.root()->getChild(0))->file, path);
}

TEST_F(SceneOfAVisual, bearsTheNamesThatWereWanted)
{
    loader.names = FltLoader::Names::none;
    std::string const loaded = sceneText(loader.load(path).root());
    EXPECT_EQ(sceneText(FltLoader::makeScene(loader.loadVisual(path)).root()), loaded);
    EXPECT_EQ(SoNode::getByName("root"), nullptr);
    loader.names = FltLoader::Names::unique;
    FltScene const scene = loader.load(path);
    EXPECT_NE(SoNode::getByName("root"), nullptr);
    EXPECT_NE(sceneText(scene.root()), loaded);
}

TEST_F(SceneOfAVisual, isMovedToZeroAsAWhole)
{
    constexpr int feet = 4;
    CompleteDatabase far(1570, {{"vertexCoordinateUnits", feet}});
    std::vector<double> const square = far.square(4'500'000.3, 5'300'000.7, 120);
    far.begin();
    far.object(square);
    path = far.folder.write("far.flt", far.writer.bytes());
    EXPECT_EQ(loader.load(path).info().offset[0], 0);
    loader.origin = FltLoader::Origin::centre;
    FltVisual const visual = loader.loadVisual(path);
    EXPECT_NEAR(visual.info.offset[0], 4'500'000.8 * 0.3048, 0.2);
    EXPECT_NEAR(visual.info.offset[1], 5'300'001.2 * 0.3048, 0.2);
    EXPECT_EQ(visual.metresPerUnit, 1);
    FltScene const loaded = loader.load(path);
    std::string const text = sceneText(loaded.root());
    EXPECT_EQ(sceneText(FltLoader::makeScene(visual).root()), text);
    EXPECT_NE(text.find("string \"offset 137160"), std::string::npos) << text;
    loader.units = FltLoader::Units::stored;
    EXPECT_NEAR(loader.load(path).info().offset[0], 4'500'000.8, 0.5);
    EXPECT_EQ(loader.loadVisual(path).metresPerUnit, 0.3048);
}

TEST_F(SceneOfAVisual, isNotMovedByTheExactConversion)
{
    loader.exact = true;
    loader.origin = FltLoader::Origin::centre;
    try {
        loader.load(path);
        FAIL() << "it was loaded";
    } catch (FltLoadError const& refusal) {
        EXPECT_EQ(refusal.kind(), FltLoadError::Kind::refused);
    }
}

TEST_F(SceneOfAVisual, leavesTheVisualAsItIs)
{
    FltVisual const visual = loader.loadVisual(path);
    std::string const first = sceneText(FltLoader::makeScene(visual).root());
    EXPECT_EQ(sceneText(FltLoader::makeScene(visual).root()), first);
    EXPECT_NE(first.find("coordIndex"), std::string::npos);
}

TEST_F(SceneOfAVisual, isOnesOwn)
{
    FltVisual const visual = loader.loadVisual(path);
    FltScene one = FltLoader::makeScene(visual);
    FltScene const other = FltLoader::makeScene(visual);
    EXPECT_TRUE(one.chooseMask("lamp", 1));
    EXPECT_EQ(one.switches()[0].currentMask, 1);
    EXPECT_EQ(other.switches()[0].currentMask, 0);
}

} // namespace
