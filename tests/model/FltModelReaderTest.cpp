#include "model/FltModelReader.h"

#include "records/FltOpcode.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>

namespace
{

/// A model of what a writer holds.
struct ReadModel {
    explicit ReadModel(FltWriter const& flt)
        : bytes(flt.bytes()), model("a.flt", bytes.data(), bytes.size(), false)
    {
        FltModelReader::read(model, leftOut, [this](std::size_t done) { calls.push_back(done); });
    }

    std::string bytes;
    FltModel model;
    FltLeftOut leftOut;
    std::vector<std::size_t> calls;
};

double metres(int revision, int unit, int multiplier)
{
    return ReadModel(
               FltWriter(revision, {{"vertexCoordinateUnits", unit}, {"multiplierDiviserUnit", multiplier}}))
        .model.metresPerUnit;
}

TEST(FltModelReader, takesUnitAndRevisionFromTheHeader)
{
    ReadModel const read(FltWriter(1570, {{"vertexCoordinateUnits", 4}}));
    ASSERT_NE(read.model.header, nullptr);
    EXPECT_EQ(read.model.revision, 1570);
    EXPECT_EQ(read.model.metresPerUnit, 0.3048);
    EXPECT_EQ(read.model.records, 1U);
}

TEST(FltModelReader, takesTheMultiplierOfOldFilesOnly)
{
    EXPECT_EQ(metres(12, 0, 10), 10);
    EXPECT_EQ(metres(12, 0, -10), 0.1);
    EXPECT_EQ(metres(12, 1, 0), 1000);
    EXPECT_EQ(metres(13, 0, 10), 1);
}

TEST(FltModelReader, putsEachRecordWhereItBelongs)
{
    FltWriter flt;
    flt.vertexPalette();
    int const vertex = flt.vertex("VertexColor", 1, 2, 3);
    flt.add("Material", {{"index", 3}}).push().add("Group").add("Comment").pop();
    ReadModel const read(flt);
    EXPECT_EQ(read.model.vertices.size(), 1U);
    EXPECT_EQ(read.model.vertices.find(vertex), 0U);
    EXPECT_EQ(read.model.palettes.materials->count(3), 1U);
    EXPECT_EQ(read.model.tree.getCount(), 2);
    EXPECT_EQ(read.model.records, 8U);
    EXPECT_TRUE(read.leftOut.empty());
}

TEST(FltModelReader, countsWhatIsLeftOut)
{
    FltWriter flt;
    flt.add("SoundPaletteNames").add("LineStylePalette").addRaw(FltOpcode::namePalette);
    flt.push().add("Group").push().pop().add("Comment").add("PushExtension").add("Group").add("PopExtension");
    ReadModel const read(flt.pop());
    EXPECT_EQ(read.leftOut, (FltLeftOut{{"record in an extension or too deep a level", 1},
                                        {"record that belongs to no node", 1},
                                        {"sound palette", 1}}));
}

TEST(FltModelReader, tellsNowAndThenHowFarItIs)
{
    FltWriter flt;
    for (int i = 0; i < 8191; ++i)
        flt.add("Group");
    ReadModel const read(flt);
    ASSERT_EQ(read.calls.size(), 2U);
    EXPECT_LT(read.calls[0], read.calls[1]);
    EXPECT_LT(read.calls[1], read.bytes.size());
    EXPECT_EQ(ReadModel(flt.add("Group")).calls.size(), 3U);
}

TEST(FltModelReader, endsWhereItIsToldToByAnException)
{
    std::string const bytes = FltWriter().bytes();
    FltModel model("a.flt", bytes.data(), bytes.size(), false);
    FltLeftOut leftOut;
    EXPECT_THROW(FltModelReader::read(model, leftOut, [](std::size_t) { throw 1; }), int);
    EXPECT_EQ(model.records, 0U);
}

} // namespace
