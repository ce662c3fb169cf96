#include "model/FltVertexStore.h"

#include "support/LastRecord.h"

#include <array>
#include <deque>
#include <gtest/gtest.h>
#include <memory>

namespace
{

using Fields = FltWriter::Fields;
constexpr int noColor = 0x2000;
constexpr int packedColor = 0x1000;
FltValue const blue{255, 255, 0, 0}; // alpha, blue, green, red

class FltVertexStoreTest : public testing::Test
{
protected:
    FltVertexStoreTest()
    {
        FltWriter flt;
        flt.add("ColorPalette", {{"color", {0.0, double(0xff0000ffU)}}});
        colors->assign(LastRecord(flt).view(), 1570);
    }

    /// Adds the record that a writer has added last.
    void add(FltWriter const& flt, int revision = 1570)
    {
        records.emplace_back(flt);
        store.addPaletteVertex(records.back().view(), colors, revision);
    }

    FltVertex added(char const* form, Fields const& fields, int revision = 1570)
    {
        FltWriter flt(revision);
        flt.vertex(form, 1, 2, 3, fields);
        add(flt, revision);
        return store[static_cast<std::uint32_t>(store.size() - 1)];
    }

    FltVertex addedOld(char const* form, Fields fields)
    {
        fields.insert(fields.end(), {{"Xcoordinate", 4}, {"Ycoordinate", -5}, {"Zcoordinate", 6}});
        FltWriter flt(11);
        flt.add(form, fields);
        return store[store.addOldVertex(LastRecord(flt).view(), *colors)];
    }

    std::shared_ptr<FltColors> colors = std::make_shared<FltColors>();
    std::deque<LastRecord> records; ///< They have to outlive the store.
    FltVertexStore store;
};

} // namespace

TEST_F(FltVertexStoreTest, knowsWhatEachFormHas)
{
    EXPECT_EQ(added("VertexColor", {{"flags", noColor}}).flags, 0);
    store = {};
    EXPECT_EQ(added("VertexColorNormal", {{"flags", noColor}}).flags, FltVertex::hasNormal);
    store = {};
    EXPECT_EQ(added("VertexColorUv", {{"flags", noColor}}).flags, FltVertex::hasUv);
    store = {};
    FltVertex const all = added("VertexColorNormalUv", {{"flags", packedColor},
                                                        {"vertexNormal", {0.25, 0.5, 1}},
                                                        {"texture", {2, 3}},
                                                        {"packedColor", blue}});
    EXPECT_EQ(all.flags, FltVertex::hasNormal | FltVertex::hasUv | FltVertex::hasColor);
    EXPECT_EQ(all.position[0], 1);
    EXPECT_EQ(all.position[1], 2);
    EXPECT_EQ(all.position[2], 3);
    EXPECT_EQ(all.normal[0], 0.25F);
    EXPECT_EQ(all.normal[2], 1);
    EXPECT_EQ(all.uv[0], 2);
    EXPECT_EQ(all.uv[1], 3);
    EXPECT_EQ(all.color, 0x0000ffffU);
}

TEST_F(FltVertexStoreTest, takesTheColourFromThePaletteUnlessAFlagSaysOtherwise)
{
    EXPECT_EQ(added("VertexColor", {{"vertexColorIndex", 255}, {"packedColor", blue}}).color, 0xff0000ffU);
    store = {};
    FltVertex const none = added("VertexColor", {{"flags", noColor | packedColor}, {"packedColor", blue}});
    EXPECT_FALSE(none.has(FltVertex::hasColor)) << "no colour wins over a packed one";
}

TEST_F(FltVertexStoreTest, hasNoColourByIndexWhereTheRecordHoldsNone)
{
    EXPECT_FALSE(added("VertexColor", {}, 1500).has(FltVertex::hasColor));
}

