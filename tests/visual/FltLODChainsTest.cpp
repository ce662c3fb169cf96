#include "visual/FltLODChains.h"

#include "support/CompleteDatabase.h"
#include "support/VisualText.h"

#include <gtest/gtest.h>

namespace
{

using Fields = FltWriter::Fields;
using Choice = FltVisualOptions::LevelsOfDetail;

struct Range {
    char const* name;
    double nearest;
    double farthest;
    unsigned flags = 0;
};

constexpr unsigned additive = 0x40000000;

CompleteDatabase levels(std::vector<Range> const& ranges)
{
    CompleteDatabase database;
    database.begin();
    for (Range const& range : ranges)
        database.writer.add("LOD", {{"idASCII", range.name},
                                    {"switchOutDistance", range.nearest},
                                    {"switchInDistance", range.farthest},
                                    {"flags", range.flags}});
    return database;
}

std::shared_ptr<FltVisualNode> see(CompleteDatabase database, Choice choice = Choice::all)
{
    FltVisualConversion::Options options;
    options.levelsOfDetail = choice;
    return database.see(options).root;
}

FltVisualLevels const& onlyLevels(FltVisualNode const& root)
{
    static FltVisualLevels const none;
    FltVisualLevels const* const levels =
        root.children.size() == 1 ? root.children[0]->as<FltVisualLevels>() : nullptr;
    return levels != nullptr ? *levels : none;
}

} // namespace

TEST(FltLODChains, joinsLevelsWhoseDistancesMeet)
{
    std::shared_ptr<FltVisualNode> const root =
        see(levels({{"mid", 100, 500}, {"near", 0, 100}, {"far", 500, 900}, {"lone", 2000, 3000}}));
    EXPECT_EQ(VisualText::of(*root), "group\n"
                                     "  levels\n"
                                     "    group near\n"
                                     "    group mid\n"
                                     "    group far\n"
                                     "    nothing\n"
                                     "  levels\n"
                                     "    nothing\n"
                                     "    group lone\n"
                                     "    nothing\n");
    EXPECT_EQ(root->children[0]->as<FltVisualLevels>()->distances, (std::vector<double>{100, 500, 900}));
    EXPECT_EQ(root->children[1]->as<FltVisualLevels>()->distances, (std::vector<double>{2000, 3000}));
}

TEST(FltLODChains, takesDistancesForEqualThatDifferByAMillionth)
{
    EXPECT_EQ(see(levels({{"a", 0, 1000}, {"b", 1000.0005, 2000}}))->children.size(), 1U);
    EXPECT_EQ(see(levels({{"a", 0, 1000}, {"b", 999.9995, 2000}}))->children.size(), 1U);
    EXPECT_EQ(see(levels({{"a", 0, 1000}, {"b", 1000.01, 2000}}))->children.size(), 2U);
    EXPECT_EQ(see(levels({{"a", 0, 1000}, {"b", 999.99, 2000}}))->children.size(), 2U);
}

TEST(FltLODChains, choosesTheFinestOrTheCoarsestOfAChain)
{
    std::vector<Range> const ranges = {{"far", 10, 20}, {"near", 0, 10}};
    EXPECT_EQ(VisualText::of(*see(levels(ranges), Choice::highest)), "group\n  group near\n");
    EXPECT_EQ(VisualText::of(*see(levels(ranges), Choice::lowest)), "group\n  group far\n");
}

TEST(FltLODChains, drawsALevelWithoutARangeAlways)
{
    EXPECT_EQ(VisualText::of(*see(levels({{"a", 20, 10}}))), "group\n  group a\n");
    EXPECT_EQ(VisualText::of(*see(levels({{"a", 10, 10}}))), "group\n  group a\n");
    EXPECT_EQ(VisualText::of(*see(levels({{"a", -1, 10}}))), "group\n  group a\n");
    EXPECT_EQ(onlyLevels(*see(levels({{"a", 0, 10}}))).distances, std::vector<double>{10});
}

TEST(FltLODChains, countsDistancesFromTheStoredCentre)
{
    CompleteDatabase database;
    database.begin().add("LOD", {{"switchInDistance", 10},
                                 {"XcenterCoordinate", 1},
                                 {"YcenterCoordinate", 2},
                                 {"ZcenterCoordinate", 3}});
    FltVisualLevels const stored = onlyLevels(*see(database));
    ASSERT_TRUE(stored.center.has_value());
    EXPECT_EQ(*stored.center, SbVec3f(1, 2, 3));
}

