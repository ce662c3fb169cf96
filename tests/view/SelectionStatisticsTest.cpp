#include "view/SelectionStatistics.h"

#include "LoadedViewDatabase.h"
#include "support/SceneMeasure.h"

#include "inspect/FltInventory.h"

namespace
{

class SelectionStatisticsTest : public LoadedViewDatabase
{
protected:
    SelectionStatistics::Numbers of(char const* name) { return counted.of(*node(name), place(name)); }

    SelectionStatistics counted{loaded.scene};
};

TEST_F(SelectionStatisticsTest, CountsTheWholeAsFltinfoDoes)
{
    SelectionStatistics::Numbers const all = counted.of(*loaded.scene.root(), FltRecordPlace{path, 0, true});
    FltInventory const inventory(path);
    SceneMeasure const measure = SceneMeasure::of(FltLoader().load(path), path);
    EXPECT_EQ(inventory.faces.size(), all.faces);
    EXPECT_EQ(inventory.vertices.size(), all.vertices);
    EXPECT_EQ(measure.statistics.faces, all.faces);
    EXPECT_EQ(measure.statistics.triangles, all.triangles);
    EXPECT_EQ(measure.bytes, all.bytes);
    EXPECT_EQ(1U, all.textures);
}

TEST_F(SelectionStatisticsTest, CountsAPart)
{
    SelectionStatistics::Numbers const lamp = of("lamp");
    EXPECT_EQ(2U, lamp.faces);
    EXPECT_EQ(4U, lamp.triangles);
    EXPECT_EQ(8U, lamp.vertices);
    EXPECT_EQ(0U, lamp.textures);
    EXPECT_EQ(1U, of("poster").textures);
}

TEST_F(SelectionStatisticsTest, SaysNumbersInWords)
{
    std::string const words = of("poster").describe();
    EXPECT_EQ(0U, words.find("1 face, 2 triangles, 4 vertices, 1 texture, about ")) << words;
    SelectionStatistics::Numbers const shape = counted.of(*node("poster"), std::nullopt);
    EXPECT_EQ(0U, shape.describe().find("2 triangles, 1 texture, about ")) << "faces belong to records";
}

TEST_F(SelectionStatisticsTest, CountsReferencedFilesOnce)
{
    FltWriter flt;
    flt.push();
    for (int i = 0; i < 2; ++i)
        flt.add("ExternalReference", {{"asciiPath", "yard.flt"}});
    flt.pop().save(folder.path("outer.flt"));
    LoadedScene const outer(FltLoader(), folder.path("outer.flt"));
    SelectionStatistics statistics(outer.scene);
    auto const all = statistics.of(*outer.scene.root(), FltRecordPlace{folder.path("outer.flt"), 0, true});
    EXPECT_EQ(outer.statistics.faces, all.faces);
    EXPECT_EQ(6U, all.faces);
    EXPECT_EQ(24U, all.vertices);
}

TEST_F(SelectionStatisticsTest, KnowsNoFacesOfAFileThatIsGone)
{
    FltRecordPlace const gone{folder.path("gone.flt"), 0, true};
    EXPECT_FALSE(counted.of(*node("poster"), gone).hasRecord);
}

} // namespace
