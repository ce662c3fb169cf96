#include "convert/FltObjectToSoSeparator.h"

#include "records/FltRecordColorPalette.h"
#include "records/FltRecordFace.h"
#include "records/FltRecordMaterial.h"
#include "support/ObjectDatabase.h"
#include "support/StreamCapture.h"
#include "support/Text.h"

#include <Inventor/nodes/SoMaterial.h>
#include <gtest/gtest.h>

namespace
{

constexpr std::uint32_t noColor = 0x40000000;
constexpr std::uint32_t packedColor = 0x10000000;

/// What a slot of a material holds.
struct Slot {
    SbColor ambient;
    SbColor diffuse;
    SbColor specular;
    SbColor emissive;
    float shininess;
    float transparency;
};

SbColor const black(0, 0, 0);
SbColor const white(1, 1, 1);

// What the palettes of these tests hold.
SbColor const color1(1, 0.2F, 0);
SbColor const color127(0, 1, 0.2F);
SbColor const color4096(0.2F, 1, 1);
SbColor const color4100(0.2F, 0, 1);
SbColor const color4151(0.4F, 0.4F, 0);
SbColor const materialAmbient(0.5F, 0.25F, 1);
SbColor const materialDiffuse(1, 0.5F, 0.25F);
SbColor const materialSpecular(0.125F, 0.25F, 0.5F);
SbColor const materialEmissive(0.0625F, 0, 0.5F);
constexpr float materialShininess = 0.5F;
constexpr float materialTransparency = 0.75F;
constexpr int materialPosition = 2;

SbColor times(SbColor const& a, SbColor const& b)
{
    return {a[0] * b[0], a[1] * b[1], a[2] * b[2]};
}

SbColor times(SbColor const& color, float factor)
{
    return {color[0] * factor, color[1] * factor, color[2] * factor};
}

Slot const noColorNoMaterial{SbColor(0.2F, 0.2F, 0.2F), SbColor(0.8F, 0.8F, 0.8F), black, black, 0.2F, 0};

Slot colored(SbColor const& color, float transparency = 0)
{
    return {color, color, black, black, 0, transparency};
}

Slot material(SbColor const& color, float transparency = materialTransparency)
{
    return {times(materialAmbient, color),
            times(materialDiffuse, color),
            materialSpecular,
            materialEmissive,
            materialShininess,
            transparency};
}

void expectColor(SbColor const& actual, SbColor const& expected, char const* field)
{
    for (int i = 0; i < 3; ++i)
        EXPECT_FLOAT_EQ(actual[i], expected[i]) << field << " channel " << i;
}

void expectSlot(SoMaterial const& node, int index, Slot const& expected)
{
    ASSERT_GT(node.ambientColor.getNum(), index);
    ASSERT_GT(node.diffuseColor.getNum(), index);
    ASSERT_GT(node.specularColor.getNum(), index);
    ASSERT_GT(node.emissiveColor.getNum(), index);
    ASSERT_GT(node.shininess.getNum(), index);
    ASSERT_GT(node.transparency.getNum(), index);
    expectColor(node.ambientColor[index], expected.ambient, "ambient");
    expectColor(node.diffuseColor[index], expected.diffuse, "diffuse");
    expectColor(node.specularColor[index], expected.specular, "specular");
    expectColor(node.emissiveColor[index], expected.emissive, "emissive");
    EXPECT_EQ(node.shininess[index], expected.shininess);
    EXPECT_EQ(node.transparency[index], expected.transparency);
}

/// The fields of a face that decide on its appearance.
struct Face {
    std::uint32_t flags = 0;
    int materialIndex = -1;
    int primaryColorIndex = 0;
    int colorNameIndex = 0;
    int transparency = 0;
    int textureWhite = 0;
    int texturePatternIndex = -1;
    std::vector<int> alphaBlueGreenRed = {0, 0, 0, 0};
};

class FltObjectToSoSeparatorAppearanceTest : public testing::Test
{
protected:
    FltObjectToSoSeparatorAppearanceTest()
    {
        FltRecordColorPalette colors(4232);
        colors.color[1] = 0xff0033ff; // alpha, blue, green, red
        colors.color[127] = 0x0033ff00;
        colors.color[4096] = 0x00ffff33;
        colors.color[4100] = 0x80ff0033;
        colors.color[4151] = 0x00006666;
        converter.visitColorPalette(&colors);
        FltRecordMaterial entry(84);
        entry.index = materialPosition;
        for (int i = 0; i < 3; ++i) {
            entry.ambient[i] = materialAmbient[i];
            entry.diffuse[i] = materialDiffuse[i];
            entry.specular[i] = materialSpecular[i];
            entry.emissive[i] = materialEmissive[i];
        }
        entry.shininess = 64;
        entry.alpha = 0.25F;
        converter.visitMaterial(&entry);
        object.setFltToInventor(&converter);
        object.revision = 1570;
        node->ref();
    }
    ~FltObjectToSoSeparatorAppearanceTest() override { node->unref(); }

