#include "convert/FltVertexPalette.h"

#include "convert/FltColorPalette.h"
#include "records/FltRecordVertex.h"
#include "support/SmallVertexPalettes.h"
#include "support/StreamCapture.h"

#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoSwitch.h>
#include <Inventor/sensors/SoNodeSensor.h>
#include <gtest/gtest.h>
#include <iostream>
#include <string>
#include <vector>

namespace
{

using Position = FltVertexPalette::Position;
using Form = FltVertexPalette::Form;

constexpr Position allForms[] = {FltVertexPalette::color, FltVertexPalette::colorNormal,
                                 FltVertexPalette::colorUV, FltVertexPalette::colorNormalUV};

/// Room of each form at first, and after it has grown once.
constexpr int room = 4;
constexpr int grownRoom = 106;

class FltVertexPaletteTest : public testing::Test
{
protected:
    FltVertexPaletteTest() { root->ref(); }
    ~FltVertexPaletteTest() override { root->unref(); }

    /// Adds a vertex at (x, 0, 0), with x in its normal and texture too if it has them.
    void add(Position form, float x, unsigned length = 40)
    {
        FltRecordVertexColor record(length);
        record.Xcoordinate = x;
        float const values[3] = {x, 0, 0};
        Form const& kind = palette.getForm(FltVertexPalette::idOf(form));
        palette.add(form, record, kind.hasNormal ? values : nullptr, kind.hasTexture ? values : nullptr);
    }

    void addMany(Position form, int count, float firstX)
    {
        for (int i = 0; i < count; ++i)
            add(form, firstX + static_cast<float>(i));
    }

    SoVertexProperty& property(Position form) { return *palette.getProperty(FltVertexPalette::idOf(form)); }

    std::vector<float> x(Position form)
    {
        SoMFVec3f const& vertex = property(form).vertex;
        std::vector<float> values(static_cast<std::size_t>(vertex.getNum()));
        for (int i = 0; i < vertex.getNum(); ++i)
            values[static_cast<std::size_t>(i)] = vertex[i][0];
        return values;
    }

