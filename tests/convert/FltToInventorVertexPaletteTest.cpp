#include "convert/FltToInventor.h"

#include "records/FltRecordColorPalette.h"
#include "records/FltRecordVertex.h"
#include "support/ConvertedScene.h"
#include "support/DirectConversion.h"
#include "support/StreamCapture.h"

#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoSwitch.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <gtest/gtest.h>
#include <limits>

namespace
{

constexpr int color = 1;
constexpr int colorNormal = 2;
constexpr int colorUV = 3;
constexpr int colorNormalUV = 4;
constexpr int allForms[] = {color, colorNormal, colorUV, colorNormalUV};

/// Vertices that a property has room for at first.
constexpr int firstRoom = 100000;

/// Room of a property that grew once.
constexpr int secondRoom = 150100;

constexpr char const* formNames[] = {"", "VertexColor", "VertexColorNormal", "VertexColorUv",
                                     "VertexColorNormalUv"};
constexpr char const* nodeNames[] = {"", "vertexColorProperty", "vertexColorNormalProperty",
                                     "vertexColorUVProperty", "vertexColorNormalUVProperty"};

/// What a vertex record holds.
struct Vertex {
    double x = 0;
    double y = 0;
    double z = 0;
    float normal[3] = {};
    float texture[2] = {};
    unsigned flags = 0;
    int colorIndex = 0;
    std::uint32_t packedColor = 0; ///< Alpha, blue, green, red from the top byte on.
};

void fill(FltRecordVertexColor& record, Vertex const& vertex)
{
    record.flags = static_cast<std::uint16_t>(vertex.flags);
    record.Xcoordinate = vertex.x;
    record.Ycoordinate = vertex.y;
    record.Zcoordinate = vertex.z;
    record.vertexColorIndex = vertex.colorIndex;
    for (int i = 0; i < 4; ++i)
        record.packedColor[i] = static_cast<std::uint8_t>(vertex.packedColor >> (24 - 8 * i));
}

template <class Record>
void fillNormal(Record& record, Vertex const& vertex)
{
    for (int i = 0; i < 3; ++i)
        record.vertexNormal[i] = vertex.normal[i];
}

template <class Record>
void fillTexture(Record& record, Vertex const& vertex)
{
    for (int i = 0; i < 2; ++i)
        record.texture[i] = vertex.texture[i];
}

/// The vertex palette of a conversion whose handlers are called one by one.
class VertexPalette : public DirectConversion
{
public:
    void add(int form, Vertex const& vertex)
    {
        if (form == color) {
            FltRecordVertexColor record(40);
            fill(record, vertex);
            converter.visitVertexColor(&record);
        } else if (form == colorNormal) {
            FltRecordVertexColorNormal record(56);
            fill(record, vertex);
            fillNormal(record, vertex);
            converter.visitVertexColorNormal(&record);
        } else if (form == colorUV) {
            FltRecordVertexColorUv record(48);
            fill(record, vertex);
            fillTexture(record, vertex);
            converter.visitVertexColorUV(&record);
        } else {
            FltRecordVertexColorNormalUv record(64);
            fill(record, vertex);
            fillNormal(record, vertex);
            fillTexture(record, vertex);
            converter.visitVertexColorNormalUV(&record);
        }
    }

    /// Adds vertices with x from @p firstX on, up and counting.
    void addMany(int form, int count, int firstX = 0)
    {
        for (int i = 0; i < count; ++i) {
            auto const value = static_cast<float>(firstX + i);
            add(form, {value, 0, 0, {value, 0, 0}, {value, 0}, 0x2000});
        }
    }

    SoVertexProperty& property(int form) { return *converter.getVertexPropertyFromIntId(form); }

    std::uint32_t packed(int form, int index) { return property(form).orderedRGBA[index]; }