    static void fill(FltRecordFace& record, Face const& face)
    {
        record.flags = face.flags;
        record.materialIndex = static_cast<std::int16_t>(face.materialIndex);
        record.primaryColorIndex = face.primaryColorIndex;
        record.colorNameIndex = static_cast<std::uint16_t>(face.colorNameIndex);
        record.transparency = static_cast<std::uint16_t>(face.transparency);
        record.textureWhite = static_cast<std::int8_t>(face.textureWhite);
        record.texturePatternIndex = static_cast<std::int16_t>(face.texturePatternIndex);
        for (std::size_t i = 0; i < 4; ++i)
            record.packedColor[i] = static_cast<std::uint8_t>(face.alphaBlueGreenRed[i]);
    }

    /// Puts a face into a slot, and gives back what went to std::cout.
    std::string add(Face const& face, int index = 0)
    {
        FltRecordFace record(80);
        fill(record, face);
        StreamCapture const out(std::cout);
        object.addFltFaceMaterialToSoMaterial(&record, node, index);
        return out.str();
    }

    void expectAppearance(Face const& face, Slot const& expected)
    {
        EXPECT_EQ(add(face), "");
        expectSlot(*node, 0, expected);
    }

    void setObjectTransparency(float transparency) { object.setCurrentFltObjectTransparency(transparency); }