TEST_F(FltVertexStoreTest, takesOldVerticesWithWhatTheyHave)
{
    FltVertex const plain = addedOld("OldVertex", {});
    EXPECT_EQ(plain.position[0], 4);
    EXPECT_EQ(plain.position[1], -5);
    EXPECT_EQ(plain.position[2], 6);
    EXPECT_EQ(plain.flags, 0);
    FltVertex const colored = addedOld("OldVertexColorTextured", {{"colorIndex", 255}, {"texture", {2, 3}}});
    EXPECT_EQ(colored.flags, FltVertex::hasColor | FltVertex::hasUv);
    EXPECT_EQ(colored.color, 0xff0000ffU);
    EXPECT_EQ(colored.uv[1], 3);
    FltVertex const shaded = addedOld("OldVertexColorNormal", {{"vertexNormalScaled", {0, 0, 1}}});
    EXPECT_EQ(shaded.flags, FltVertex::hasColor | FltVertex::hasNormal);
    EXPECT_EQ(shaded.normal[2], 1);
    EXPECT_EQ(store.size(), 3U);
}

TEST_F(FltVertexStoreTest, findsVerticesOfThePaletteAmongOthers)
{
    FltWriter flt;
    flt.vertexPalette();
    store.beginPalette(LastRecord(flt).view());
    int const first = flt.vertex("VertexColor", 1, 0, 0);
    add(flt);
    EXPECT_EQ(store.add(FltVertex()), 1U);
    int const second = flt.vertex("VertexColor", 2, 0, 0);
    add(flt);
    EXPECT_EQ(store.find(first), 0U);
    EXPECT_EQ(store.find(second), 2U);
    EXPECT_EQ(store.find(second + 1), FltVertexStore::none);
    EXPECT_EQ(store.placeOf(0)[0], 1);
    EXPECT_EQ(store.placeOf(1)[0], 0);
    EXPECT_EQ(store[2].position[0], 2);
}

TEST_F(FltVertexStoreTest, keepsTheColoursThatHeldWhereAVertexStands)
{
    FltWriter flt;
    for (int i = 0; i < 2; ++i) {
        flt.vertex("VertexColor", i, 0, 0, {{"vertexColorIndex", 255}});
        add(flt);
    }
    FltWriter other;
    other.add("ColorPalette", {{"color", {0.0, double(0xffff0000U)}}});
    colors = std::make_shared<FltColors>();
    colors->assign(LastRecord(other).view(), 1570);
    flt.vertex("VertexColor", 2, 0, 0, {{"vertexColorIndex", 255}});
    add(flt);
    ASSERT_EQ(store.size(), 3U);
    EXPECT_EQ(store[0].color, 0xff0000ffU);
    EXPECT_EQ(store[1].color, 0xff0000ffU);
    EXPECT_EQ(store[2].color, 0x0000ffffU);
    for (std::uint32_t i = 0; i < 3; ++i)
        EXPECT_EQ(store.placeOf(i)[0], i);
}

TEST_F(FltVertexStoreTest, forgetsWhatStandsBehindThoseThatAreKept)
{
    added("VertexColor", {});
    addedOld("OldVertex", {});
    addedOld("OldVertex", {});
    store.keepFirst(2);
    EXPECT_EQ(store.size(), 2U);
    EXPECT_EQ(store.placeOf(1)[0], 4);
    store.keepFirst(1);
    EXPECT_EQ(store.size(), 1U);
    EXPECT_EQ(store.placeOf(0)[0], 1);
    EXPECT_EQ(store.add(FltVertex()), 1U);
}

TEST_F(FltVertexStoreTest, tellsThePlacesOfAllForms)
{
    for (char const* const form :
         {"VertexColor", "VertexColorNormal", "VertexColorUv", "VertexColorNormalUv"}) {
        store = {};
        added(form, {});
        EXPECT_EQ(store.placeOf(0), (std::array<double, 3>{1, 2, 3})) << form;
        EXPECT_TRUE(store.hasUsablePlace(0));
    }
    FltVertex far;
    far.position[1] = 1e31;
    EXPECT_FALSE(store.hasUsablePlace(store.add(far)));
}

TEST_F(FltVertexStoreTest, staysInTheFileAsLongAsColoursAndRevisionDo)
{
    EXPECT_EQ(store.endInFile(), 0U);
    FltWriter flt;
    flt.vertex("VertexColor", 1, 2, 3, {});
    add(flt);
    flt.vertex("VertexColor", 4, 5, 6, {});
    add(flt);
    FltRecordView const last = records.back().view();
    EXPECT_EQ(store.endInFile(), last.offset + last.size);
    flt.vertex("VertexColor", 7, 8, 9, {});
    add(flt, 1539);
    EXPECT_EQ(store.endInFile(), 0U) << "it is decoded";
    EXPECT_EQ(store.size(), 3U);
}