    float x(int form, int index) { return property(form).vertex[index][0]; }
};

bool hasNormal(int form)
{
    return form == colorNormal || form == colorNormalUV;
}
bool hasTexture(int form)
{
    return form == colorUV || form == colorNormalUV;
}

/// Whether all arrays in use of a form have this many values, and the others none.
void expectRoom(SoVertexProperty const& property, int form, int room, int colors)
{
    EXPECT_EQ(property.vertex.getNum(), room);
    EXPECT_EQ(property.normal.getNum(), hasNormal(form) ? room : 0);
    EXPECT_EQ(property.texCoord.getNum(), hasTexture(form) ? room : 0);
    EXPECT_EQ(property.orderedRGBA.getNum(), colors);
}

SoVertexProperty& propertyNamed(ConvertedScene const& scene, char const* name)
{
    return *static_cast<SoVertexProperty*>(scene.find(name));
}

// The four properties

TEST(FltToInventorVertexPaletteTest, VerticesOfAllFormsBecomeFourPropertiesThatNoTraversalMeets)
{
    FltWriter flt;
    flt.vertexPalette();
    flt.vertex("VertexColorNormalUv", 1, 2, 3, {{"vertexNormal", {0, 0, 1}}, {"texture", {0.25, 0.75}}});
    flt.vertex("VertexColorUv", 4, 5, 6, {{"texture", {0.5, -1}}});
    flt.vertex("VertexColor", 7, 8, 9);
    flt.vertex("VertexColorNormal", 10, 11, 12, {{"vertexNormal", {0, -1, 0.5}}});
    flt.vertex("VertexColor", 13.5, -14.25, 1e-3);
    ConvertedScene const scene(flt.push().pop());
    EXPECT_EQ(scene.text(), rootWith(R"(  DEF vertexPropertyPalette Switch {
    whichChild -1
    DEF vertexColorProperty VertexProperty {
      vertex [ 7 8 9,
          13.5 -14.25 0.001 ]
      orderedRGBA [  ]
    }
    DEF vertexColorNormalProperty VertexProperty {
      vertex 10 11 12
      normal 0 -1 0.5
      orderedRGBA [  ]
    }
    DEF vertexColorUVProperty VertexProperty {
      vertex 4 5 6
      texCoord 0.5 -1
      orderedRGBA [  ]
    }
    DEF vertexColorNormalUVProperty VertexProperty {
      vertex 1 2 3
      normal 0 0 1
      texCoord 0.25 0.75
      orderedRGBA [  ]
    }
  }
)"));
    EXPECT_EQ(scene.messages, "");
    EXPECT_EQ(static_cast<SoSwitch*>(scene.find("vertexPropertyPalette"))->whichChild.getValue(),
              SO_SWITCH_NONE);
}

TEST(FltToInventorVertexPaletteTest, OnlyPropertiesWithVerticesStandInThePalette)
{
    FltWriter flt;
    flt.vertexPalette();
    flt.vertex("VertexColorUv", 1, 2, 3, {{"texture", {0.5, 0.5}}});
    EXPECT_EQ(ConvertedScene(flt.push().pop()).text(), rootWith(R"(  DEF vertexPropertyPalette Switch {
    whichChild -1
    DEF vertexColorUVProperty VertexProperty {
      vertex 1 2 3
      texCoord 0.5 0.5
      orderedRGBA [  ]
    }
  }
)"));
}

TEST(FltToInventorVertexPaletteTest, AFileWithNoVertexStillRunsTheFirstPushAndGetsNoSwitch)
{
    EXPECT_EQ(ConvertedScene(FltWriter().push().pop()).text(), rootWith(""));
    VertexPalette palette;
    palette.converter.visitPushLevel();
    for (int const form : allForms)
        expectRoom(palette.property(form), form, 0, 0);
}

TEST(FltToInventorVertexPaletteTest, AFileWithNoPushNeverFinishesThePaletteAndTheArraysStayAtTheirRoom)
{
    FltWriter flt;
    flt.vertexPalette();
    flt.vertex("VertexColor", 1, 2, 3);
    EXPECT_EQ(ConvertedScene(flt).text(), rootWith(""));
    VertexPalette palette;
    palette.add(color, {1, 2, 3});
    for (int const form : allForms)
        expectRoom(palette.property(form), form, firstRoom, firstRoom);
}

TEST(FltToInventorVertexPaletteTest, ThePaletteIsFinishedByTheFirstPushAloneAndStandsBeforeTheFirstNode)
{
    FltWriter flt;
    flt.vertexPalette();
    flt.vertex("VertexColor", 1, 2, 3);
    flt.push().add("Group", {{"idASCII", "g"}}).push().push().pop().pop().pop();
    EXPECT_EQ(ConvertedScene(flt).text(), rootWith(R"(  DEF vertexPropertyPalette Switch {
    whichChild -1
    DEF vertexColorProperty VertexProperty {
      vertex 1 2 3
      orderedRGBA [  ]
    }
  }
  DEF g Separator {
  }
)"));
}

TEST(FltToInventorVertexPaletteTest, ThePropertiesBearTheNamesOfTheirForms)
{
    VertexPalette palette;
    for (int const form : allForms)
        EXPECT_EQ(palette.property(form).getName(), SbName(nodeNames[form]));
}

TEST(FltToInventorVertexPaletteTest, ThePropertiesOutliveTheConversionInTheScene)
{
    FltWriter flt;
    flt.vertexPalette();
    flt.vertex("VertexColorNormal", 1, 2, 3);
    ConvertedScene const scene(flt.push().pop());
    EXPECT_EQ(propertyNamed(scene, "vertexColorNormalProperty").getRefCount(), 1);
}

TEST(FltToInventorVertexPaletteTest, CoordinatesAreNarrowedToFloats)
{
    VertexPalette palette;
    palette.add(color, {0.1, 1e300, -123456789.0});
    EXPECT_EQ(palette.property(color).vertex[0],
              SbVec3f(0.1F, std::numeric_limits<float>::infinity(), -123456792.0F));
}

TEST(FltToInventorVertexPaletteTest, BeforeTheFirstPushTheFormsHoldWhatTheirRecordsDo)
{
    VertexPalette palette;
    for (int const form : allForms) {
        auto const f = static_cast<float>(form);
        palette.add(form, {1, 2, 3, {9, 9, 9}, {9, 9}, 0x2000});
        palette.add(form, {f, f + 1, f + 2, {f, 0, 1}, {f, 0.5F}, 0x2000});
        SoVertexProperty const& property = palette.property(form);
        EXPECT_EQ(property.vertex[1], SbVec3f(f, f + 1, f + 2));
        if (hasNormal(form)) {
            EXPECT_EQ(property.normal[1], SbVec3f(f, 0, 1));
        }
        if (hasTexture(form)) {
            EXPECT_EQ(property.texCoord[1], SbVec2f(f, 0.5F));
        }
        EXPECT_EQ(property.orderedRGBA[1], 0xffffffffU);
    }
}

// Offsets

TEST(FltToInventorVertexPaletteTest, TheFirstVertexHasOffset8AndTheNextItsLengthMoreWhateverTheForm)
{
    VertexPalette palette;
    palette.add(color, {});
    palette.add(colorNormal, {});
    palette.add(colorNormalUV, {});
    palette.add(colorUV, {});
    palette.add(color, {});
    palette.add(colorNormal, {});
    StreamCapture const out(std::cout);
    palette.converter.showOffsetToVertexEntryMap(0);
    EXPECT_EQ(out.str(), "offset: 8  index: 0  size: 40  SOVP: 1\n"
                         "offset: 48  index: 0  size: 56  SOVP: 2\n"
                         "offset: 104  index: 0  size: 64  SOVP: 4\n"
                         "offset: 168  index: 0  size: 48  SOVP: 3\n"
                         "offset: 216  index: 1  size: 40  SOVP: 1\n"
                         "offset: 256  index: 1  size: 56  SOVP: 2\n");
}

TEST(FltToInventorVertexPaletteTest, AVertexIsLookedUpByItsOffset)
{
    VertexPalette palette;
    palette.add(color, {});
    palette.add(colorUV, {});
    palette.add(colorUV, {});
    EXPECT_EQ(palette.converter.getIndexVertexFromOffset(96), 1);
    EXPECT_EQ(palette.converter.getSizeVertexFromOffset(96), 48);
    EXPECT_EQ(palette.converter.getSoVertexPropertyFromOffset(96), &palette.property(colorUV));
    EXPECT_EQ(palette.converter.getIndexVertexFromOffset(8), 0);
    EXPECT_EQ(palette.converter.getSizeVertexFromOffset(8), 40);
    EXPECT_EQ(palette.converter.getSoVertexPropertyFromOffset(8), &palette.property(color));
}

TEST(FltToInventorVertexPaletteTest, AnUnknownOffsetGivesZerosAndLeavesAnEntryThatIsShownWithId5)
{
    VertexPalette palette;
    palette.add(color, {});
    StreamCapture const out(std::cout);
    StreamCapture const err(std::cerr);
    EXPECT_EQ(palette.converter.getSizeVertexFromOffset(9), 0);
    EXPECT_EQ(palette.converter.getIndexVertexFromOffset(7), 0);
    EXPECT_EQ(palette.converter.getSoVertexPropertyFromOffset(4294967296UL), nullptr);
    EXPECT_EQ(err.str(), "");
    palette.converter.showOffsetToVertexEntryMap(-1);
    EXPECT_EQ(out.str(), "offset: 7  index: 0  size: 0  SOVP: 5\n"
                         "offset: 8  index: 0  size: 40  SOVP: 1\n"
                         "offset: 9  index: 0  size: 0  SOVP: 5\n"
                         "offset: 4294967296  index: 0  size: 0  SOVP: 5\n");
    std::string const warning = "WARNING ! This SoVertexProperty hasn t any id,  "
                                "UNDEFINED_SO_VERTEX_PROPERTY_ID will be returned\n(Warning Level: 3)\n\n";
    EXPECT_EQ(err.str(), warning + warning + warning);
}

TEST(FltToInventorVertexPaletteTest, AVertexTakesTheEntryThatALookUpLeftAtItsOffset)
{
    VertexPalette palette;
    EXPECT_EQ(palette.converter.getSizeVertexFromOffset(8), 0);
    palette.add(colorNormal, {});
    EXPECT_EQ(palette.converter.getSizeVertexFromOffset(8), 56);
    EXPECT_EQ(palette.converter.getSoVertexPropertyFromOffset(8), &palette.property(colorNormal));
}

TEST(FltToInventorVertexPaletteTest, TheMapIsShownUpToALimit)
{
    VertexPalette palette;
    palette.addMany(color, 3);
    auto const shown = [&](int limit) {
        StreamCapture const out(std::cout);
        palette.converter.showOffsetToVertexEntryMap(limit);
        return out.str();
    };
    std::string const one = "offset: 8  index: 0  size: 40  SOVP: 1\n";
    std::string const two = one + "offset: 48  index: 1  size: 40  SOVP: 1\n";
    std::string const three = two + "offset: 88  index: 2  size: 40  SOVP: 1\n";
    EXPECT_EQ(shown(1), one);
    EXPECT_EQ(shown(2), two);
    EXPECT_EQ(shown(3), three);
    EXPECT_EQ(shown(4), three);
    EXPECT_EQ(shown(0), three);
    EXPECT_EQ(shown(-7), three);
}

TEST(FltToInventorVertexPaletteTest, OffsetsGoByTheLengthsOfTheRecordsAndOtherRecordsDoNotCount)
{
    // The faces find their vertices by offsets that leave the records between out.
    FltWriter flt;
    flt.vertexPalette();
    double const a = flt.vertex("VertexColor", 1, 0, 0);
    flt.resizeLast(100);
    flt.addRaw(115, std::string(60, 'x')).add("Material");
    flt.vertex("VertexColor", 2, 0, 0);
    flt.push().add("Object", {{"idASCII", "o"}}).push();
    ConvertedScene const scene(flt.face({a, a + 100, a + 100}).pop().pop());
    EXPECT_NE(scene.text().find("coordIndex [ 0, 1, 1, -1 ]"), std::string::npos) << scene.text();
}

// Ids

TEST(FltToInventorVertexPaletteTest, EachPropertyHasAnIdAndEachIdAProperty)
{
    VertexPalette palette;
    StreamCapture const err(std::cerr);
    for (int const form : allForms)
        EXPECT_EQ(palette.converter.getIntIdFromVertexProperty(&palette.property(form)), form);
    EXPECT_EQ(err.str(), "");
}

TEST(FltToInventorVertexPaletteTest, AnotherIdGivesTheFirstPropertyAndAMessage)
{
    VertexPalette palette;
    for (int const id : {0, 5, -1, 6, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        StreamCapture const err(std::cerr);
        EXPECT_EQ(palette.converter.getVertexPropertyFromIntId(id), &palette.property(color));
        EXPECT_EQ(err.str(), "WARNING: no vertex property associated with this id, vertexColorProperty will "
                             "be returned\n(Warning Level: 3)\n\n");
    }
}

TEST(FltToInventorVertexPaletteTest, AnotherPropertyGivesTheId5AndAMessage)
{
    VertexPalette palette;
    auto* const other = new SoVertexProperty;
    other->ref();
    for (SoVertexProperty const* property :
         {static_cast<SoVertexProperty const*>(other), static_cast<SoVertexProperty const*>(nullptr)}) {
        StreamCapture const err(std::cerr);
        EXPECT_EQ(palette.converter.getIntIdFromVertexProperty(property), 5);
        EXPECT_EQ(err.str(), "WARNING ! This SoVertexProperty hasn t any id,  "
                             "UNDEFINED_SO_VERTEX_PROPERTY_ID will be returned\n(Warning Level: 3)\n\n");
    }
    other->unref();
}

// Packed colours

/// The palette's colours, in the toolkit's order. The last word that a vertex can name is clear but for its
/// alpha.
void loadColors(FltToInventor& converter)
{
    FltRecordColorPalette record(4228);
    record.color[0] = 0x40332211; // alpha, blue, green, red
    record.color[1] = 0xff0080ff;
    record.color[2] = 0x00c86432;
    record.color[1024] = 0x80000000;
    converter.visitColorPalette(&record);
}

/// The packed colour that a vertex of a form gets.
std::uint32_t packedColor(int form, Vertex const& vertex)
{
    VertexPalette palette;
    loadColors(palette.converter);
    palette.add(form, vertex);
    return palette.packed(form, 0);
}

std::uint32_t indexedColor(int form, int index)
{
    Vertex vertex;
    vertex.colorIndex = index;
    return packedColor(form, vertex);
}

/// The palette's colour at a position, in one of 128 intensities.
constexpr int indexOf(int entry, int intensity)
{
    return entry << 14 | intensity << 7;
}

TEST(FltToInventorVertexPaletteTest, AVertexWithoutColorIsWhiteWhateverElseItSays)
{
    for (int const form : allForms)
        for (unsigned const flags : {0x2000U, 0x3000U, 0xffffU})
            EXPECT_EQ(packedColor(form, {0, 0, 0, {}, {}, flags, indexOf(1, 127), 0x80112233}), 0xffffffffU);
}

TEST(FltToInventorVertexPaletteTest, APackedColorIsTakenOverWithItsAlphaAsATransparency)
{
    for (int const form : allForms) {
        EXPECT_EQ(packedColor(form, {0, 0, 0, {}, {}, 0x1000, indexOf(1, 127), 0xff332211}), 0x11223300U);
        EXPECT_EQ(packedColor(form, {0, 0, 0, {}, {}, 0xd000, -1, 0x00332211}), 0x112233ffU);
    }
}

TEST(FltToInventorVertexPaletteTest, EveryByteOfAPackedColorComesOverExactly)
{
    VertexPalette palette;
    for (unsigned byte = 0; byte < 256; ++byte) {
        unsigned const other = 255 - byte;
        palette.add(color, {0, 0, 0, {}, {}, 0x1000, 0, byte << 24 | other << 16 | byte << 8 | other});
        EXPECT_EQ(palette.packed(color, static_cast<int>(byte)),
                  other << 24 | byte << 16 | other << 8 | other);
    }
}

TEST(FltToInventorVertexPaletteTest, TheOtherFlagsDoNotChangeWhereTheColorComesFrom)
{
    for (int const form : allForms)
        EXPECT_EQ(packedColor(form, {0, 0, 0, {}, {}, 0xcfff, indexOf(1, 127), 0x80112233}) >> 8, 0xff8000U);
}

TEST(FltToInventorVertexPaletteTest, AnIndexNamesAColorAndItsIntensity)
{
    for (int const form : allForms) {
        EXPECT_EQ(indexedColor(form, indexOf(0, 127)) >> 8, 0x112233U);
        EXPECT_EQ(indexedColor(form, indexOf(1, 127)) >> 8, 0xff8000U);
        EXPECT_EQ(indexedColor(form, indexOf(2, 127)) >> 8, 0x3264c8U);
        EXPECT_EQ(indexedColor(form, indexOf(2, 64)) >> 8, 0x193265U); // 25.2, 50.4, 100.8
        EXPECT_EQ(indexedColor(form, indexOf(2, 1)) >> 8, 0x000102U);  // 0.4, 0.8, 1.6
        EXPECT_EQ(indexedColor(form, indexOf(2, 0)) >> 8, 0x000000U);
        EXPECT_EQ(indexedColor(form, indexOf(3, 127)) >> 8, 0x000000U); // a colour that no palette set
    }
}

TEST(FltToInventorVertexPaletteTest, TheLowSevenBitsOfAnIndexDoNotCount)
{
    for (int const form : allForms) {
        EXPECT_EQ(indexedColor(form, indexOf(2, 64) + 127), indexedColor(form, indexOf(2, 64)));
        EXPECT_NE(indexedColor(form, indexOf(2, 64) + 128), indexedColor(form, indexOf(2, 64)));
    }
}

TEST(FltToInventorVertexPaletteTest, OnlyTheFormWithColorAloneTakesTheAlphaOfThePalette)
{
    EXPECT_EQ(indexedColor(color, indexOf(0, 127)), 0x11223340U);
    EXPECT_EQ(indexedColor(colorNormal, indexOf(0, 127)), 0x112233ffU);
    EXPECT_EQ(indexedColor(colorUV, indexOf(0, 127)), 0x112233ffU);
    EXPECT_EQ(indexedColor(colorNormalUV, indexOf(0, 127)), 0x11223300U);
}

TEST(FltToInventorVertexPaletteTest, AnIndexFromMinus1ToMinus127IsBlackButWhiteInTheFormWithNormalAndUV)
{
    for (int const index : {-1, -64, -127}) {
        EXPECT_EQ(indexedColor(color, index), 0x00000040U); // with the alpha of the first colour
        EXPECT_EQ(indexedColor(colorNormal, index), 0x000000ffU);
        EXPECT_EQ(indexedColor(colorUV, index), 0x000000ffU);
        EXPECT_EQ(indexedColor(colorNormalUV, index), 0xffffffffU);
    }
}

TEST(FltToInventorVertexPaletteTest, AnIndexOfMinus128OrLessIsWhiteInAllForms)
{
    for (int const form : allForms)
        for (int const index : {-128, -129, -16384, std::numeric_limits<int>::min()})
            EXPECT_EQ(indexedColor(form, index), 0xffffffffU);
}

TEST(FltToInventorVertexPaletteTest, TheLastIndexThatIsAcceptedReadsColor1024AndOneMoreIsWhite)
{
    int const last = 131072 * 128 + 127;
    EXPECT_EQ(indexedColor(color, last), 0x00000080U);
    EXPECT_EQ(indexedColor(colorNormal, last), 0x000000ffU);
    EXPECT_EQ(indexedColor(colorUV, last), 0x000000ffU);
    EXPECT_EQ(indexedColor(colorNormalUV, last), 0x00000000U);
    for (int const form : allForms) {
        EXPECT_EQ(indexedColor(form, last + 1), 0xffffffffU);
        EXPECT_EQ(indexedColor(form, std::numeric_limits<int>::max()), 0xffffffffU);
    }
}

TEST(FltToInventorVertexPaletteTest, TheColorsDoNotOutliveTheFirstPush)
{
    VertexPalette palette;
    for (int const form : allForms)
        palette.addMany(form, form);
    palette.converter.visitPushLevel();
    for (int const form : allForms)
        expectRoom(palette.property(form), form, form, 0);
}

// Growth

TEST(FltToInventorVertexPaletteTest, AFullFormGrowsByHalfAnd100)
{
    for (int const form : allForms) {
        VertexPalette palette;
        palette.addMany(form, firstRoom);
        expectRoom(palette.property(form), form, firstRoom, firstRoom);
        palette.addMany(form, 1);
        expectRoom(palette.property(form), form, secondRoom, secondRoom);
        EXPECT_EQ(palette.x(form, 99999), 99999.0F);
        EXPECT_EQ(palette.packed(form, 100000), 0xffffffffU);
        palette.addMany(form, secondRoom - firstRoom);
        expectRoom(palette.property(form), form, 225250, 225250);
        palette.converter.visitPushLevel();
        expectRoom(palette.property(form), form, secondRoom + 1, 0);
    }
}

TEST(FltToInventorVertexPaletteTest, TheFormsWithUVGoOnInTheirOwnArrays)
{
    for (int const form : {colorUV, colorNormalUV}) {
        VertexPalette palette;
        palette.addMany(form, 100003);
        palette.converter.visitPushLevel();
        SoVertexProperty const& property = palette.property(form);
        EXPECT_EQ(property.vertex.getNum(), 100003);
        for (int const i : {0, 99999, 100000, 100002}) {
            auto const value = static_cast<float>(i);
            EXPECT_EQ(property.vertex[i], SbVec3f(value, 0, 0));
            EXPECT_EQ(property.texCoord[i], SbVec2f(value, 0));
            if (form == colorNormalUV) {
                EXPECT_EQ(property.normal[i], SbVec3f(value, 0, 0));
            }
        }
    }
}

/// A form that goes on in the vertices of another one when it is full.
struct Crossing {
    int from;
    int to;
};
constexpr Crossing crossings[] = {{color, colorUV}, {colorNormal, colorNormalUV}};

TEST(FltToInventorVertexPaletteTest, CoordinatesPastTheFirstRoomAreLostWhereTheOtherFormHasNoRoomForThem)
{
    for (auto const [from, to] : crossings) {
        VertexPalette palette;
        palette.addMany(to, 3, 7);
        palette.addMany(from, 100002);
        EXPECT_EQ(palette.property(to).vertex.getNum(), firstRoom);
        palette.converter.visitPushLevel();
        expectRoom(palette.property(from), from, 100002, 0);
        EXPECT_EQ(palette.property(from).vertex[99999], SbVec3f(99999, 0, 0));
        EXPECT_EQ(palette.property(from).vertex[100000], SbVec3f(0, 0, 0));
        EXPECT_EQ(palette.property(from).vertex[100001], SbVec3f(0, 0, 0));
        expectRoom(palette.property(to), to, 3, 0);
        for (int i = 0; i < 3; ++i)
            EXPECT_EQ(palette.x(to, i), static_cast<float>(7 + i));
    }
}

TEST(FltToInventorVertexPaletteTest, CoordinatesPastTheFirstRoomGoToTheOtherFormWhereItHasRoom)
{
    for (auto const [from, to] : crossings) {
        VertexPalette palette;
        palette.addMany(to, 100001, 200000);
        palette.addMany(from, 100002);
        EXPECT_EQ(palette.x(to, 99999), 299999.0F);
        EXPECT_EQ(palette.x(to, 100000), 100000.0F); // instead of 300000
        EXPECT_EQ(palette.x(to, 100001), 100001.0F);
        palette.converter.visitPushLevel();
        expectRoom(palette.property(to), to, 100001, 0);
        EXPECT_EQ(palette.x(to, 100000), 100000.0F);
        EXPECT_EQ(palette.property(to).texCoord[100000], SbVec2f(300000, 0));
        EXPECT_EQ(palette.x(from, 99999), 99999.0F);
        EXPECT_EQ(palette.property(from).vertex[100000], SbVec3f(0, 0, 0));
        EXPECT_EQ(palette.property(from).vertex[100001], SbVec3f(0, 0, 0));
    }
}

TEST(FltToInventorVertexPaletteTest, NormalsAndColorsStayInTheirFormPastTheFirstRoom)
{
    VertexPalette palette;
    palette.addMany(colorNormal, 100001);
    EXPECT_EQ(palette.packed(colorNormal, 100000), 0xffffffffU);
    EXPECT_EQ(palette.property(colorNormal).normal[100000], SbVec3f(100000, 0, 0));
    palette.addMany(color, 100001);
    EXPECT_EQ(palette.packed(color, 100000), 0xffffffffU);
}

TEST(FltToInventorVertexPaletteTest, TheEntriesThatAFormAddsAndDoesNotWriteReadAsZero)
{
    for (int const form : allForms) {
        VertexPalette palette;
        palette.addMany(form, 100001);
        SoVertexProperty const& property = palette.property(form);
        bool zero = true;
        for (int i = 100001; i < secondRoom; ++i) {
            zero = zero && property.vertex[i] == SbVec3f(0, 0, 0) && property.orderedRGBA[i] == 0;
            zero = zero && (!hasNormal(form) || property.normal[i] == SbVec3f(0, 0, 0));
            zero = zero && (!hasTexture(form) || property.texCoord[i] == SbVec2f(0, 0));
        }
        EXPECT_TRUE(zero) << formNames[form];
    }
}

TEST(FltToInventorVertexPaletteTest, AFormThatGrowsLaterTakesCoordinatesOfTheOtherFromThenOn)
{
    for (auto const [from, to] : crossings) {
        VertexPalette palette;
        palette.addMany(from, 100002); // the last two are lost
        palette.addMany(to, 100001, 200000);
        palette.addMany(from, 2, 500000);
        EXPECT_EQ(palette.x(to, 100000), 300000.0F);
        EXPECT_EQ(palette.property(to).vertex[100001], SbVec3f(0, 0, 0));
        EXPECT_EQ(palette.x(to, 100002), 500000.0F);
        EXPECT_EQ(palette.x(to, 100003), 500001.0F);
        palette.addMany(to, 2, 600000);
        EXPECT_EQ(palette.x(to, 100001), 600000.0F);
        EXPECT_EQ(palette.x(to, 100002), 600001.0F);
        EXPECT_EQ(palette.x(to, 100003), 500001.0F);
        palette.converter.visitPushLevel();
        expectRoom(palette.property(to), to, 100003, 0);
    }
}

TEST(FltToInventorVertexPaletteTest, AFileOf100001VerticesOfAFormIsConvertedWhole)
{
    for (int const form : allForms) {
        FltWriter flt;
        flt.vertexPalette();
        int last = 0;
        for (int i = 0; i <= firstRoom; ++i)
            last = flt.vertex(formNames[form], i, 0, 0);
        flt.push().add("Object", {{"idASCII", "o"}}).push();
        ConvertedScene const scene(flt.face({8, 8, double(last)}).pop().pop());
        SoVertexProperty const& property = propertyNamed(scene, nodeNames[form]);
        EXPECT_EQ(scene.messages, "");
        expectRoom(property, form, firstRoom + 1, 0);
        EXPECT_EQ(property.vertex[99999], SbVec3f(99999, 0, 0));
        EXPECT_EQ(property.vertex[100000], SbVec3f(hasTexture(form) ? 100000 : 0, 0, 0));
        EXPECT_NE(scene.text().find("coordIndex [ 0, 0, 100000, -1 ]"), std::string::npos);
    }
}

TEST(FltToInventorVertexPaletteTest, AFileOf100001VerticesOfTwoFormsCrossesOver)
{
    for (auto const [from, to] : crossings) {
        FltWriter flt;
        flt.vertexPalette();
        for (int i = 0; i <= firstRoom; ++i)
            flt.vertex(formNames[to], i, 0, 0);
        for (int i = 0; i <= firstRoom; ++i)
            flt.vertex(formNames[from], 0, i, 0);
        ConvertedScene const scene(flt.push().pop());
        EXPECT_EQ(propertyNamed(scene, nodeNames[to]).vertex[99999], SbVec3f(99999, 0, 0));
        EXPECT_EQ(propertyNamed(scene, nodeNames[to]).vertex[100000], SbVec3f(0, 100000, 0));
        EXPECT_EQ(propertyNamed(scene, nodeNames[from]).vertex[99999], SbVec3f(0, 99999, 0));
        EXPECT_EQ(propertyNamed(scene, nodeNames[from]).vertex[100000], SbVec3f(0, 0, 0));
    }
}

// Vertices behind the first Push

TEST(FltToInventorVertexPaletteTest, AVertexBehindTheFirstPushGrowsItsFormAndAllValuesAreDefined)
{
    for (int const form : allForms) {
        VertexPalette palette;
        palette.addMany(form, 2, 5);
        palette.converter.visitPushLevel();
        palette.addMany(form, 1, 9);
        SoVertexProperty const& property = palette.property(form);
        expectRoom(property, form, 103, 103);
        EXPECT_EQ(property.vertex[1], SbVec3f(6, 0, 0));
        // The other form's array has no room, so the coordinates of the forms without UV are lost.
        EXPECT_EQ(property.vertex[2], SbVec3f(hasTexture(form) ? 9 : 0, 0, 0));
        for (int i = 0; i < 103; ++i)
            EXPECT_EQ(property.orderedRGBA[i], i == 2 ? 0xffffffffU : 0U);
    }
}

TEST(FltToInventorVertexPaletteTest, AVertexBehindTheFirstPushKeepsItsPlaceInTheOffsets)
{
    VertexPalette palette;
    palette.add(color, {});
    palette.converter.visitPushLevel();
    palette.add(colorUV, {});
    palette.add(color, {});
    EXPECT_EQ(palette.converter.getIndexVertexFromOffset(48), 0);
    EXPECT_EQ(palette.converter.getSoVertexPropertyFromOffset(48), &palette.property(colorUV));
    EXPECT_EQ(palette.converter.getIndexVertexFromOffset(96), 1);
}

// Copies

/// Copies a vertex into the form with normal and UV. @return its place there
int copied(VertexPalette& palette, int sourceId, int sourceIndex, SbVec3f const& normal = {0, 0, 1})
{
    int index = -1;
    palette.converter.copyVertexToVertexColorNormalUV(sourceId, sourceIndex, normal, index);
    return index;
}

TEST(FltToInventorVertexPaletteTest, ACopyTakesPlaceAndUVOfItsSourceAndTheNormalGiven)
{
    for (bool const isFinished : {false, true}) {
        VertexPalette palette;
        for (int const form : allForms) {
            auto const f = static_cast<float>(form);
            palette.add(form, {100, 0, 0, {1, 1, 1}, {1, 1}});
            palette.add(form, {f, f + 1, f + 2, {1, 1, 1}, {f, 0.5F}});
        }
        if (isFinished)
            palette.converter.visitPushLevel();
        SoVertexProperty const& target = palette.property(colorNormalUV);
        for (int const form : allForms) {
            auto const f = static_cast<float>(form);
            int const index = copied(palette, form, 1, {0, f, 0});
            EXPECT_EQ(index, 1 + form);
            EXPECT_EQ(target.vertex[index], SbVec3f(f, f + 1, f + 2));
            EXPECT_EQ(target.normal[index], SbVec3f(0, f, 0));
            EXPECT_EQ(target.texCoord[index], hasTexture(form) ? SbVec2f(f, 0.5F) : SbVec2f(0, 0));
            EXPECT_EQ(target.orderedRGBA.getNum(), 0);
        }
        // What was there stays.
        EXPECT_EQ(target.vertex[0], SbVec3f(100, 0, 0));
        EXPECT_EQ(target.normal[1], SbVec3f(1, 1, 1));
        EXPECT_EQ(target.texCoord[1], SbVec2f(4, 0.5F));
    }
}

TEST(FltToInventorVertexPaletteTest, BeforeTheFirstPushACopyGrowsNothingWhileThereIsRoom)
{
    VertexPalette palette;
    palette.add(color, {1, 2, 3});
    copied(palette, color, 0);
    expectRoom(palette.property(colorNormalUV), colorNormalUV, firstRoom, 0);
}

TEST(FltToInventorVertexPaletteTest, ACopyIntoAFullFormGrowsItByExactlyOne)
{
    VertexPalette palette;
    palette.addMany(colorNormalUV, firstRoom);
    EXPECT_EQ(copied(palette, colorNormalUV, 99999), 100000);
    expectRoom(palette.property(colorNormalUV), colorNormalUV, 100001, 0);
    EXPECT_EQ(palette.x(colorNormalUV, 100000), 99999.0F);
    EXPECT_EQ(copied(palette, colorNormalUV, 7), 100001);
    expectRoom(palette.property(colorNormalUV), colorNormalUV, 100002, 0);
}

TEST(FltToInventorVertexPaletteTest, AfterTheFirstPushEveryCopyGrowsByOneAndFindsNoColor)
{
    VertexPalette palette;
    palette.add(color, {1, 2, 3});
    palette.converter.visitPushLevel();
    for (int i = 0; i < 300; ++i) {
        EXPECT_EQ(copied(palette, color, 0), i);
        expectRoom(palette.property(colorNormalUV), colorNormalUV, i + 1, 0);
        expectRoom(palette.property(color), color, 1, 0);
    }
}

TEST(FltToInventorVertexPaletteTest, ACopyWithoutAColorBlackensTheNextPlaceOfTheFormWithColorAlone)
{
    VertexPalette palette;
    palette.add(color, {1, 2, 3, {}, {}, 0x2000});
    palette.add(color, {4, 5, 6, {}, {}, 0x2000});
    palette.add(colorNormalUV, {7, 8, 9, {}, {}, 0x2000});
    copied(palette, color, 0); // has a colour, and clears those of its target
    EXPECT_NE(palette.packed(color, 2), 0x000000ffU);
    copied(palette, colorNormalUV, 0); // has none any more
    EXPECT_EQ(palette.packed(color, 2), 0x000000ffU);
    EXPECT_EQ(palette.packed(color, 1), 0xffffffffU);
    palette.add(color, {0, 0, 0, {}, {}, 0x2000}); // stands there all the same
    EXPECT_EQ(palette.packed(color, 2), 0xffffffffU);
}

TEST(FltToInventorVertexPaletteTest, AVertexBehindACopyBeforeTheFirstPushIsKept)
{
    VertexPalette palette;
    palette.add(color, {1, 2, 3});
    EXPECT_EQ(copied(palette, color, 0), 0);
    palette.add(colorNormalUV, {4, 5, 6, {0, 1, 0}, {0.5F, 0.25F}});
    EXPECT_EQ(palette.converter.getIndexVertexFromOffset(48), 1);
    palette.converter.visitPushLevel();
    expectRoom(palette.property(colorNormalUV), colorNormalUV, 2, 0);
    EXPECT_EQ(palette.property(colorNormalUV).vertex[0], SbVec3f(1, 2, 3));
    EXPECT_EQ(palette.property(colorNormalUV).vertex[1], SbVec3f(4, 5, 6));
    EXPECT_EQ(palette.property(colorNormalUV).normal[1], SbVec3f(0, 1, 0));
    EXPECT_EQ(palette.property(colorNormalUV).texCoord[1], SbVec2f(0.5F, 0.25F));
}

TEST(FltToInventorVertexPaletteTest, ACopyOfAnUnknownFormTakesTheFirstAndTellsIt)
{
    VertexPalette palette;
    palette.add(color, {1, 2, 3});
    palette.converter.visitPushLevel();
    StreamCapture const err(std::cerr);
    EXPECT_EQ(copied(palette, 5, 0), 0);
    EXPECT_EQ(palette.property(colorNormalUV).vertex[0], SbVec3f(1, 2, 3));
    EXPECT_EQ(err.str(), "WARNING: no vertex property associated with this id, vertexColorProperty will be "
                         "returned\n(Warning Level: 3)\n\n");
}

TEST(FltToInventorVertexPaletteTest, ACopyOfAVertexThatIsNotThereStandsAtTheOrigin)
{
    for (int const index : {1, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        VertexPalette palette;
        palette.add(colorUV, {1, 2, 3, {}, {0.5F, 0.5F}});
        palette.converter.visitPushLevel();
        EXPECT_EQ(copied(palette, colorUV, index, {0, 1, 0}), 0);
        EXPECT_EQ(palette.property(colorNormalUV).vertex[0], SbVec3f(0, 0, 0));
        EXPECT_EQ(palette.property(colorNormalUV).texCoord[0], SbVec2f(0, 0));
        EXPECT_EQ(palette.property(colorNormalUV).normal[0], SbVec3f(0, 1, 0));
    }
}

TEST(FltToInventorVertexPaletteTest, FormsMixedInOneFaceAreCopiedBehindTheVerticesOfTheFileAndToldToTheScene)
{
    FltWriter flt;
    flt.vertexPalette();
    double const a =
        flt.vertex("VertexColorNormalUv", 0, 0, 0, {{"vertexNormal", {0, 0, 1}}, {"texture", {0.25, 0.75}}});
    double const b = flt.vertex("VertexColorUv", 1, 0, 0, {{"texture", {0.5, 0.125}}});
    double const c = flt.vertex("VertexColorUv", 0, 1, 0, {{"texture", {1, 0}}});
    flt.push().add("Object", {{"idASCII", "o"}}).push();
    ConvertedScene const scene(flt.face({a, b, c}).pop().pop());
    std::string const text = scene.text();
    EXPECT_NE(text.find(R"(    DEF vertexColorNormalUVProperty VertexProperty {
      vertex [ 0 0 0,
          1 0 0,
          0 1 0 ]
      normal [ 0 0 1,
          0 0 1,
          0 0 1 ]
      texCoord [ 0.25 0.75,
          0.5 0.125,
          1 0 ]
      orderedRGBA [  ]
    }
)"),
              std::string::npos)
        << text;
    EXPECT_NE(text.find("coordIndex [ 0, 1, 2, -1 ]"), std::string::npos) << text;
}

} // namespace