    FltToInventor converter;
    FltObjectToSoSeparator object;
    SoMaterial* node = new SoMaterial;
};

// --- The dispatcher

/// Faces whose appearance is the same in every revision and both colour modes.
TEST_F(FltObjectToSoSeparatorAppearanceTest, RowsWithoutPaletteMaterialModulationAreTheSameInEveryRevision)
{
    std::vector<int> const bytes{10, 0, 128, 255};
    SbColor const packed(1, 128 / 255.0F, 0);
    struct Row {
        char const* what;
        Face face;
        Slot expected;
    };
    auto const faceOf = [&bytes](std::uint32_t flags, int materialIndex) {
        Face face;
        face.flags = flags;
        face.materialIndex = materialIndex;
        face.primaryColorIndex = 1 << 7 | 64;
        face.colorNameIndex = 127 << 7;
        face.transparency = 32768;
        face.alphaBlueGreenRed = bytes;
        return face;
    };
    float const fadedMaterial = (32768.0F * 0.5F / -65535.0F + 1.0F) * materialTransparency;
    Row const rows[] = {
        {"no colour, no material", faceOf(noColor, -1), noColorNoMaterial},
        {"both flags, no material", faceOf(noColor | packedColor, -1), noColorNoMaterial},
        {"packed colour, no material", faceOf(packedColor, -1), colored(packed)},
        {"colour index, no material", faceOf(0, -1),
         colored(times(color1, 64 / 127.0F), (32768.0F / 65535.0F) * (1.0F - 0.5F))},
        {"other flags, no material", faceOf(~(noColor | packedColor), -1),
         colored(times(color1, 64 / 127.0F), (32768.0F / 65535.0F) * (1.0F - 0.5F))},
        {"no colour, material", faceOf(noColor, materialPosition), material(white, fadedMaterial)},
        {"both flags, material", faceOf(noColor | packedColor, materialPosition),
         material(white, fadedMaterial)},
        {"packed colour, material", faceOf(packedColor, materialPosition), material(packed, 0)},
    };
    setObjectTransparency(0.5F);
    for (int const revision : {13, 14, 1539, 1540, 1570})
        for (bool const rgbMode : {false, true})
            for (Row const& row : rows) {
                SCOPED_TRACE(std::string(row.what) + ", revision " + std::to_string(revision) +
                             (rgbMode ? ", RGB mode" : ""));
                object.revision = revision;
                object.rgbMode = rgbMode;
                expectAppearance(row.face, row.expected);
            }
}

TEST_F(FltObjectToSoSeparatorAppearanceTest, ColourIndexWithMaterialGoesByRevisionAndColourMode)
{
    SbColor const fullChannels(1 / 255.0F, 0, 1 / 255.0F); // alpha and green are 255
    struct Row {
        int revision;
        bool rgbMode;
        int primaryColorIndex;
        SbColor color;
    };
    constexpr int position1 = 1 << 7 | 64;
    Row const rows[] = {
        {11, true, position1, color1},
        {13, true, position1, color1},
        {13, true, 1 << 7, color1},
        {13, true, 127 << 7 | 1, color127},
        {13, true, 4151 << 7, color4151},
        {13, true, -1, white},
        {13, true, 4152 << 7, white},
        {11, false, position1, times(white, 64 / 127.0F)},
        {13, false, position1, times(white, 64 / 127.0F)},
        {13, false, 0, black},
        {13, false, 127, white},
        {13, false, 128, black},
        {13, false, 4095, white},
        {13, false, -1, white},
        {13, false, -2147483647 - 1, white},
        {13, false, 4096, color4096},
        {13, false, 4100, color4100},
        {13, false, 4151, color4151},
        {13, false, 4152, white},
        {13, false, 8191, white},
        {13, false, 8192, color4096},
        {14, true, position1, fullChannels},
        {1539, true, position1, fullChannels},
        {1540, true, position1, fullChannels},
        {1570, true, position1, fullChannels},
        {14, false, position1, color127},
        {1539, false, position1, color127},
        {1540, false, position1, color1},
        {1570, false, position1, color1},
        {1570, false, 1 << 7, color1},
        {1570, false, -1, white},
        {1570, false, 4152 << 7, white},
        {1570, false, 2147483647, white},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE("revision " + std::to_string(row.revision) + (row.rgbMode ? ", RGB mode" : "") +
                     ", colour index " + std::to_string(row.primaryColorIndex));
        object.revision = row.revision;
        object.rgbMode = row.rgbMode;
        Face face;
        face.materialIndex = materialPosition;
        face.primaryColorIndex = row.primaryColorIndex;
        face.colorNameIndex = 127 << 7 | 3;
        face.alphaBlueGreenRed = {255, 254, 255, 0};
        expectAppearance(face, material(row.color));
    }
}

TEST_F(FltObjectToSoSeparatorAppearanceTest, HighestColourNameIndexIsPosition511WhichNobodySetHere)
{
    object.revision = 1539;
    Face face;
    face.materialIndex = materialPosition;
    face.colorNameIndex = 65535;
    expectAppearance(face, material(black));
}

TEST_F(FltObjectToSoSeparatorAppearanceTest, NoColourAndPackedColourCountInTheOperationItself)
{
    FltRecordFace record(80);
    Face face;
    face.materialIndex = materialPosition;
    face.primaryColorIndex = 1 << 7;
    face.alphaBlueGreenRed = {255, 255, 0, 255};
    auto const expectFromTheOperation = [&](std::uint32_t flags, int revision, SbColor const& color) {
        SCOPED_TRACE(std::to_string(flags) + ", revision " + std::to_string(revision));
        face.flags = flags;
        fill(record, face);
        object.revision = revision;
        object.addFltFaceWithColorPaletteIndexMaterialToSoMaterial(&record, node, 0);
        expectSlot(*node, 0, material(color));
    };
    // Alpha, blue and red are full: their ones stand in the bytes that a packed colour has for red, green and
    // alpha.
    SbColor const fullChannels(1 / 255.0F, 1 / 255.0F, 0);
    expectFromTheOperation(noColor, 14, white);
    expectFromTheOperation(noColor, 1570, white);
    expectFromTheOperation(noColor | packedColor, 1570, white);
    expectFromTheOperation(packedColor, 14, fullChannels);
    expectFromTheOperation(packedColor, 1570, fullChannels);
    expectFromTheOperation(noColor, 13, black); // index 128 is a grey of intensity 0 there
    expectFromTheOperation(packedColor, 13, black);
}

TEST_F(FltObjectToSoSeparatorAppearanceTest, TexturedFaceWithTextureWhiteHasThePaletteMaterialAtAnyRevision)
{
    for (int const revision : {11, 13, 14, 1539, 1540, 1570})
        for (bool const rgbMode : {false, true}) {
            SCOPED_TRACE(revision);
            object.revision = revision;
            object.rgbMode = rgbMode;
            Face face;
            face.materialIndex = materialPosition;
            face.primaryColorIndex = 1 << 7;
            face.textureWhite = -1;
            face.texturePatternIndex = 0;
            expectAppearance(face, material(white));
        }
}

TEST_F(FltObjectToSoSeparatorAppearanceTest, TextureWhiteWithoutATextureAndATextureWithoutItChangeNothing)
{
    Face face;
    face.materialIndex = materialPosition;
    face.primaryColorIndex = 1 << 7;
    face.textureWhite = 1;
    expectAppearance(face, material(color1));
    face.textureWhite = 0;
    face.texturePatternIndex = 5;
    expectAppearance(face, material(color1));
    face.textureWhite = 1;
    face.materialIndex = -1;
    face.primaryColorIndex = 1 << 7 | 127;
    expectAppearance(face, colored(color1));
}

// --- Colours without a material

TEST_F(FltObjectToSoSeparatorAppearanceTest, FaceWithNoColourAndNoMaterialIsLightGrey)
{
    Face face;
    face.flags = noColor;
    expectAppearance(face, noColorNoMaterial);
}

TEST_F(FltObjectToSoSeparatorAppearanceTest, FaceWithBothFlagsAndAMaterialTakesItUnchanged)
{
    Face face;
    face.flags = noColor | packedColor;
    face.materialIndex = materialPosition;
    face.alphaBlueGreenRed = {255, 10, 20, 30};
    expectAppearance(face, material(white));
}

TEST_F(FltObjectToSoSeparatorAppearanceTest, PackedColourStandsInTheOrderAlphaBlueGreenRedAndAlphaIsIgnored)
{
    Face face;
    face.flags = packedColor;
    face.alphaBlueGreenRed = {10, 0, 128, 255};
    face.transparency = 32768;
    expectAppearance(face, colored(SbColor(1, 128 / 255.0F, 0)));
}

TEST_F(FltObjectToSoSeparatorAppearanceTest, ColourIndex16383IsPosition127InFullStrengthAnd16256IsItInBlack)
{
    Face face;
    face.primaryColorIndex = 16383;
    expectAppearance(face, colored(color127));
    face.primaryColorIndex = 16256;
    expectAppearance(face, colored(black));
    face.primaryColorIndex = 16256 + 32;
    expectAppearance(face, colored(times(color127, 32 / 127.0F)));
}

TEST_F(FltObjectToSoSeparatorAppearanceTest, ColourIndexMinus1PrintsBadColorIndexAndLeavesTheSlotAlone)
{
    Face face;
    face.flags = packedColor;
    face.alphaBlueGreenRed = {0, 0, 0, 255};
    expectAppearance(face, colored(SbColor(1, 0, 0)));
    face.flags = 0;
    face.primaryColorIndex = -1;
    EXPECT_EQ(add(face), "bad color index\n");
    expectSlot(*node, 0, colored(SbColor(1, 0, 0)));
    EXPECT_EQ(add(face, 1), "bad color index\n");
    EXPECT_EQ(node->diffuseColor.getNum(), 1);
}

TEST_F(FltObjectToSoSeparatorAppearanceTest,
       ColourIndexIsBadAbovePosition131072AndWhiteBetweenThePaletteAndThere)
{
    Face face;
    face.primaryColorIndex = 4151 << 7 | 127;
    expectAppearance(face, colored(color4151));
    face.primaryColorIndex = 4152 << 7 | 127;
    expectAppearance(face, colored(white));
    face.primaryColorIndex = 131072 << 7 | 64;
    expectAppearance(face, colored(times(white, 64 / 127.0F)));
    face.primaryColorIndex = 131073 << 7;
    EXPECT_EQ(add(face), "bad color index\n");
    face.primaryColorIndex = 2147483647;
    EXPECT_EQ(add(face), "bad color index\n");
}

// --- Transparency

TEST_F(FltObjectToSoSeparatorAppearanceTest,
       FaceUnderAnOpaqueObjectIsHalfTransparentWithoutMaterialAndAsThePaletteWithOne)
{
    setObjectTransparency(0);
    Face face;
    face.transparency = 32768;
    expectAppearance(face, colored(black, (32768.0F / 65535.0F) * 1.0F));
    face.materialIndex = materialPosition;
    face.flags = noColor;
    expectAppearance(face, material(white, materialTransparency));
}

TEST_F(FltObjectToSoSeparatorAppearanceTest, LooseFaceIsOpaqueWithoutMaterialAndAboutHalfOfThePaletteWithOne)
{
    setObjectTransparency(1);
    Face face;
    face.transparency = 32768;
    expectAppearance(face, colored(black, 0));
    face.materialIndex = materialPosition;
    face.flags = noColor;
    expectAppearance(face, material(white, (32768.0F / -65535.0F + 1.0F) * materialTransparency));
    face.transparency = 65535;
    expectAppearance(face, material(white, 0));
}

TEST_F(FltObjectToSoSeparatorAppearanceTest, ObjectTransparencyInRawUnitsIsNotClamped)
{
    setObjectTransparency(65535);
    Face face;
    face.transparency = 65535;
    expectAppearance(face, colored(black, -65534.0F));
    face.materialIndex = materialPosition;
    face.flags = noColor;
    expectAppearance(face, material(white, -65534.0F * materialTransparency));
    face.flags = packedColor;
    expectAppearance(face, material(black, 0));
}

// --- Outside the material palette

TEST_F(FltObjectToSoSeparatorAppearanceTest, MaterialThatThePaletteDoesNotHaveIsADefaultOne)
{
    for (int const index : {3, 32767, -2, -32768}) {
        SCOPED_TRACE(index);
        Face face;
        face.flags = noColor;
        face.materialIndex = index;
        expectAppearance(face, noColorNoMaterial);
    }
}

TEST_F(FltObjectToSoSeparatorAppearanceTest, MaterialBetweenTwoOfThePaletteHasDefaultColoursAndNoShininess)
{
    Face face;
    face.flags = noColor;
    face.materialIndex = 1;
    Slot expected = noColorNoMaterial;
    expected.shininess = 0;
    expectAppearance(face, expected);
}

// --- Slots

TEST_F(FltObjectToSoSeparatorAppearanceTest, SlotsThatWereSkippedHaveDefaultColoursAndNoShininess)
{
    Face face;
    face.flags = packedColor;
    face.alphaBlueGreenRed = {0, 255, 0, 0};
    EXPECT_EQ(add(face, 3), "");
    expectSlot(*node, 0, noColorNoMaterial);
    Slot skipped = noColorNoMaterial;
    skipped.shininess = 0;
    expectSlot(*node, 1, skipped);
    expectSlot(*node, 2, skipped);
    expectSlot(*node, 3, colored(SbColor(0, 0, 1)));
}

/// The material of an object whose faces have these colour indices, none of them with a material.
class FacesOfColours
{
public:
    explicit FacesOfColours(std::vector<int> const& colorIndices) : scene(write(colorIndices)) {}

