#include "convert/ConversionPlan.h"
#include "convert/FileIdentity.h"
#include "support/ScratchFolder.h"

#include "support/Program.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>

namespace
{

class ConversionPlanTest : public testing::Test
{
protected:
    std::string file(std::string const& name) const { return folder.write(name, ""); }

    std::vector<std::string> outputs() const
    {
        std::vector<std::string> list;
        for (ConversionPlan::Entry const& entry : plan.entries())
            list.push_back(entry.output);
        std::sort(list.begin(), list.end());
        return list;
    }

    ScratchFolder folder;
    ConversionPlan plan{".iv"};
};

} // namespace

TEST_F(ConversionPlanTest, keepsTheTreeOfADirectory)
{
    file("models/a.flt");
    file("models/sub/deep/B.FLT");
    file("models/notes.txt");
    plan.addInput(folder / "models/", "out");
    EXPECT_EQ(outputs(), (std::vector<std::string>{"out/a.iv", "out/sub/deep/B.iv"}));
    EXPECT_TRUE(plan.problems().empty());
}

TEST_F(ConversionPlanTest, putsAFileIntoTheOutputDirectoryItself)
{
    plan.addInput(file("models/sub/a.flt"), "out/");
    EXPECT_EQ(outputs(), std::vector<std::string>{"out/a.iv"});
}

TEST_F(ConversionPlanTest, followsNoLinkToADirectory)
{
    file("models/a.flt");
    std::filesystem::create_directory_symlink(folder / "models", folder / "models/again");
    plan.addInput(folder / "models", "out");
    EXPECT_EQ(outputs(), std::vector<std::string>{"out/a.iv"});
}

TEST_F(ConversionPlanTest, saysThatADirectoryHoldsNoDatabase)
{
    file("models/notes.txt");
    plan.addInput(folder / "models", "out");
    ASSERT_EQ(plan.problems().size(), 1U);
    EXPECT_NE(plan.problems()[0].find("models: holds no database"), std::string::npos);
}

TEST_F(ConversionPlanTest, refusesTwoInputsForOneOutput)
{
    plan.addInput(file("east/a.flt"), "out");
    plan.check();
    plan.addInput(file("west/a.flt"), "out");
    EXPECT_THROW(plan.check(), UsageError);
}

TEST_F(ConversionPlanTest, refusesAnOutputThatIsAnInputUnderAnotherName)
{
    plan.addFile(file("a.flt"), folder / "a.iv");
    plan.addFile(file("b.flt"), folder / "b.iv");
    plan.check();
    std::filesystem::create_symlink("b.flt", folder / "a.iv");
    EXPECT_THROW(plan.check(), UsageError);
}

TEST_F(ConversionPlanTest, convertsAFileOnceThatIsNamedTwice)
{
    plan.addInput(file("a.flt"), "out");
    plan.addInput(folder / "./a.flt", "out");
    plan.check();
    EXPECT_EQ(plan.entries().size(), 1U);
}

TEST_F(ConversionPlanTest, putsAReferenceWhereItStandsBesideTheFileThatRefersToIt)
{
    plan.addFile(file("city/city.flt"), "out/city.iv");
    std::string const house = file("city/houses/house.flt");
    plan.addReference(house, FileIdentity::of(house), 0);
    plan.addReference(house, FileIdentity::of(house), 0);
    EXPECT_EQ(outputs(), (std::vector<std::string>{"out/city.iv", "out/houses/house.iv"}));
    EXPECT_EQ(plan.outputOf(FileIdentity::of(house)), "out/houses/house.iv");
}

TEST_F(ConversionPlanTest, keepsReferencesFromOutsideInTheOutputDirectoryUnderNamesOfTheirOwn)
{
    plan.addFile(file("city/city.flt"), "out/city.iv");
    for (char const* const name : {"library/tree.flt", "garden/tree.flt", "forest/tree.flt"}) {
        std::string const tree = file(name);
        plan.addReference(tree, FileIdentity::of(tree), 0);
    }
    plan.check();
    EXPECT_EQ(outputs(),
              (std::vector<std::string>{"out/city.iv", "out/tree-2.iv", "out/tree-3.iv", "out/tree.iv"}));
}

TEST_F(ConversionPlanTest, keepsPlacesBelowARoot)
{
    file("data/north/a.flt");
    file("data/south/a.flt");
    std::string const outside = file("elsewhere/b.flt");
    plan.addBelow(folder / "data", folder / "data/north", "out");
    plan.addBelow(folder / "data", folder / "data/north/../south/a.flt", "out");
    plan.addBelow(folder / "data/", outside, "out");
    EXPECT_EQ(outputs(), (std::vector<std::string>{"out/north/a.iv", "out/south/a.iv"}));
    EXPECT_EQ(plan.entries()[1].place, "south/a.flt");
    ASSERT_EQ(plan.problems().size(), 1U);
    EXPECT_EQ(plan.problems()[0].find(outside + ": lies outside of " + (folder / "data/")), 0U);
    EXPECT_TRUE(plan.isBound());
    EXPECT_TRUE(plan.isTree());
}

TEST_F(ConversionPlanTest, isOnlyOfAPartButKnowsTheOutputsOfTheOthers)
{
    for (int i = 0; i < 20; ++i)
        file("models/sub/" + std::to_string(i) + ".flt");
    std::size_t planned = 0;
    for (std::uint64_t number = 0; number < 3; ++number) {
        ConversionPlan part(".iv", {number, 3});
        part.addInput(folder / "models", "out");
        part.check();
        EXPECT_TRUE(part.isBound());
        planned += part.entries().size();
        for (int i = 0; i < 20; ++i)
            EXPECT_EQ(part.outputOf(FileIdentity::of(folder / ("models/sub/" + std::to_string(i) + ".flt"))),
                      "out/sub/" + std::to_string(i) + ".iv");
        EXPECT_FALSE(part.outputOf(FileIdentity::of(file("models.flt"))));
        EXPECT_FALSE(part.outputOf(FileIdentity::of(file("models/sub/20.ive"))));
    }
    EXPECT_EQ(planned, 20U);
}

TEST_F(ConversionPlanTest, seesThatADatabaseOfAnotherPartHasTheSameOutput)
{
    file("models/a.flt");
    file("models/a.FLT");
    for (std::uint64_t number = 0; number < 4; ++number) {
        ConversionPlan part(".iv", {number, 4});
        part.addInput(folder / "models", "out");
        EXPECT_THROW(part.check(), UsageError) << number;
    }
}

TEST_F(ConversionPlanTest, replacesNoInputOfAnotherPart)
{
    file("a.flt");
    file("a.iv");
    for (std::uint64_t number = 0; number < 4; ++number) {
        ConversionPlan part(".iv", {number, 4});
        part.addBelow(folder / ".", folder / "a.flt", folder / ".");
        part.addBelow(folder / ".", folder / "a.iv", folder / "elsewhere");
        if (TreePart{number, 4}.holds("a.flt"))
            EXPECT_THROW(part.check(), UsageError);
        else
            EXPECT_NO_THROW(part.check());
    }
}