TEST(FltLODChains, takesTheOriginForACentreOnlyIfItIsFrozen)
{
    for (long const flags : {0L, 0x20000000L}) {
        CompleteDatabase database;
        std::vector<double> const offsets = database.square();
        database.begin().add("LOD", {{"switchInDistance", 10}, {"flags", flags}}).push();
        database.object(offsets).writer.pop();
        FltVisualLevels const levels = onlyLevels(*see(database));
        ASSERT_TRUE(levels.center.has_value());
        EXPECT_EQ(*levels.center, flags == 0 ? SbVec3f(0.5F, 0.5F, 0) : SbVec3f(0, 0, 0));
    }
    EXPECT_FALSE(onlyLevels(*see(levels({{"empty", 0, 10}}))).center.has_value());
}

TEST(FltLODChains, keepsCoarserLevelsBelowThoseThatAreAddedToThem)
{
    std::vector<Range> const ranges = {
        {"far", 20, 30, additive}, {"middle", 10, 20, additive}, {"near", 1, 10, additive}};
    std::shared_ptr<FltVisualNode> const root = see(levels(ranges));
    FltVisualLevels const& all = onlyLevels(*root);
    EXPECT_EQ(all.nextStays, (std::vector<bool>{false, true, true, false})) << "the first place is empty";
    EXPECT_EQ(all.endOfDrawn(0), 1U);
    EXPECT_EQ(all.endOfDrawn(1), 4U);
    EXPECT_EQ(all.endOfDrawn(2), 4U);
    EXPECT_EQ(all.endOfDrawn(3), 4U);
    EXPECT_EQ(all.endOfDrawn(4), 5U);
    EXPECT_EQ(VisualText::of(*see(levels(ranges), Choice::highest)),
              "group\n  group near\n  group middle\n  group far\n");
    EXPECT_EQ(VisualText::of(*see(levels(ranges), Choice::lowest)), "group\n  group far\n");
}

TEST(FltLODChains, addsLevelsOfWhichEitherIsMarked)
{
    using Stays = std::vector<bool>;
    EXPECT_EQ(onlyLevels(*see(levels({{"near", 0, 10, additive}, {"far", 10, 20}}))).nextStays,
              (Stays{true, false}));
    EXPECT_EQ(onlyLevels(*see(levels({{"near", 0, 10}, {"far", 10, 20, additive}}))).nextStays,
              (Stays{true, false}));
    EXPECT_EQ(onlyLevels(*see(levels({{"near", 0, 10}, {"far", 10, 20}}))).nextStays, Stays());
    EXPECT_EQ(
        onlyLevels(*see(levels({{"near", 0, 10, additive}, {"middle", 10, 20}, {"far", 20, 30}}))).nextStays,
        (Stays{true, false, false}));
}

/// The old form has another use for the same bit.
TEST(FltLODChains, takesNoLevelOfTheOldFormForAdditive)
{
    CompleteDatabase database;
    database.begin();
    for (auto const& [nearest, farthest] : {std::pair(0, 10), {10, 20}})
        database.writer.add(
            "OLDLOD", {{"switchOutDistance", nearest}, {"switchInDistance", farthest}, {"flags", additive}});
    EXPECT_TRUE(onlyLevels(*database.see().root).nextStays.empty());
}

/// Levels inside additive levels would be visited twice for each level above them.
TEST(FltLODChains, addsNoLevelsToASceneThatWouldBecomeTooLarge)
{
    CompleteDatabase database;
    database.begin();
    for (int i = 0; i < 60; ++i)
        database.writer.add("LOD", {{"switchInDistance", 10}, {"flags", additive}})
            .add("LOD", {{"switchOutDistance", 10}, {"switchInDistance", 20}})
            .push();
    FltVisualConversion::Result const seen = database.see();
    EXPECT_NE(database.messages.find("the scene would become too large"), std::string::npos);
    EXPECT_FALSE(onlyLevels(*seen.root).nextStays.size() > 1 && onlyLevels(*seen.root).nextStays[0]);
}
