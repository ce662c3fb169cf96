#include "inspect/FltDependencies.h"

#include "messages/FltLimits.h"
#include "support/DeepChain.h"
#include "support/ScratchFolder.h"
#include "writer/FltWriter.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <utility>

namespace
{

using State = FltDependencies::State;

class FltDependenciesTest : public testing::Test
{
protected:
    void save(std::string const& name, std::vector<std::string> const& references,
              std::string const& texture = "")
    {
        FltWriter flt;
        if (!texture.empty())
            flt.add("TexturePattern", {{"fileName", texture}});
        flt.push();
        for (std::string const& reference : references)
            flt.add("ExternalReference", {{"asciiPath", reference}});
        flt.pop().save(folder.path(name));
    }

    FltDependencies of(std::string const& name) const
    {
        return FltDependencies(FltInventory(folder / name),
                               [this](std::string const& texture, std::string const&) {
                                   std::string const path = folder / texture;
                                   return std::filesystem::exists(path) ? path : "";
                               });
    }

    std::vector<State> statesOf(std::string const& name) const
    {
        std::vector<State> states;
        FltDependencies const dependencies = of(name);
        for (FltDependencies::Reference const& reference : dependencies.references())
            states.push_back(reference.state);
        return states;
    }

    ScratchFolder folder;
};

} // namespace

TEST_F(FltDependenciesTest, followsReferencesFromTheDirectoryOfTheFileThatNamesThem)
{
    save("main.flt", {"./sub/a.flt"});
    save("sub/a.flt", {"b.flt"}, "tree.rgb");
    save("sub/b.flt", {});
    static_cast<void>(folder.write("tree.rgb", "pixels"));
    EXPECT_EQ(of("main.flt").files(),
              (std::vector<std::string>{folder / "tree.rgb", folder / "sub/a.flt", folder / "sub/b.flt"}));
}

TEST_F(FltDependenciesTest, takesBackslashesAsSlashesAndLeavesOutTheNodeOfAReference)
{
    save("main.flt", {"sub\\a.flt<tower>"});
    save("sub/a.flt", {});
    EXPECT_EQ(of("main.flt").references()[0].path, folder / "sub/a.flt");
}

/// Such a file was found where the program ran, and no conversion looks for it there.
TEST_F(FltDependenciesTest, findsNoFileThatLiesWhereTheProgramRuns)
{
    save("main/town.flt", {"here.flt", "sub/a<b.flt"});
    save("here.flt", {});
    save("main/sub/a<b.flt", {});
    auto const before = std::filesystem::current_path();
    std::filesystem::current_path(folder / "");
    std::vector<State> const states = statesOf("main/town.flt");
    std::filesystem::current_path(before);
    EXPECT_EQ(states, (std::vector<State>{State::missing, State::found}));
}

TEST_F(FltDependenciesTest, tellsMissingFilesFromThoseThatCantBeRead)
{
    save("main.flt", {"nowhere.flt", "text.flt", "text.flt"});
    static_cast<void>(folder.write("text.flt", "no database"));
    EXPECT_EQ(statesOf("main.flt"),
              (std::vector<State>{State::missing, State::unreadable, State::unreadable}));
}

TEST_F(FltDependenciesTest, endsAtTheReferenceThatClosesACircle)
{
    save("a.flt", {"b.flt"});
    save("b.flt", {"a.flt"});
    EXPECT_EQ(statesOf("a.flt"), (std::vector<State>{State::found, State::cycle}));
}

TEST_F(FltDependenciesTest, readsAFileThatManyReferToOnce)
{
    // With each file read again for each reference these would be 2 to the power of 20.
    constexpr int files = 20;
    for (int i = 0; i < files; ++i)
        save(std::to_string(i) + ".flt", {std::to_string(i + 1) + ".flt", std::to_string(i + 1) + ".flt"});
    save(std::to_string(files) + ".flt", {});
    EXPECT_EQ(of("0.flt").references().size(), 2U * files);
    EXPECT_EQ(of("0.flt").files().size(), static_cast<std::size_t>(files));
}