    SoMaterial const& material() const
    {
        return *static_cast<SoMaterial*>(scene.find("faceVertexColorSoMaterialSet"));
    }
    ConvertedScene scene;

private:
    static FltWriter write(std::vector<int> const& colorIndices)
    {
        FltWriter flt;
        std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
        beginObject(flt);
        for (int const index : colorIndices)
            flt.face({a[0]}, {{"primaryColorIndex", index}});
        return endObject(flt);
    }
};

int badColorIndices(std::string const& log)
{
    return countOf(log, "\nbad color index\n");
}

TEST(FltObjectToSoSeparatorAppearanceSceneTest, FaceWithABadColourKeepsItsGeometryAndItsPlace)
{
    FacesOfColours const faces({0, -1, 0});
    EXPECT_EQ(objectOutline(faces.scene), "Separator object\n"
                                          "  MaterialBinding\n"
                                          "  Material faceVertexColorSoMaterialSet\n"
                                          "  IndexedFaceSet SoIFSVertexColor: 0 -1 0 -1 0 -1 | 0 1 2\n");
    EXPECT_EQ(badColorIndices(faces.scene.log), 1);
    EXPECT_EQ(faces.scene.messages, "");
    expectSlot(faces.material(), 0, colored(black));
    expectSlot(faces.material(), 1,
               {SbColor(0.2F, 0.2F, 0.2F), SbColor(0.8F, 0.8F, 0.8F), black, black, 0, 0});
    expectSlot(faces.material(), 2, colored(black));
}

TEST(FltObjectToSoSeparatorAppearanceSceneTest, FirstSlotKeepsTheDefaultsOfANodeWhenItIsSkipped)
{
    FacesOfColours const faces({-1, 0});
    expectSlot(faces.material(), 0, noColorNoMaterial);
    expectSlot(faces.material(), 1, colored(black));
}

TEST(FltObjectToSoSeparatorAppearanceSceneTest, LastSlotsThatAreSkippedLeaveTheFieldsShort)
{
    FacesOfColours const faces({0, 0, -1, -1});
    EXPECT_EQ(faces.material().diffuseColor.getNum(), 2);
    EXPECT_EQ(faces.material().transparency.getNum(), 2);
    EXPECT_EQ(badColorIndices(faces.scene.log), 2);
}

TEST(FltObjectToSoSeparatorAppearanceSceneTest, OneDefaultSlotIsLeftWhenAllAreSkipped)
{
    FacesOfColours const faces({-1, -1});
    EXPECT_EQ(faces.material().diffuseColor.getNum(), 1);
    expectSlot(faces.material(), 0, noColorNoMaterial);
}

TEST(FltObjectToSoSeparatorAppearanceSceneTest, FieldsOfAMaterialTellOfLaterChangesAgain)
{
    FacesOfColours const faces({0, 0});
    EXPECT_TRUE(faces.material().ambientColor.isNotifyEnabled());
    EXPECT_TRUE(faces.material().transparency.isNotifyEnabled());
    EXPECT_FALSE(faces.material().diffuseColor.isDefault());
}

TEST(FltObjectToSoSeparatorAppearanceSceneTest, RevisionRgbModeAndObjectTransparencyReachTheFaces)
{
    FltWriter flt(14, {{"flags", 0x40000000}});
    flt.add("Material", {{"index", 0}, {"diffuse", {1, 1, 1}}, {"alpha", 0.0}});
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    beginObject(flt, {{"transparency", 2}});
    flt.face(a, {{"materialIndex", 0}, {"packedColor", {255, 0, 0, 0}}, {"transparency", 16384}});
    ConvertedScene const scene(endObject(flt));
    auto const& material = *static_cast<SoMaterial*>(scene.find("faceVertexColorSoMaterialSet"));
    expectColor(material.diffuseColor[0], SbColor(1 / 255.0F, 0, 0), "diffuse");
    EXPECT_EQ(material.transparency[0], 16384.0F * 2.0F / -65535.0F + 1.0F);
}

} // namespace