    SmallVertexPalettes const small{room};
    FltColorPalette colors;
    FltVertexPalette palette{colors};
    SoSeparator* root = new SoSeparator;
};

TEST_F(FltVertexPaletteTest, TheTableNamesAllOfAForm)
{
    char const* const names[][4] = {
        {"vertexColorProperty", "faceVertexColorSoMaterialSet", "subFaceVertexColorSoMaterialSet",
         "SoIFSVertexColor"},
        {"vertexColorNormalProperty", "faceVertexColorNormalSoMaterialSet",
         "subFaceVertexColorNormalSoMaterialSet", "SoIFSVertexColorNormal"},
        {"vertexColorUVProperty", "faceVertexColorUVSoMaterialSet", "subFaceVertexColorUVSoMaterialSet",
         "SoIFSVertexColorUV"},
        {"vertexColorNormalUVProperty", "faceVertexColorNormalUVSoMaterialSet",
         "subFaceVertexColorNormalUVSoMaterialSet", "SoIFSVertexColorNormalUV"},
    };
    for (Position const position : allForms) {
        Form const& form = palette.getForms()[position];
        EXPECT_EQ(form.id, position + 1);
        EXPECT_EQ(&form, &palette.getForm(form.id));
        EXPECT_STREQ(form.propertyName.getString(), names[position][0]);
        EXPECT_STREQ(form.materialSetName.getString(), names[position][1]);
        EXPECT_STREQ(form.subFaceMaterialSetName.getString(), names[position][2]);
        EXPECT_STREQ(form.faceSetName.getString(), names[position][3]);
        EXPECT_EQ(form.property->getName(), form.propertyName);
    }
}

TEST_F(FltVertexPaletteTest, OnlyTheFieldsOfAFormHaveRoom)
{
    for (Form const& form : palette.getForms()) {
        SoVertexProperty const& node = *palette.getProperty(form.id);
        EXPECT_EQ(node.vertex.getNum(), room);
        EXPECT_EQ(node.orderedRGBA.getNum(), room);
        EXPECT_EQ(node.normal.getNum(), form.hasNormal ? room : 0);
        EXPECT_EQ(node.texCoord.getNum(), form.hasTexture ? room : 0);
    }
}

TEST_F(FltVertexPaletteTest, TheRoomOfAFormTakesNoMemoryBeforeSomebodyLooksAtIt)
{
    addMany(FltVertexPalette::colorNormal, 2, 1);
    for (Form const& form : palette.getForms())
        EXPECT_EQ(form.property->vertex.getNum(), 0);
    EXPECT_EQ(palette.entryAt(8).property->vertex.getNum(), room);
    EXPECT_EQ(x(FltVertexPalette::colorNormal), (std::vector<float>{1, 2, 0, 0}));
    EXPECT_EQ(palette.getForm(1).property->vertex.getNum(), 0);
}

TEST_F(FltVertexPaletteTest, APropertyThatSomebodyLookedAtGetsFurtherVerticesAtOnce)
{
    SoVertexProperty const& node = property(FltVertexPalette::colorNormal);
    addMany(FltVertexPalette::colorNormal, 2, 1);
    EXPECT_EQ(node.vertex[1], SbVec3f(2, 0, 0));
    EXPECT_EQ(node.normal[1], SbVec3f(2, 0, 0));
    addMany(FltVertexPalette::colorNormal, room, 3);
    EXPECT_EQ(node.normal.getNum(), grownRoom);
    EXPECT_EQ(node.normal[room], SbVec3f(5, 0, 0));
}

/// Whatever is written where, and whoever looks when, the same values come out.
TEST_F(FltVertexPaletteTest, ALookAtThePropertiesChangesNothing)
{
    auto const fill = [](FltVertexPalette& into, bool looks) {
        for (int i = 0; i < 3 * room; ++i)
            for (Position const form : {FltVertexPalette::color, FltVertexPalette::colorUV}) {
                FltRecordVertexColor record(40);
                record.Xcoordinate = 10 * i + form;
                float const texture[2] = {static_cast<float>(i), 1};
                into.add(form, record, nullptr, form == FltVertexPalette::colorUV ? texture : nullptr);
                if (looks && i % 3 == 1)
                    into.getProperty(i % 4 + 1);
            }
        into.close();
    };
    FltVertexPalette other(colors);
    fill(palette, false);
    fill(other, true);
    for (Form const& form : palette.getForms()) {
        SoVertexProperty const& node = *palette.getProperty(form.id);
        SoVertexProperty const& seen = *other.getProperty(form.id);
        EXPECT_EQ(node.vertex, seen.vertex) << form.id;
        EXPECT_EQ(node.normal, seen.normal) << form.id;
        EXPECT_EQ(node.texCoord, seen.texCoord) << form.id;
        EXPECT_EQ(node.orderedRGBA, seen.orderedRGBA) << form.id;
    }
}

TEST_F(FltVertexPaletteTest, ThePropertiesGoWithThePalette)
{
    SoNodeRef<SoVertexProperty> held;
    {
        FltVertexPalette const other(colors);
        held = other.getForm(1).property;
        EXPECT_EQ(held->getRefCount(), 2);
    }
    EXPECT_EQ(held->getRefCount(), 1);
}

TEST_F(FltVertexPaletteTest, OffsetsBeginAt8AndGrowByTheLengthsOfTheRecords)
{
    add(FltVertexPalette::color, 1, 40);
    add(FltVertexPalette::colorNormalUV, 2, 64);
    add(FltVertexPalette::color, 3, 40);
    VertexEntry const first = palette.entryAt(8);
    EXPECT_EQ(first.index, 0);
    EXPECT_EQ(first.size, 40);
    EXPECT_EQ(first.property, &property(FltVertexPalette::color));
    EXPECT_EQ(palette.entryAt(48).property, &property(FltVertexPalette::colorNormalUV));
    EXPECT_EQ(palette.entryAt(48).size, 64);
    EXPECT_EQ(palette.entryAt(112).index, 1);
    EXPECT_EQ(palette.getForm(1).count, 2);
    EXPECT_EQ(palette.getForm(4).count, 1);
}

TEST_F(FltVertexPaletteTest, EntriesAreFoundInAnyOrder)
{
    addMany(FltVertexPalette::colorUV, 4, 0);
    for (int const vertex : {3, 0, 1, 1, 3, 2})
        EXPECT_EQ(palette.entryAt(8 + 40 * static_cast<unsigned long>(vertex)).index, vertex);
}

TEST_F(FltVertexPaletteTest, AnUnknownOffsetEntersTheMapWithZeros)
{
    VertexEntry const entry = palette.entryAt(1000);
    EXPECT_EQ(entry.index, 0);
    EXPECT_EQ(entry.size, 0);
    EXPECT_EQ(entry.property, nullptr);
    EXPECT_EQ(palette.placeAt(1000).id, 0);
}

TEST_F(FltVertexPaletteTest, TheFormsWithUVGoOnInTheirOwnProperty)
{
    for (Position const form : {FltVertexPalette::colorUV, FltVertexPalette::colorNormalUV}) {
        addMany(form, room + 2, 1);
        EXPECT_EQ(property(form).vertex.getNum(), grownRoom);
        EXPECT_EQ(property(form).vertex[room][0], 5);
        EXPECT_EQ(property(form).vertex[room + 1][0], 6);
        EXPECT_EQ(property(form).vertex[grownRoom - 1][0], 0);
        EXPECT_EQ(property(form).texCoord[room][0], 5);
    }
}

TEST_F(FltVertexPaletteTest, TheFormsWithoutUVWriteTheirCoordinatesIntoTheFormWithUVOnceTheyHaveGrown)
{
    Position const pairs[][2] = {{FltVertexPalette::color, FltVertexPalette::colorUV},
                                 {FltVertexPalette::colorNormal, FltVertexPalette::colorNormalUV}};
    for (auto const& [form, other] : pairs) {
        addMany(other, room + 1, 100); // it grows, so it has room
        addMany(form, room + 2, 1);
        EXPECT_EQ(property(form).vertex[room - 1][0], 4);
        EXPECT_EQ(property(form).vertex[room][0], 0);
        EXPECT_EQ(property(other).vertex[room][0], 5);
        EXPECT_EQ(property(other).vertex[room + 1][0], 6);
        EXPECT_EQ(palette.getForm(FltVertexPalette::idOf(form)).count, room + 2);
        EXPECT_EQ(palette.getForm(FltVertexPalette::idOf(other)).count, room + 1);
    }
    EXPECT_EQ(property(FltVertexPalette::colorNormal).normal[room][0], 5); // normals stay in their own form
}

TEST_F(FltVertexPaletteTest, CoordinatesThatTheOtherFormHasNoRoomForAreDropped)
{
    addMany(FltVertexPalette::color, room + 1, 1);
    EXPECT_EQ(property(FltVertexPalette::color).vertex[room][0], 0);
    EXPECT_EQ(property(FltVertexPalette::colorUV).vertex.getNum(), room);
}

TEST_F(FltVertexPaletteTest, ACutKeepsTheVerticesAndDropsAllColors)
{
    addMany(FltVertexPalette::colorNormal, 2, 1);
    EXPECT_FALSE(palette.isCut());
    palette.cut(root);
    EXPECT_TRUE(palette.isCut());
    EXPECT_EQ(x(FltVertexPalette::colorNormal), (std::vector<float>{1, 2}));
    EXPECT_EQ(property(FltVertexPalette::colorNormal).normal.getNum(), 2);
    for (Form const& form : palette.getForms())
        EXPECT_EQ(form.property->orderedRGBA.getNum(), 0);
}

TEST_F(FltVertexPaletteTest, ACutHangsThePropertiesWithVerticesBelowTheRootInTheirOrder)
{
    add(FltVertexPalette::colorNormalUV, 1);
    add(FltVertexPalette::color, 2);
    palette.cut(root);
    ASSERT_EQ(root->getNumChildren(), 1);
    auto const* const node = static_cast<SoSwitch*>(root->getChild(0));
    EXPECT_EQ(node->getName(), "vertexPropertyPalette");
    EXPECT_EQ(node->whichChild.getValue(), SO_SWITCH_NONE);
    ASSERT_EQ(node->getNumChildren(), 2);
    EXPECT_EQ(node->getChild(0), &property(FltVertexPalette::color));
    EXPECT_EQ(node->getChild(1), &property(FltVertexPalette::colorNormalUV));
}

TEST_F(FltVertexPaletteTest, ACutWithoutVerticesOrWithoutARootHangsNothing)
{
    palette.cut(root);
    EXPECT_EQ(root->getNumChildren(), 0);
    FltVertexPalette other(colors);
    FltRecordVertexColor const record(40);
    other.add(FltVertexPalette::color, record, nullptr, nullptr);
    other.cut(nullptr);
    EXPECT_TRUE(other.isCut());
    EXPECT_EQ(other.getForm(1).property->getRefCount(), 1);
}

TEST_F(FltVertexPaletteTest, ACopyTakesPlaceAndUVOfItsSourceAndTheNormalGiven)
{
    addMany(FltVertexPalette::colorUV, 2, 7);
    palette.cut(root);
    EXPECT_EQ(palette.addCopy(3, 1, SbVec3f(0, 0, 1)), 0);
    SoVertexProperty const& copy = property(FltVertexPalette::colorNormalUV);
    ASSERT_EQ(copy.vertex.getNum(), 1);
    EXPECT_EQ(copy.vertex[0], SbVec3f(8, 0, 0));
    EXPECT_EQ(copy.texCoord[0], SbVec2f(8, 0));
    EXPECT_EQ(copy.normal[0], SbVec3f(0, 0, 1));
    EXPECT_EQ(copy.orderedRGBA.getNum(), 0);
    EXPECT_EQ(palette.addCopy(3, 0, SbVec3f(0, 0, 1)), 1);
    EXPECT_EQ(palette.getForm(4).count, 2);
}

TEST_F(FltVertexPaletteTest, APropertyIsFoundByItsIdAndTheReverse)
{
    for (Form const& form : palette.getForms()) {
        EXPECT_EQ(palette.getProperty(form.id), form.property.get());
        EXPECT_EQ(palette.getId(form.property.get()), form.id);
        EXPECT_EQ(palette.findForm(form.property.get()), &form);
    }
    StreamCapture const err(std::cerr);
    EXPECT_EQ(palette.findForm(nullptr), nullptr);
    EXPECT_EQ(err.str(), "");
    EXPECT_EQ(palette.getId(nullptr), FltVertexPalette::undefinedPropertyId);
    EXPECT_EQ(palette.getProperty(5), palette.getProperty(1));
    EXPECT_EQ(err.str(), "WARNING ! This SoVertexProperty hasn t any id,  "
                         "UNDEFINED_SO_VERTEX_PROPERTY_ID will be returned\n(Warning Level: 3)\n\n"
                         "WARNING: no vertex property associated with this id, "
                         "vertexColorProperty will be returned\n(Warning Level: 3)\n\n");
}

TEST_F(FltVertexPaletteTest, ThePropertiesNotifyNobodyUntilTheConversionEnds)
{
    int notifications = 0;
    SoNodeSensor sensor([](void* count, SoSensor*) { ++*static_cast<int*>(count); }, &notifications);
    sensor.setPriority(0);
    sensor.attach(&property(FltVertexPalette::color));
    addMany(FltVertexPalette::color, room + 1, 0);
    palette.cut(root);
    EXPECT_EQ(notifications, 0);
    palette.close();
    EXPECT_EQ(notifications, 1);
    property(FltVertexPalette::color).vertex.set1Value(0, 1, 2, 3);
    EXPECT_EQ(notifications, 2);
}

TEST_F(FltVertexPaletteTest, WhatWasNeverWrittenReadsAsZeroAfterAConversionWithoutACut)
{
    add(FltVertexPalette::colorNormalUV, 9);
    palette.close();
    EXPECT_EQ(x(FltVertexPalette::colorNormalUV), (std::vector<float>{9, 0, 0, 0}));
    EXPECT_EQ(x(FltVertexPalette::color), (std::vector<float>{0, 0, 0, 0}));
    EXPECT_EQ(property(FltVertexPalette::colorNormalUV).orderedRGBA[1], 0U);
}

TEST_F(FltVertexPaletteTest, WhatFacesNameBeyondTheLastVertexCanBeReadAndChangesNoNumber)
{
    addMany(FltVertexPalette::colorUV, 2, 1);
    palette.cut(root);
    palette.noteIndex(3, 5000);
    palette.noteIndex(3, 10); // the highest counts
    palette.close();
    SoVertexProperty const& uv = property(FltVertexPalette::colorUV);
    EXPECT_EQ(uv.vertex.getNum(), 2);
    EXPECT_EQ(uv.vertex.getValues(0)[1], SbVec3f(2, 0, 0));
    EXPECT_EQ(uv.vertex.getValues(0)[5000], SbVec3f(0, 0, 0));
    EXPECT_EQ(uv.texCoord.getValues(0)[5000], SbVec2f(0, 0));
}

TEST_F(FltVertexPaletteTest, TheMapIsShownUpToALimit)
{
    addMany(FltVertexPalette::colorNormal, 3, 0);
    StreamCapture const out(std::cout);
    palette.show(2);
    EXPECT_EQ(out.str(), "offset: 8  index: 0  size: 40  SOVP: 2\n"
                         "offset: 48  index: 1  size: 40  SOVP: 2\n");
    palette.show(0);
    EXPECT_EQ(out.str().substr(out.str().rfind("offset")), "offset: 88  index: 2  size: 40  SOVP: 2\n");
}

TEST_F(FltVertexPaletteTest, WithoutNodesItKnowsWhereVerticesBeginAndOfWhichFormTheyAre)
{
    FltVertexPalette listed(colors, false);
    FltRecordVertexColor const record(40);
    listed.add(FltVertexPalette::colorUV, record, nullptr, nullptr);
    EXPECT_EQ(listed.placeAt(8).id, 3);
    EXPECT_EQ(listed.placeAt(9).id, 0);
    EXPECT_FALSE(listed.hasNodes());
    EXPECT_FALSE(listed.isCut());
    listed.cut(root);
    EXPECT_TRUE(listed.isCut());
    listed.close();
    EXPECT_EQ(root->getNumChildren(), 0);
    StreamCapture const err(std::cerr);
    EXPECT_EQ(listed.getId(nullptr), FltVertexPalette::undefinedPropertyId);
}

} // namespace
