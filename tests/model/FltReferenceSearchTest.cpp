#include "model/FltReferenceSearch.h"

#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

namespace
{

class FltReferenceSearchTest : public testing::Test
{
protected:
    std::string find(std::string const& reference)
    {
        return FltReferenceSearch().find(folder / "db/town.flt", reference);
    }

    ScratchFolder folder;
};

} // namespace

TEST_F(FltReferenceSearchTest, FindsAFileWhateverTheCaseAndTheSlashes)
{
    folder.write("db/Models/Tower.flt", "");
    folder.write("other/gate.flt", "");
    EXPECT_EQ(find("Models/Tower.flt"), folder / "db/Models/Tower.flt");
    EXPECT_EQ(find("MODELS\\TOWER.FLT"), folder / "db/Models/Tower.flt");
    EXPECT_EQ(find("./models/tower.flt<top>"), folder / "db/Models/Tower.flt");
    EXPECT_EQ(find("..\\OTHER\\Gate.FLT"), folder / "db/../other/gate.flt");
    EXPECT_EQ(find((folder / "OTHER/gate.flt")), folder / "other/gate.flt");
}

TEST_F(FltReferenceSearchTest, PrefersTheStoredSpelling)
{
    folder.write("db/Tower.flt", "");
    folder.write("db/tower.flt", "");
    EXPECT_EQ(find("tower.flt"), folder / "db/tower.flt");
    EXPECT_EQ(find("Tower.flt"), folder / "db/Tower.flt");
}

TEST_F(FltReferenceSearchTest, NamesTheStoredPlaceOfWhatIsNotThere)
{
    EXPECT_EQ(find("sub\\None.flt"), folder / "db/sub/None.flt");
    EXPECT_EQ(find(""), folder / "db/");
    EXPECT_EQ(find("<top>"), folder / "db/");
}

TEST_F(FltReferenceSearchTest, LooksIntoNoDirectoryThatMayNotBeRead)
{
    folder.write("db/Tower.flt", "");
    folder.write("outside/Gate.flt", "");
    FltReferenceSearch search(FltReadableTree(folder / "db"));
    EXPECT_EQ(search.find(folder / "db/town.flt", "TOWER.flt"), folder / "db/Tower.flt");
    EXPECT_EQ(search.find(folder / "db/town.flt", "../outside/gate.flt"), folder / "db/../outside/gate.flt");
}