TEST_F(FltDependenciesTest, tellsWhetherATextureIsAtTheStoredPlace)
{
    static_cast<void>(folder.write("tree.rgb", "pixels"));
    save("main.flt", {}, "tree.rgb");
    EXPECT_FALSE(of("main.flt").textures()[0].isElsewhere);
    save("sub/main.flt", {}, "tree.rgb");
    EXPECT_TRUE(of("sub/main.flt").textures()[0].isElsewhere);
    save("main.flt", {}, "bush.rgb");
    EXPECT_EQ(of("main.flt").textures()[0].path, "");
}

TEST_F(FltDependenciesTest, tellsWhereTheLevelsOfAChainOfFilesBecomeTooMany)
{
    DeepChain const chain(32, 200);
    FltDependencies const dependencies(FltInventory(chain.first()), [](auto const&...) { return ""; });
    ASSERT_EQ(dependencies.deepLevels().size(), 1U);
    EXPECT_EQ(dependencies.deepLevels()[0].database, chain.folder / DeepChain::nameOf(5));
    std::uint32_t above = 0;
    for (int file = 0; file < 5; ++file) {
        FltInventory const inventory(chain.folder / DeepChain::nameOf(file));
        above += inventory.nodes[inventory.references.at(0).node].depth;
    }
    FltInventory const last(chain.folder / DeepChain::nameOf(5));
    auto const firstTooDeep =
        std::find_if(last.nodes.begin(), last.nodes.end(), [above](FltInventory::Node const& node) {
            return above + node.depth == static_cast<std::uint32_t>(FltLimits::hierarchyDepth);
        });
    ASSERT_NE(firstTooDeep, last.nodes.end());
    EXPECT_EQ(dependencies.deepLevels()[0].offset, firstTooDeep->offset);
    EXPECT_EQ(dependencies.deepLevels()[0].opcode, firstTooDeep->opcode);
    EXPECT_EQ(dependencies.references().size(), 6U) << "what stands below isn't followed";
    EXPECT_EQ(dependencies.references().back().state, State::tooDeep);
}

TEST_F(FltDependenciesTest, tellsOfLevelsBelowASecondReferenceToAFile)
{
    DeepChain const chain(1, 300);
    FltWriter flt;
    flt.push().add("ExternalReference", {{"asciiPath", DeepChain::nameOf(0)}});
    for (int i = 0; i < 1000; ++i)
        flt.add("Group").push();
    flt.add("ExternalReference", {{"asciiPath", DeepChain::nameOf(0)}}).save(chain.folder.path("main.flt"));
    FltDependencies const dependencies(FltInventory(chain.folder / "main.flt"),
                                       [](auto const&...) { return ""; });
    ASSERT_EQ(dependencies.deepLevels().size(), 1U);
    EXPECT_EQ(dependencies.deepLevels()[0].database, chain.folder / "main.flt");
    EXPECT_EQ(dependencies.deepLevels()[0].offset, dependencies.references().back().offset);
}

TEST_F(FltDependenciesTest, countsTheLevelOfTheReferenceItself)
{
    save("main.flt", {"deep.flt"});
    for (int const levels : {FltLimits::hierarchyDepth - 2, FltLimits::hierarchyDepth - 1}) {
        FltWriter flt;
        for (int i = 0; i < levels; ++i)
            flt.push().add("Group");
        for (int i = 0; i < levels; ++i)
            flt.pop();
        flt.save(folder.path("deep.flt"));
        EXPECT_EQ(of("deep.flt").deepLevels().size(), 0U) << levels;
        EXPECT_EQ(of("main.flt").deepLevels().size(), levels == FltLimits::hierarchyDepth - 1 ? 1U : 0U)
            << levels;
    }
}

TEST_F(FltDependenciesTest, followsNoReferenceToWhereEveryLevelIsTooDeep)
{
    auto const saveDeep = [this](std::string const& name, int depth, std::string const& reference) {
        FltWriter flt;
        for (int i = 0; i < depth - 1; ++i)
            flt.push().add("Group");
        flt.push().add("ExternalReference", {{"asciiPath", reference}});
        for (int i = 0; i < depth; ++i)
            flt.pop();
        flt.save(folder.path(name));
    };
    constexpr int half = FltLimits::hierarchyDepth / 2;
    save("last.flt", {});
    for (int const depth : {half - 1, half}) {
        saveDeep("main.flt", half, "next.flt");
        saveDeep("next.flt", depth, "last.flt");
        EXPECT_EQ(statesOf("main.flt"),
                  (std::vector{State::found, depth < half ? State::found : State::tooDeep}));
    }
}

