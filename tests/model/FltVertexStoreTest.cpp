#include "model/FltVertexStore.h"

#include "support/LastRecord.h"

#include <gtest/gtest.h>

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
        colors.assign(LastRecord(flt).view(), 1570);
    }

    FltVertex added(char const* form, Fields const& fields, int revision = 1570)
    {
        FltWriter flt(revision);
        flt.vertex(form, 1, 2, 3, fields);
        store.addPaletteVertex(LastRecord(flt).view(), colors, revision);
        return store[static_cast<std::uint32_t>(store.size() - 1)];
    }

    FltVertex addedOld(char const* form, Fields fields)
    {
        fields.insert(fields.end(), {{"Xcoordinate", 4}, {"Ycoordinate", -5}, {"Zcoordinate", 6}});
        FltWriter flt(11);
        flt.add(form, fields);
        return store[store.addOldVertex(LastRecord(flt).view(), colors)];
    }

    FltColors colors;
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
    store.addPaletteVertex(LastRecord(flt).view(), colors, 1570);
    EXPECT_EQ(store.add(FltVertex()), 1U);
    int const second = flt.vertex("VertexColor", 2, 0, 0);
    store.addPaletteVertex(LastRecord(flt).view(), colors, 1570);
    EXPECT_EQ(store.find(first), 0U);
    EXPECT_EQ(store.find(second), 2U);
    EXPECT_EQ(store.find(second + 1), FltVertexStore::none);
}
