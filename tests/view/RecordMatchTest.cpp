#include "view/RecordMatch.h"

#include "LoadedViewDatabase.h"
#include "toolkit/SoNodeName.h"

#include <Inventor/nodes/SoSeparator.h>

namespace
{

using RecordMatchTest = LoadedViewDatabase;

TEST_F(RecordMatchTest, FindsTheNodeOfEachRecord)
{
    auto const& outline = loaded.records.hierarchy();
    for (std::size_t i = 0; i < outline.size(); ++i)
        EXPECT_NE(nullptr, loaded.match.nodeOf(static_cast<int>(i))) << outline[i].name;
    EXPECT_EQ(outline.size(), loaded.match.size());
}

TEST_F(RecordMatchTest, TakesRecordsOfOneNameInTheOrderOfTheFile)
{
    FltWriter flt;
    flt.push();
    for (int i = 0; i < 3; ++i)
        flt.add("Group", {{"idASCII", "same"}, {"relativePriority", i}}).push().pop();
    flt.pop();
    flt.save(folder.path("same.flt"));
    LoadedScene const same(FltLoader(), folder.path("same.flt"));
    SoSeparator const* const root = same.scene.root();
    int found = 0;
    for (int i = 0; i < root->getNumChildren(); ++i) {
        if (int const record = same.match.recordOf(root->getChild(i)); record >= 0) {
            EXPECT_EQ(++found, record);
        }
    }
    EXPECT_EQ(3, found);
}

TEST_F(RecordMatchTest, MatchesALevelOfDetailWithALongName)
{
    FltWriter flt;
    flt.push().add("LOD", {{"idASCII", "near"}}).add("LongID", {{"idASCII", "near_the_wood"}});
    flt.push().add("Object", {{"idASCII", "tree"}}).pop().pop();
    flt.save(folder.path("lod.flt"));
    LoadedScene const lod(FltLoader(), folder.path("lod.flt"));
    ASSERT_NE(nullptr, lod.match.nodeOf(1));
    EXPECT_EQ("near_the_wood", lod.records.hierarchy()[1].name);
    EXPECT_NE(nullptr, lod.match.nodeOf(2));
}

TEST_F(RecordMatchTest, MatchesNamesThatTheToolkitRewrites)
{
    FltWriter flt;
    flt.push().add("Group", {{"idASCII", "1 {x}"}}).push().pop().pop();
    flt.save(folder.path("rewritten.flt"));
    LoadedScene const rewritten(FltLoader(), folder.path("rewritten.flt"));
    EXPECT_NE(nullptr, rewritten.match.nodeOf(1));
}

TEST_F(RecordMatchTest, TellsCutNamesApart)
{
    std::string const beginning(300, 'n');
    FltWriter flt;
    flt.push().add("Group").add("LongID", {{"idASCII", beginning + "1"}}).push().pop();
    flt.add("LightSource", {{"flags", {128, 0, 0, 0}}}).add("LongID", {{"idASCII", beginning + "2"}}).pop();
    flt.save(folder.path("long.flt"));
    LoadedScene const lit(FltLoader(), folder.path("long.flt"));
    // The light stands before the group.
    SoNode const* const light = lit.match.nodeOf(2);
    ASSERT_NE(nullptr, light);
    EXPECT_EQ(beginning + "2", SoNodeName::wholeOf(*light));
    EXPECT_NE(nullptr, lit.match.nodeOf(1));
}

TEST_F(RecordMatchTest, HasNoRecordsForTheNodesOfOtherFiles)
{
    viewDatabase().save(folder.path("other.flt"));
    FltWriter flt;
    flt.push().add("ExternalReference", {{"asciiPath", "other.flt"}}).add("Group", {{"idASCII", "base"}});
    flt.push().pop().pop();
    flt.save(folder.path("outer.flt"));
    LoadedScene const outer(FltLoader(), folder.path("outer.flt"));
    ASSERT_EQ(2U, outer.match.size()); // the header and the group, not the group of the other file
}

} // namespace
