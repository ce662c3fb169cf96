#include "convert/ReferenceGraph.h"
#include "support/ScratchFolder.h"

#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <set>
#include <utility>

namespace
{

class ReferenceGraphTest : public testing::Test
{
protected:
    void add(std::string const& file, std::vector<std::string> const& references)
    {
        DatabaseScan scan;
        for (std::string const& reference : references)
            scan.references.push_back({reference, reference, 1});
        graph.add(file, scan);
    }

    ReferenceGraph graph;
};

} // namespace

TEST_F(ReferenceGraphTest, leavesOutTheReferenceThatClosesACircle)
{
    add("a", {"b", "a"});
    add("b", {"c"});
    add("c", {"a", "b"});
    graph.choose({"a", "b", "c"});
    EXPECT_TRUE(graph.isChosen("a", "b"));
    EXPECT_TRUE(graph.isChosen("b", "c"));
    EXPECT_FALSE(graph.isChosen("a", "a"));
    EXPECT_FALSE(graph.isChosen("c", "a"));
    EXPECT_FALSE(graph.isChosen("c", "b"));
}

TEST_F(ReferenceGraphTest, choosesAlikeWhicheverFilesOfACircleAreKnownToBeNeeded)
{
    add("b", {"c"});
    add("c", {"a"});
    add("a", {"b"});
    add("0", {"c"}); // would begin the search in the middle
    graph.chooseByNames();
    EXPECT_TRUE(graph.isChosen("a", "b"));
    EXPECT_TRUE(graph.isChosen("b", "c"));
    EXPECT_FALSE(graph.isChosen("c", "a"));
    EXPECT_TRUE(graph.isChosen("0", "c"));

    ReferenceGraph fewer;
    for (auto const& [file, reference] : {std::pair("c", "a"), {"a", "b"}, {"b", "c"}}) {
        DatabaseScan scan;
        scan.references.push_back({reference, reference, 1});
        fewer.add(file, scan);
    }
    fewer.chooseByNames();
    for (auto const& [file, reference] : {std::pair("c", "a"), {"a", "b"}, {"b", "c"}})
        EXPECT_EQ(fewer.isChosen(file, reference), graph.isChosen(file, reference)) << file;
}

TEST_F(ReferenceGraphTest, keepsAFileThatSeveralReferTo)
{
    add("a", {"b", "c"});
    add("b", {"d"});
    add("c", {"d"});
    add("d", {});
    graph.choose({"a"});
    EXPECT_TRUE(graph.isChosen("b", "d"));
    EXPECT_TRUE(graph.isChosen("c", "d"));
}

TEST_F(ReferenceGraphTest, leavesOutWhatIsNotKnown)
{
    add("a", {"lost"});
    graph.choose({"a"});
    EXPECT_FALSE(graph.isChosen("a", "lost"));
}

TEST_F(ReferenceGraphTest, cutsChainsThatAreTooLong)
{
    constexpr int files = 100'000;
    for (int i = 0; i < files; ++i)
        add(std::to_string(i), {std::to_string(i + 1)});
    add(std::to_string(files), {});
    graph.choose({"0"});
    int chain = 0;
    for (int i = 0; i < files; ++i) {
        chain = graph.isChosen(std::to_string(i), std::to_string(i + 1)) ? chain + 1 : 0;
        ASSERT_LE(chain, ReferenceGraph::longestChain);
    }
    EXPECT_TRUE(graph.isChosen("0", "1"));
}

TEST_F(ReferenceGraphTest, cutsWhatAReaderWouldOpenTooOften)
{
    constexpr int levels = 30;
    for (int i = 0; i < levels; ++i) {
        DatabaseScan scan;
        scan.references.push_back({"", std::to_string(i + 1), 2});
        graph.add(std::to_string(i), scan);
    }
    add(std::to_string(levels), {});
    graph.choose({"0"});
    int chosen = 0;
    for (int i = 0; i < levels; ++i)
        chosen += graph.isChosen(std::to_string(i), std::to_string(i + 1)) ? 1 : 0;
    EXPECT_LT(chosen, levels) << "two to the thirtieth are too many";
    EXPECT_GE(chosen, levels / 2);
}

TEST_F(ReferenceGraphTest, seesAChangeInWhatAFileNeedsThroughOthers)
{
    ScratchFolder const folder;
    std::string const top = folder.write("top", ""), middle = folder.write("middle", ""),
                      picture = folder.write("picture", "");
    add(top, {middle});
    DatabaseScan scan;
    scan.textures.push_back(picture);
    scan.references.push_back({top, top, 1}); // a circle does no harm
    graph.add(middle, scan);
    graph.readTimes();
    std::int64_t const later = ReferenceGraph::timeOf(picture) + 1;
    EXPECT_FALSE(graph.hasChangedSince(top, later));
    EXPECT_TRUE(graph.hasChangedSince(top, later - 1)) << "in doubt";
    EXPECT_TRUE(graph.hasChangedSince(folder / "unknown", later));
    std::filesystem::last_write_time(picture,
                                     std::filesystem::last_write_time(picture) + std::chrono::seconds(1));
    graph = {};
    add(top, {middle});
    graph.add(middle, scan);
    graph.readTimes();
    EXPECT_TRUE(graph.hasChangedSince(top, later));
    EXPECT_TRUE(graph.hasChangedSince(middle, later));
}

TEST_F(ReferenceGraphTest, takesAFileForChangedThatNeedsWhatIsNotKnown)
{
    ScratchFolder const folder;
    std::string const top = folder.write("top", "");
    add(top, {folder / "lost"});
    graph.readTimes();
    EXPECT_TRUE(graph.hasChangedSince(top, ReferenceGraph::timeOf(top) + 1));
}

TEST_F(ReferenceGraphTest, looksForTexturesInTheDirectoriesOfFilesAndOfThoseThatLeadToThem)
{
    DatabaseScan town, house, tree;
    town.textureNames = {"road.rgb"};
    town.references = {{"town/lib/house.flt", "house", 1}, {"town/lib/house.flt", "house", 1}};
    house.textureNames = {"wall.rgb", "road.rgb"};
    house.references = {{"trees/tree.flt", "tree", 1}, {"town/town.flt", "town", 1}};
    tree.textureNames = {"leaf.rgb"};
    graph.add("town", town);
    graph.add("house", house);
    graph.add("tree", tree);
    auto const searches = graph.textureSearches({{"town/town.flt", "town", 1}, {"alone.flt", "unknown", 1}});
    auto const namesIn = [&](std::string const& directory) {
        std::set<std::string> names;
        for (auto const& [name, database] : searches.at(directory))
            names.insert(name);
        return names;
    };
    EXPECT_EQ(namesIn("town"), (std::set<std::string>{"leaf.rgb", "road.rgb", "wall.rgb"}));
    EXPECT_EQ(namesIn("town/lib"), (std::set<std::string>{"road.rgb", "wall.rgb"}));
    EXPECT_EQ(namesIn("trees"), std::set<std::string>{"leaf.rgb"});
    EXPECT_TRUE(namesIn("").empty());
    EXPECT_EQ(searches.at("trees").at("leaf.rgb"), "tree");
}
