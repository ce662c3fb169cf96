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