TEST_F(FltDependenciesTest, countsNoLevelForAFileWithoutNodes)
{
    FltWriter().save(folder.path("empty.flt"));
    FltWriter flt;
    flt.push().add("ExternalReference", {{"asciiPath", "empty.flt"}});
    for (int i = 0; i < FltLimits::hierarchyDepth - 2; ++i)
        flt.add("Group").push();
    flt.add("ExternalReference", {{"asciiPath", "empty.flt"}}).save(folder.path("main.flt"));
    FltDependencies const dependencies = of("main.flt");
    EXPECT_EQ(dependencies.references().size(), 2U);
    EXPECT_EQ(dependencies.deepLevels().size(), 0U);
}

TEST_F(FltDependenciesTest, countsTheLevelsOfAllFilesBelowASecondReference)
{
    DeepChain const chain(2, 300);
    for (auto const& [levels, isTooDeep] : {std::pair{500, false}, {700, true}}) {
        FltWriter flt;
        flt.push().add("ExternalReference", {{"asciiPath", DeepChain::nameOf(0)}});
        for (int i = 0; i < levels; ++i)
            flt.add("Group").push();
        flt.add("ExternalReference", {{"asciiPath", DeepChain::nameOf(0)}})
            .save(chain.folder.path("main.flt"));
        FltDependencies const dependencies(FltInventory(chain.folder / "main.flt"),
                                           [](auto const&...) { return ""; });
        EXPECT_EQ(dependencies.deepLevels().size(), isTooDeep ? 1U : 0U) << levels;
    }
}

/// Neither a file that isn't there nor one that leads back adds a level to the one that names it.
TEST_F(FltDependenciesTest, countsNoLevelForAFileThatIsMissingOrLeadsBack)
{
    int const most = FltLimits::hierarchyDepth;
    for (auto const& [levels, below] : {std::pair{most - 2, "missing.flt"},
                                        {most - 1, "missing.flt"},
                                        {most - 2, "small.flt"},
                                        {most - 1, "small.flt"}}) {
        save("small.flt", {below});
        FltWriter flt;
        flt.push().add("ExternalReference", {{"asciiPath", "small.flt"}});
        for (int i = 0; i < levels - 1; ++i)
            flt.add("Group").push();
        flt.add("ExternalReference", {{"asciiPath", "small.flt"}}).save(folder.path("main.flt"));
        FltDependencies const dependencies = of("main.flt");
        FltInventory const main(folder / "main.flt");
        std::uint32_t const depth = main.nodes[main.references.back().node].depth;
        bool const isTooDeep = depth + 1 >= static_cast<std::uint32_t>(most);
        EXPECT_EQ(dependencies.deepLevels().size(), isTooDeep ? 1U : 0U) << depth;
    }
}

TEST_F(FltDependenciesTest, findsAttributesInTheFolderOfTheDatabaseWhereverThePictureIs)
{
    save("main.flt", {}, "pictures/tree.rgb");
    static_cast<void>(folder.write("pictures/tree.rgb", "pixels"));
    static_cast<void>(folder.write("tree.rgb.attr", "short"));
    EXPECT_EQ(of("main.flt").textures().at(0).attributes.path, folder / "tree.rgb.attr");
}

TEST_F(FltDependenciesTest, tellsTheNamesInRecordsByteForByte)
{
    FltWriter flt(1570);
    flt.add("TexturePattern", {{"fileName", "gr\xfcn.rgb"}, {"patternIndex", 0}}).push();
    flt.add("ExternalReference", {{"asciiPath", "h\xe4user.flt"}}).add("Group", {{"idASCII", "g1"}}).pop();
    std::vector<std::string> names;
    for (FltRecordScan scan(folder.write("latin.flt", flt.bytes())); scan.next();)
        if (std::string const name = FltDependencies::nameIn(scan); !name.empty())
            names.push_back(name);
    EXPECT_EQ(names, (std::vector<std::string>{"gr\xfcn.rgb", "h\xe4user.flt"}));
}
