#include "convert/FltToInventor.h"

#include "messages/FltLimits.h"
#include "records/FltRecordSwitch.h"
#include "records/FltRecordUnknown.h"
#include "support/ConvertedScene.h"
#include "support/DirectConversion.h"
#include "support/ParsedRecords.h"
#include "support/SceneTraversal.h"
#include "support/Text.h"

#include <Inventor/nodes/SoClipPlane.h>
#include <Inventor/nodes/SoInfo.h>
#include <Inventor/nodes/SoLOD.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoSwitch.h>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

namespace
{

std::string const switchInfoIsMissing =
    "ERROR ! SoInfo with switch properties not found\n(Warning Level: 3)\n\n";
std::string const popWithEmptyStack =
    "WARNING ! trying a pop() but stack is empty! (File corrupted ?)\n(Warning Level: 2)\n\n";
std::string const hierarchyTooDeep =
    "WARNING ! The hierarchy is nested deeper than 1200 levels: what lies deeper is left out\n"
    "(Warning Level: 2)\n\n";
std::string const sceneTooDeep =
    "WARNING ! The scene is more than 2000 nodes deep: what lies deeper is left out\n(Warning Level: 2)\n\n";

FltWriter::Fields named(std::string const& name, FltWriter::Fields fields = {})
{
    fields.insert(fields.begin(), {"idASCII", name});
    return fields;
}

/// A database whose first level is open.
FltWriter openDatabase()
{
    FltWriter flt;
    flt.push();
    return flt;
}

/// Adds a Group with an empty level.
FltWriter& addGroup(FltWriter& flt, std::string const& name)
{
    return flt.add("Group", named(name)).push().pop();
}

std::string textOf(FltWriter const& flt)
{
    return ConvertedScene(flt).text();
}

std::string times(int count, std::string const& text)
{
    std::string result;
    for (int i = 0; i < count; ++i)
        result += text;
    return result;
}

// Groups and their like

TEST(FltToInventorHierarchyTest, AGroupBecomesASeparatorOfItsNameAndItsOtherFieldsAreIgnored)
{
    FltWriter flt = openDatabase();
    flt.add("Group", named("g1", {{"relativePriority", 7},
                                  {"flags", 0xffffffff},
                                  {"id1SpecialEffect", 1},
                                  {"id2SpecialEffect", 2},
                                  {"significance", 3},
                                  {"layerCode", 4}}));
    flt.push().add("Group", named("g2")).push().pop().pop().pop();
    EXPECT_EQ(textOf(flt), rootWith(R"(  DEF g1 Separator {
    DEF g2 Separator {
    }
  }
)"));
}

TEST(FltToInventorHierarchyTest, ADOFBecomesAPlainSeparatorWithoutMotion)
{
    FltWriter flt = openDatabase();
    flt.add("DOF", named("turret", {{"XOriginOfDOFLocalCoordinateSystem", 5},
                                    {"currentYaw", 90},
                                    {"ZCurrentValue", 4},
                                    {"XCurrentScale", 2},
                                    {"flags", 0xffffffff}}));
    flt.push().add("Group", named("gun")).push().pop().pop().pop();
    EXPECT_EQ(textOf(flt), rootWith(R"(  DEF turret Separator {
    DEF gun Separator {
    }
  }
)"));
}

TEST(FltToInventorHierarchyTest, ATextBecomesAPlainSeparatorWithoutAShape)
{
    FltWriter flt = openDatabase();
    flt.add("Text", named("label", {{"fontName", "Times"}, {"textLength", 5}}));
    flt.add("Comment", {{"textDescription", "hello"}}).pop();
    EXPECT_EQ(textOf(flt), rootWith(R"(  DEF label Separator {
    Info {
      string "hello"
    }
  }
)"));
}

TEST(FltToInventorHierarchyTest, AnUnknownPrimaryRecordCanBeMadeASeparatorButNoWalkDoesSo)
{
    FltWriter flt;
    flt.add("Group").add("Comment", {{"textDescription", "note"}}).add("Group");
    ParsedRecords const records(flt);
    DirectConversion conversion;
    conversion.converter.visitPushLevel();
    FltRecordUnknown const record(99, 12);
    ParsedRecords::Iterator iterator = records.at(1);
    conversion.converter.visitUnknownPrimaryRecord(&record, iterator);
    EXPECT_EQ(records.indexOf(iterator), 3);
    ASSERT_EQ(conversion.root->getNumChildren(), 4);
    auto* const node = static_cast<SoSeparator*>(conversion.root->getChild(3));
    EXPECT_EQ(node->getName(), SbName("UnknownPrimaryRecord"));
    ASSERT_EQ(node->getNumChildren(), 1);
    EXPECT_TRUE(node->getChild(0)->isOfType(SoInfo::getClassTypeId()));
    EXPECT_EQ(textOf(openDatabase().addRaw(99, "12345678").pop()), rootWith(""));
}

TEST(FltToInventorHierarchyTest, AGroupLODSwitchOrDOFWithNoPushTakesTheNextRecordAsItsSingleChild)
{
    for (char const* record : {"Group", "DOF"}) {
        FltWriter flt = openDatabase();
        flt.add(record, named("a"));
        addGroup(flt, "child");
        EXPECT_EQ(textOf(addGroup(flt, "next").pop()), rootWith(R"(  DEF a Separator {
    DEF child Separator {
    }
  }
  DEF next Separator {
  }
)"));
    }
    for (char const* record : {"LOD", "OLDLOD"}) {
        FltWriter flt = openDatabase();
        flt.add(record, named("a", {{"XcenterCoordinate", 1}}));
        addGroup(flt, "child");
        EXPECT_EQ(textOf(addGroup(flt, "next").pop()), rootWith(R"(  DEF a LOD {
    center 1 0 0
    range [ 0, 0 ]
    Label {
      label "MinRangeLimitForLOD"
    }
    DEF a Separator {
      DEF child Separator {
      }
    }
    Label {
      label "MaxRangeLimitForLOD"
    }
  }
  DEF next Separator {
  }
)"));
    }
    FltWriter flt = openDatabase();
    flt.add("Switch", named("a"));
    addGroup(flt, "child");
    EXPECT_EQ(textOf(addGroup(flt, "next").pop()), rootWith(R"(  DEF a_(flt_switch) Separator {
    DEF SoInfo_child_of_FLT_switch Info {
      string "Current Mask:0 NumberOfWordsPerMask:0 numberOfMasks:0 Switch Masks:"
    }
    DEF child_of_a_(flt_switch) Switch {
      whichChild -1
      DEF child Separator {
      }
    }
  }
  DEF next Separator {
  }
)"));
}

TEST(FltToInventorHierarchyTest, ANodeWithNoLevelOpenIsNotAttachedAndGoesWithTheConversion)
{
    FltWriter flt;
    flt.add("Group", named("a")).add("Object", named("b")).add("LOD", named("c")).add("Sound");
    flt.add("Switch", named("d")).add("Sound").add("ClipRegion", named("e")).add("Sound");
    flt.add("Text", named("f")).add("Sound").add("OLDLOD", named("h"));
    ConvertedScene const scene(flt);
    EXPECT_EQ(scene.text(), rootWith(""));
    EXPECT_EQ(scene.messages, "");
}

TEST(FltToInventorHierarchyTest, AGroupAddedWithNoLevelOpenHasNoParent)
{
    auto* const group = new SoSeparator;
    group->ref();
    {
        DirectConversion conversion;
        conversion.converter.addSoGroupToNodesStackTop(group);
        EXPECT_EQ(conversion.root->getNumChildren(), 3);
        conversion.converter.visitPushLevel();
        auto* const attached = new SoSeparator;
        conversion.converter.addSoGroupToNodesStackTop(attached);
        ASSERT_EQ(conversion.root->getNumChildren(), 4);
        EXPECT_EQ(conversion.root->getChild(3), attached);
    }
    EXPECT_EQ(group->getRefCount(), 1);
    group->unref();
}

// Names

/// The name that a group gets by its own id of at most eight characters.
std::string nameBy(std::string const& id)
{
    FltWriter flt = openDatabase();
    ConvertedScene const scene(flt.add("Group", named(id)).pop());
    return scene.root->getChild(3)->getName().getString();
}

/// The name that a group gets by a Long ID.
std::string longNameBy(std::string const& id)
{
    FltWriter flt = openDatabase();
    ConvertedScene const scene(flt.add("Group", named("short")).add("LongID", named(id)).pop());
    return scene.root->getChild(3)->getName().getString();
}

TEST(FltToInventorHierarchyTest, AnIdOfEightCharactersNeedsNoTerminator)
{
    EXPECT_EQ(nameBy("abcdefgh"), "abcdefgh");
    EXPECT_EQ(nameBy("abc"), "abc");
    EXPECT_EQ(nameBy(std::string("ab\0cd", 5)), "ab");
    EXPECT_EQ(nameBy(""), "");
}

TEST(FltToInventorHierarchyTest, ALongIDReplacesTheId)
{
    EXPECT_EQ(longNameBy("a_name_of_more_than_eight_characters"), "a_name_of_more_than_eight_characters");
    EXPECT_EQ(longNameBy(std::string(5000, 'n')), std::string(5000, 'n'));
    EXPECT_EQ(longNameBy(std::string("first\0rest", 10)), "first");
    EXPECT_EQ(longNameBy(""), "");
}

TEST(FltToInventorHierarchyTest, WhatTheToolkitTakesInNoNameBecomesAnUnderscore)
{
    EXPECT_EQ(longNameBy("two words"), "two_words");
    EXPECT_EQ(longNameBy("tab\tand\x01"), "tab_and_");
    EXPECT_EQ(longNameBy("caf\xe9\x7f"), "caf__");
    EXPECT_EQ(longNameBy("a\"b'c+d.e\\f{g}h"), "a_b_c_d_e_f_g_h");
    EXPECT_EQ(longNameBy("a-b(c)[d]:e/f"), "a-b(c)[d]:e/f");
    EXPECT_EQ(nameBy("7up"), "_7up");
    EXPECT_EQ(nameBy("+a"), "__a");
}

TEST(FltToInventorHierarchyTest, ASwitchIsNamedFromTheNameThatTheToolkitMade)
{
    auto const switchNameBy = [](std::string const& id) {
        FltWriter flt = openDatabase();
        ConvertedScene const scene(flt.add("Switch", named(id)).pop());
        return std::string(scene.root->getChild(3)->getName().getString());
    };
    EXPECT_EQ(switchNameBy("sw1"), "sw1_(flt_switch)");
    EXPECT_EQ(switchNameBy("1 sw.x"), "_1_sw_x_(flt_switch)");
    EXPECT_EQ(switchNameBy("abcdefgh"), "abcdefgh_(flt_switch)");
    EXPECT_EQ(switchNameBy(""), "_(flt_switch)");
}

TEST(FltToInventorHierarchyTest, TheWrapperOfASwitchChildBearsTheParentsNameAsItIs)
{
    FltWriter flt = openDatabase();
    flt.add("Group", named("g")).add("LongID", named("my flt_switch.1")).push();
    EXPECT_EQ(textOf(addGroup(flt, "child").pop().pop()), rootWith(R"(  DEF my_flt_switch_1 Separator {
    DEF child_of_my_flt_switch_1 Switch {
      whichChild -1
      DEF child Separator {
      }
    }
  }
)"));
}

TEST(FltToInventorHierarchyTest, AMarkThatTheToolkitBreaksUpIsNoMark)
{
    FltWriter flt = openDatabase();
    flt.add("Group", named("g")).add("LongID", named("FLT_SWITCH flt-switch flt__switch")).push();
    EXPECT_EQ(textOf(addGroup(flt, "child").pop().pop()),
              rootWith("  DEF FLT_SWITCH_flt-switch_flt__switch Separator {\n"
                       "    DEF child Separator {\n    }\n  }\n"));
    FltWriter mended = openDatabase(); // and one that it mends is a mark
    mended.add("Group", named("g")).add("LongID", named("flt switch")).push();
    EXPECT_EQ(textOf(addGroup(mended, "child").pop().pop()),
              rootWith("  DEF flt_switch Separator {\n    DEF child_of_flt_switch Switch {\n"
                       "      whichChild -1\n      DEF child Separator {\n      }\n    }\n  }\n"));
}

// Objects

TEST(FltToInventorHierarchyTest, AnObjectFollowedDirectlyByAPopIsEmptyAndThePopStillTakesEffect)
{
    FltWriter flt = openDatabase();
    flt.add("Group", named("g")).push().add("Object", named("o")).pop();
    addGroup(flt, "sibling");
    flt.add("Object", named("p")).add("Comment", {{"textDescription", "empty"}}).pop();
    ConvertedScene const scene(flt);
    EXPECT_EQ(scene.text(), rootWith(R"(  DEF g Separator {
    DEF o Separator {
    }
  }
  DEF sibling Separator {
  }
  DEF p Separator {
    Info {
      string "empty"
    }
  }
)"));
    EXPECT_EQ(scene.messages, "");
}

TEST(FltToInventorHierarchyTest, AnObjectBecomesASeparatorWithItsFaces)
{
    FltWriter flt;
    flt.vertexPalette();
    double const a = flt.vertex("VertexColor", 0, 0, 0);
    double const b = flt.vertex("VertexColor", 1, 0, 0);
    double const c = flt.vertex("VertexColor", 0, 1, 0);
    flt.push().add("Object", named("o", {{"flags", 0xffffffff}, {"relativePriority", 3}}));
    flt.add("LongID", named("the_object")).add("Comment", {{"textDescription", "note"}}).push();
    flt.face({a, b, c}).pop();
    EXPECT_EQ(textOf(addGroup(flt, "next").pop()), rootWith(R"(  DEF vertexPropertyPalette Switch {
    whichChild -1
    DEF vertexColorProperty VertexProperty {
      vertex [ 0 0 0,
          1 0 0,
          0 1 0 ]
      orderedRGBA [  ]
    }
  }
  DEF the_object Separator {
    Info {
      string "note"
    }
    MaterialBinding {
      value PER_FACE_INDEXED
    }
    DEF faceVertexColorSoMaterialSet Material {
      ambientColor 0 0 0
      diffuseColor 0 0 0
      specularColor 0 0 0
      emissiveColor 0 0 0
      shininess 0
      transparency 0
    }
    DEF SoIFSVertexColor IndexedFaceSet {
      vertexProperty 
      USE vertexColorProperty
      coordIndex [ 0, 1, 2, -1 ]
      materialIndex 0
    }
  }
  DEF next Separator {
  }
)"));
}

TEST(FltToInventorHierarchyTest, AnObjectFollowedByAnythingElseTakesThatRecordIntoItsFaces)
{
    FltWriter flt;
    flt.vertexPalette();
    double const a = flt.vertex("VertexColor", 1, 2, 3);
    flt.push().add("Object", named("o")).add("Group", named("eaten")).push();
    flt.face({a, a, a}).pop();
    ConvertedScene const scene(addGroup(flt, "next").pop());
    EXPECT_EQ(scene.find("eaten"), nullptr);
    EXPECT_NE(scene.find("next"), nullptr);
    EXPECT_EQ(scene.messages, "");
}

TEST(FltToInventorHierarchyTest, TheTransparencyOfAnObjectIsTheOneOfItsFieldsThatCounts)
{
    FltWriter flt;
    flt.vertexPalette();
    double const a = flt.vertex("VertexColor", 1, 2, 3);
    flt.push().add("Object", named("o", {{"transparency", 65535}})).push();
    EXPECT_EQ(textOf(flt.face({a, a, a}).pop().pop()), rootWith(R"(  DEF vertexPropertyPalette Switch {
    whichChild -1
    DEF vertexColorProperty VertexProperty {
      vertex 1 2 3
      orderedRGBA [  ]
    }
  }
  DEF o Separator {
    MaterialBinding {
      value PER_FACE_INDEXED
    }
    DEF faceVertexColorSoMaterialSet Material {
      ambientColor 0 0 0
      diffuseColor 0 0 0
      specularColor 0 0 0
      emissiveColor 0 0 0
      shininess 0
      transparency -0
    }
    DEF SoIFSVertexColor IndexedFaceSet {
      vertexProperty 
      USE vertexColorProperty
      coordIndex [ 0, 0, 0, -1 ]
      materialIndex 0
    }
  }
)"));
}

// Levels of detail

FltWriter::Fields lod(std::string const& name, double x, double y, double z, double in = 0, double out = 0)
{
    return named(name, {{"switchInDistance", in},
                        {"switchOutDistance", out},
                        {"XcenterCoordinate", x},
                        {"YcenterCoordinate", y},
                        {"ZcenterCoordinate", z}});
}

TEST(FltToInventorHierarchyTest, ALODStandsBetweenItsLabelsAndSharesThemWithAllOthers)
{
    FltWriter flt = openDatabase();
    flt.add("LOD", lod("near", 1, 0, 0, 100.5, 10)).add("Comment", {{"textDescription", "note"}}).push();
    addGroup(flt, "child").pop();
    flt.add("LOD", lod("far", 1.5, -2, 1e-3, 1e10, 100.5)).push();
    EXPECT_EQ(textOf(addGroup(flt, "child2").pop().pop()), rootWith(R"(  DEF near LOD {
    center 1 0 0
    range [ 10, 100.5 ]
    DEF _+0 Label {
      label "MinRangeLimitForLOD"
    }
    DEF near Separator {
      Info {
        string "note"
      }
      DEF child Separator {
      }
    }
    DEF _+1 Label {
      label "MaxRangeLimitForLOD"
    }
  }
  DEF far LOD {
    center 1.5 -2 0.001
    range [ 100.5, 1e+010 ]
    USE _+0
    DEF far Separator {
      DEF child2 Separator {
      }
    }
    USE _+1
  }
)"));
}

TEST(FltToInventorHierarchyTest, OtherFieldsOfALODHaveNoEffect)
{
    FltWriter flt = openDatabase();
    FltWriter::Fields fields = lod("l", 1, 2, 3, 9, 4);
    fields.insert(
        fields.end(),
        {{"transitionRange", 5}, {"id1specialEffect", 6}, {"id2specialEffect", 7}, {"flags", 0xffffffff}});
    EXPECT_EQ(textOf(flt.add("LOD", fields).push().pop().pop()), rootWith(R"(  DEF l LOD {
    center 1 2 3
    range [ 4, 9 ]
    Label {
      label "MinRangeLimitForLOD"
    }
    DEF l Separator {
    }
    Label {
      label "MaxRangeLimitForLOD"
    }
  }
)"));
}

TEST(FltToInventorHierarchyTest, TheLongIDOfALODNamesItsChildrensSeparatorAlone)
{
    FltWriter flt = openDatabase();
    flt.add("LOD", lod("l", 1, 2, 3)).add("LongID", named("long_name")).push().pop().pop();
    EXPECT_EQ(textOf(flt), rootWith(R"(  DEF l LOD {
    center 1 2 3
    range [ 0, 0 ]
    Label {
      label "MinRangeLimitForLOD"
    }
    DEF long_name Separator {
    }
    Label {
      label "MaxRangeLimitForLOD"
    }
  }
)"));
}

/// The centre of a LOD of this record that holds an Object between (2, 4, 6) and (4, 8, 12).
SbVec3f centreAroundGeometry(char const* record, FltWriter::Fields const& fields)
{
    FltWriter flt;
    flt.vertexPalette();
    double const a = flt.vertex("VertexColor", 2, 4, 6);
    double const b = flt.vertex("VertexColor", 4, 8, 12);
    flt.push().add(record, fields).push().add("Object", named("o")).push();
    ConvertedScene const scene(flt.face({a, b, b}).pop().pop().pop());
    return static_cast<SoLOD*>(scene.root->getChild(4))->center.getValue();
}

TEST(FltToInventorHierarchyTest, ALODWithCentre100KeepsIt)
{
    EXPECT_EQ(centreAroundGeometry("LOD", lod("l", 1, 0, 0)), SbVec3f(1, 0, 0));
    EXPECT_EQ(centreAroundGeometry("LOD", lod("l", 0, 1, 0)), SbVec3f(0, 1, 0));
    EXPECT_EQ(centreAroundGeometry("LOD", lod("l", 0, 0, -1e-30)), SbVec3f(0, 0, -1e-30F));
}

TEST(FltToInventorHierarchyTest, ALODWithCentre000TakesThatOfItsChildrensBox)
{
    EXPECT_EQ(centreAroundGeometry("LOD", lod("l", 0, 0, 0)), SbVec3f(3, 6, 9));
    EXPECT_EQ(centreAroundGeometry("LOD", lod("l", -0.0, 0, 0)), SbVec3f(3, 6, 9));
    // What a float doesn't tell from zero is zero.
    EXPECT_EQ(centreAroundGeometry("LOD", lod("l", 1e-300, 0, 0)), SbVec3f(3, 6, 9));
}

TEST(FltToInventorHierarchyTest, AFrozenCentreOf000IsRecomputed)
{
    FltWriter::Fields fields = lod("l", 0, 0, 0);
    fields.emplace_back("flags", 0x20000000);
    EXPECT_EQ(centreAroundGeometry("LOD", fields), SbVec3f(3, 6, 9));
}

TEST(FltToInventorHierarchyTest, ACentreThatHoldsANaNIsNotZeroAndIsKept)
{
    double const nan = std::numeric_limits<double>::quiet_NaN();
    SbVec3f const centre = centreAroundGeometry("LOD", lod("l", 0, nan, 0));
    EXPECT_EQ(centre[0], 0);
    EXPECT_TRUE(std::isnan(centre[1]));
    EXPECT_EQ(centre[2], 0);
}

TEST(FltToInventorHierarchyTest, ALODWithCentre000AndNoGeometryTakesTheCentreOfAnEmptyBox)
{
    FltWriter flt = openDatabase();
    EXPECT_EQ(textOf(flt.add("LOD", lod("l", 0, 0, 0, 2, 1)).push().pop().pop()), rootWith(R"(  DEF l LOD {
    center 0 0 0
    range [ 1, 2 ]
    Label {
      label "MinRangeLimitForLOD"
    }
    DEF l Separator {
    }
    Label {
      label "MaxRangeLimitForLOD"
    }
  }
)"));
}

TEST(FltToInventorHierarchyTest, TheBoxOfALODKnowsMatricesSwitchesAndNestedLODs)
{
    FltWriter flt;
    flt.vertexPalette();
    double const a = flt.vertex("VertexColor", 2, 4, 6);
    double const b = flt.vertex("VertexColor", 4, 8, 12);
    double const far = flt.vertex("VertexColor", 1000, 1000, 1000);
    flt.push().add("LOD", lod("outer", 0, 0, 0));
    flt.add("Matrix", {{"matrix", {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 10, 20, 30, 1}}}).push();
    flt.add("LOD", lod("inner", 0, 0, 0)).push();
    flt.add("Object", named("o")).push().face({a, b, b}).pop().pop();
    flt.add("Switch",
            named("hidden", {{"numberOfMasks", 1}, {"numberOf32BitWordsPerMask", 1}, {"masks", {0}}}));
    flt.push().add("Object", named("p")).push().face({far, far, far}).pop().pop();
    ConvertedScene const scene(flt.pop().pop());
    auto const centreOf = [&](char const* name) {
        return static_cast<SoLOD*>(scene.find(name))->center.getValue();
    };
    EXPECT_EQ(centreOf("inner"), SbVec3f(3, 6, 9));
    EXPECT_EQ(centreOf("outer"), SbVec3f(13, 26, 39));
}

TEST(FltToInventorHierarchyTest, LODsAroundTooMuchKeepTheirCentreAndThatIsToldOnce)
{
    FltWriter flt;
    flt.vertexPalette();
    double const a = flt.vertex("VertexColor", 2, 4, 6);
    flt.push();
    for (int i = 0; i < 44; ++i)
        flt.add("LOD", lod("lod" + std::to_string(i), 0, 0, 0)).push();
    // Each level doubles the nodes of the scene. The toolkit remembers their boxes, so that this is soon
    // done.
    for (int i = 0; i < 19; ++i)
        flt.add("Group")
            .add("Replicate", {{"numberOfReplications", 1}})
            .add("Matrix")
            .add("Matrix")
            .add("Text")
            .push();
    flt.add("Object", named("o")).push().face({a, a, a});
    ConvertedScene const scene(flt);
    EXPECT_EQ(scene.messages,
              "WARNING ! Levels of detail are nested too deeply: some keep a centre of (0, 0, 0)\n"
              "(Warning Level: 2)\n\n");
    // One and a half million nodes are in each, of which some twenty million are looked at.
    std::string withCentre;
    for (int i = 0; i < 44; ++i) {
        auto* const node = static_cast<SoLOD*>(scene.find("lod" + std::to_string(i)));
        withCentre += node->center.getValue() != SbVec3f(0, 0, 0) ? '1' : '0';
    }
    EXPECT_EQ(withCentre, times(31, "0") + times(13, "1"));
}

TEST(FltToInventorHierarchyTest, AnOLDLODIsConvertedAsALODWithItsWholeNumbers)
{
    FltWriter flt = openDatabase();
    flt.add("OLDLOD", named("old", {{"switchInDistance", 4294967295U},
                                    {"switchOutDistance", 2147483648U},
                                    {"flags", 0xffffffff},
                                    {"id1specialEffect", 1},
                                    {"XcenterCoordinate", -2147483648.0},
                                    {"YcenterCoordinate", -1},
                                    {"ZcenterCoordinate", 16777216}}));
    flt.add("Comment", {{"textDescription", "note"}}).push();
    EXPECT_EQ(textOf(addGroup(flt, "child").pop().pop()), rootWith(R"(  DEF old LOD {
    center -2.1474836e+009 -1 16777216
    range [ 2.1474836e+009, 4.2949673e+009 ]
    Label {
      label "MinRangeLimitForLOD"
    }
    DEF old Separator {
      Info {
        string "note"
      }
      DEF child Separator {
      }
    }
    Label {
      label "MaxRangeLimitForLOD"
    }
  }
)"));
}

TEST(FltToInventorHierarchyTest, AnOLDLODWithCentre000TakesThatOfItsChildrensBox)
{
    EXPECT_EQ(centreAroundGeometry("OLDLOD", named("l")), SbVec3f(3, 6, 9));
    EXPECT_EQ(centreAroundGeometry("OLDLOD", named("l", {{"YcenterCoordinate", 7}})), SbVec3f(0, 7, 0));
}

// Switches

FltWriter::Fields masks(int current, int count, int words, std::vector<double> const& values)
{
    return named("s", {{"indexOfCurrentMask", current},
                       {"numberOfMasks", count},
                       {"numberOf32BitWordsPerMask", words},
                       {"masks", values}});
}

/// Which of its children a converted switch draws: one digit for each.
std::string shownBy(SoNode* converted)
{
    auto* const group = static_cast<SoGroup*>(converted);
    std::string shown;
    for (int i = 1; i < group->getNumChildren(); ++i) {
        if (!group->getChild(i)->isOfType(SoSwitch::getClassTypeId()))
            continue;
        int const which = static_cast<SoSwitch*>(group->getChild(i))->whichChild.getValue();
        shown += which == SO_SWITCH_ALL ? '1' : which == SO_SWITCH_NONE ? '0' : '?';
    }
    return shown;
}

/// The same of a switch with so many children.
std::string shownChildren(FltWriter::Fields const& fields, int children)
{
    FltWriter flt = openDatabase();
    flt.add("Switch", fields).push();
    for (int i = 0; i < children; ++i)
        addGroup(flt, "c" + std::to_string(i));
    return shownBy(ConvertedScene(flt.pop().pop()).root->getChild(3));
}

TEST(FltToInventorHierarchyTest, ASwitchHoldsItsMasksAsTextAndEachChildInAWrapperThatIsOnOrOff)
{
    FltWriter flt = openDatabase();
    flt.add("Switch", masks(0, 1, 1, {0x80000005})).add("Comment", {{"textDescription", "note"}}).push();
    addGroup(flt, "one");
    addGroup(flt, "two");
    flt.add("Object", named("three")).push().pop();
    flt.add("Text", named("four")).add("Sound").pop().pop();
    ConvertedScene const scene(flt);
    EXPECT_EQ(scene.text(), rootWith(R"(  DEF s_(flt_switch) Separator {
    DEF SoInfo_child_of_FLT_switch Info {
      string "Current Mask:0 NumberOfWordsPerMask:1 numberOfMasks:1 Switch Masks:1 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 1 0 1   "
    }
    Info {
      string "note"
    }
    DEF child_of_s_(flt_switch) Switch {
      whichChild -3
      DEF one Separator {
      }
    }
    DEF child_of_s_(flt_switch) Switch {
      whichChild -1
      DEF two Separator {
      }
    }
    DEF child_of_s_(flt_switch) Switch {
      whichChild -3
      DEF three Separator {
        MaterialBinding {
          value PER_FACE_INDEXED
        }
      }
    }
    DEF child_of_s_(flt_switch) Switch {
      whichChild -1
      DEF four Separator {
      }
    }
  }
)"));
    EXPECT_EQ(scene.messages, "");
}

TEST(FltToInventorHierarchyTest, ChildrenOfASwitchTakeTheBitsOfAMaskFromTheLowestOn)
{
    EXPECT_EQ(shownChildren(masks(0, 1, 1, {0x00000001}), 4), "1000");
    EXPECT_EQ(shownChildren(masks(0, 1, 1, {0xfffffffe}), 4), "0111");
    EXPECT_EQ(shownChildren(masks(0, 1, 1, {0x80000000}), 32), times(31, "0") + "1");
    EXPECT_EQ(shownChildren(masks(0, 1, 1, {0x0000ff00}), 32),
              times(8, "0") + times(8, "1") + times(16, "0"));
}

TEST(FltToInventorHierarchyTest, TheCurrentMaskAloneCounts)
{
    std::vector<double> const words = {0x1, 0x2, 0x4};
    EXPECT_EQ(shownChildren(masks(0, 3, 1, words), 3), "100");
    EXPECT_EQ(shownChildren(masks(1, 3, 1, words), 3), "010");
    EXPECT_EQ(shownChildren(masks(2, 3, 1, words), 3), "001");
}

TEST(FltToInventorHierarchyTest, ACurrentMaskBehindTheLastOneShowsNothing)
{
    EXPECT_EQ(shownChildren(masks(3, 3, 1, {0xffffffff, 0xffffffff, 0xffffffff}), 33), times(32, "0") + "1");
    EXPECT_EQ(shownChildren(masks(2147483647, 1, 1, {0xffffffff}), 3), "000");
}

TEST(FltToInventorHierarchyTest, OfAMaskOfSeveralWordsTheFirst32ChildrenTakeTheLastWord)
{
    std::string const shown = shownChildren(masks(0, 1, 3, {0x1, 0x2, 0x4}), 96);
    EXPECT_EQ(shown.substr(0, 32), "001" + times(29, "0"));
    EXPECT_EQ(shown.substr(32, 32), "01" + times(30, "0"));
    EXPECT_EQ(shown.substr(64), "1" + times(31, "0"));
}

TEST(FltToInventorHierarchyTest, OfSeveralMasksOfSeveralWordsTheCurrentOneIsTaken)
{
    std::string const shown = shownChildren(masks(1, 2, 2, {0xffffffff, 0xffffffff, 0x1, 0x2}), 64);
    EXPECT_EQ(shown.substr(0, 32), "01" + times(30, "0"));
    EXPECT_EQ(shown.substr(32), "1" + times(31, "0"));
    // Children beyond the mask run into the one before.
    EXPECT_EQ(shownChildren(masks(1, 2, 1, {0x1, 0x0}), 34), times(32, "0") + "10");
}

/// The masks 0 to 199, of which each has the lowest bit, and mask 1 beside it the second.
FltWriter::Fields manyMasks(int current)
{
    std::vector<double> words(200, 0x1);
    words[11] = 0x2;
    words[1] = 0x3;
    return masks(current, 200, 1, words);
}

TEST(FltToInventorHierarchyTest, TheDigitSkipBreaksTheMaskIndices10And100To109)
{
    // The last digit of such an index is read again, and -1 is taken for the words of a mask.
    EXPECT_EQ(shownChildren(manyMasks(10), 3), "000");
    EXPECT_EQ(shownChildren(manyMasks(100), 3), "000");
    EXPECT_EQ(shownChildren(manyMasks(101), 3), "000");
    EXPECT_EQ(shownChildren(manyMasks(109), 3), "000");
}

TEST(FltToInventorHierarchyTest, MaskIndices11To99And110AreReadRight)
{
    EXPECT_EQ(shownChildren(manyMasks(9), 3), "100");
    EXPECT_EQ(shownChildren(manyMasks(11), 3), "010");
    EXPECT_EQ(shownChildren(manyMasks(12), 3), "100");
    EXPECT_EQ(shownChildren(manyMasks(99), 3), "100");
    EXPECT_EQ(shownChildren(manyMasks(110), 3), "100");
    EXPECT_EQ(shownChildren(manyMasks(199), 3), "100");
    EXPECT_EQ(shownChildren(manyMasks(1), 3), "110");
}

TEST(FltToInventorHierarchyTest, TenMasksAreReadRightForTheDigitReadAgainTakesThePlaceOfASeparator)
{
    std::vector<double> words(10, 0x0);
    words[3] = 0x5;
    EXPECT_EQ(shownChildren(masks(3, 10, 1, words), 4), "1010");
    EXPECT_EQ(shownChildren(masks(3, 9, 1, words), 4), "1010");
}

TEST(FltToInventorHierarchyTest, TenWordsPerMaskAreReadRight)
{
    std::vector<double> words(20, 0x0);
    words[19] = 0x5;
    words[10] = 0x80000000;
    EXPECT_EQ(shownChildren(masks(1, 2, 10, words), 320), "101" + times(316, "0") + "1");
}

TEST(FltToInventorHierarchyTest, ANegativeMaskIndexIsReadWithoutItsSign)
{
    EXPECT_EQ(shownChildren(masks(-1, 3, 1, {0x1, 0x2, 0x4}), 3), "010");
    EXPECT_EQ(shownChildren(masks(std::numeric_limits<int>::min(), 1, 1, {0xffffffff}), 3), "000");
}

TEST(FltToInventorHierarchyTest, ChildrenBeyondTheBitsRunIntoTheNumbersBeforeThemAndThenAreOff)
{
    // Behind the 32 bits: a separator, the number of masks, a separator, the words, a separator, the index.
    std::string const bits = times(32, "1");
    EXPECT_EQ(shownChildren(masks(0, 1, 1, {0xffffffff}), 60), bits + "010100" + times(22, "0"));
    EXPECT_EQ(shownChildren(masks(1, 2, 1, {0, 0xffffffff}), 100),
              bits + times(32, "0") + "000101" + times(30, "0"));
}

TEST(FltToInventorHierarchyTest, ASwitchWithoutMasksShowsNothing)
{
    EXPECT_EQ(shownChildren(masks(0, 0, 1, {}), 3), "000");
    EXPECT_EQ(shownChildren(masks(0, 1, 0, {}), 3), "010"); // the second child meets the number of masks
    EXPECT_EQ(shownChildren(masks(0, 0, 0, {}), 8), "00000000");
    EXPECT_EQ(shownChildren(masks(5, 0, 7, {}), 8), "00000000");
}

TEST(FltToInventorHierarchyTest, CountsThatMultiplyBeyondAllNumbersShowNothing)
{
    int const most = std::numeric_limits<int>::max();
    int const least = std::numeric_limits<int>::min();
    for (int const current : {most, least})
        for (int const words : {most, least})
            EXPECT_EQ(shownChildren(masks(current, 0, words, {}), 3), "000") << current << ' ' << words;
}

TEST(FltToInventorHierarchyTest, MasksThatTheRecordDoesNotHoldAreLeftOutOfTheText)
{
    FltWriter flt = openDatabase();
    flt.add("Switch", masks(0, 1000, 1000, {0x3})).push();
    ConvertedScene const scene(addGroup(flt, "child").pop().pop());
    EXPECT_NE(scene.text().find("numberOfMasks:1000 Switch Masks:" + times(30, "0 ") + "1 1   \"\n"),
              std::string::npos)
        << scene.text();
    EXPECT_NE(scene.messages.find("fewer mask words than its counts say"), std::string::npos);
}

TEST(FltToInventorHierarchyTest, ASwitchWithALongIDLosesItsMarkAndAllItsChildrenAreVisible)
{
    FltWriter flt = openDatabase();
    flt.add("Switch", masks(0, 1, 1, {0x0})).add("LongID", named("renamed")).push();
    addGroup(flt, "one");
    ConvertedScene const scene(addGroup(flt, "two").pop().pop());
    EXPECT_EQ(scene.text(), rootWith(R"(  DEF renamed Separator {
    DEF SoInfo_child_of_FLT_switch Info {
      string "Current Mask:0 NumberOfWordsPerMask:1 numberOfMasks:1 Switch Masks:0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0 0   "
    }
    DEF one Separator {
    }
    DEF two Separator {
    }
  }
)"));
    EXPECT_EQ(scene.messages, "");
}

TEST(FltToInventorHierarchyTest, ASwitchWhoseLongIDHoldsTheMarkStaysOne)
{
    FltWriter flt = openDatabase();
    flt.add("Switch", masks(0, 1, 1, {0x2})).add("LongID", named("a_flt_switch_again")).push();
    addGroup(flt, "one");
    ConvertedScene const scene(addGroup(flt, "two").pop().pop());
    auto* const group = static_cast<SoGroup*>(scene.root->getChild(3));
    ASSERT_EQ(group->getNumChildren(), 3);
    EXPECT_EQ(group->getChild(1)->getName(), SbName("child_of_a_flt_switch_again"));
    EXPECT_EQ(static_cast<SoSwitch*>(group->getChild(1))->whichChild.getValue(), SO_SWITCH_NONE);
    EXPECT_EQ(static_cast<SoSwitch*>(group->getChild(2))->whichChild.getValue(), SO_SWITCH_ALL);
}

TEST(FltToInventorHierarchyTest, AGroupWhoseNameHoldsTheMarkTakesTheSwitchPathAndTellsEachTime)
{
    for (char const* record : {"Group", "DOF"}) {
        FltWriter flt = openDatabase();
        flt.add(record, named("g")).add("LongID", named("xflt_switchx")).push();
        addGroup(flt, "one");
        addGroup(flt, "two");
        ConvertedScene const scene(addGroup(flt, "three").pop().pop());
        EXPECT_EQ(scene.text(), rootWith(R"(  DEF xflt_switchx Separator {
    DEF child_of_xflt_switchx Switch {
      whichChild -1
      DEF one Separator {
      }
    }
    DEF child_of_xflt_switchx Switch {
      whichChild -1
      DEF two Separator {
      }
    }
    DEF child_of_xflt_switchx Switch {
      whichChild -1
      DEF three Separator {
      }
    }
  }
)"));
        EXPECT_EQ(scene.messages, switchInfoIsMissing + switchInfoIsMissing + switchInfoIsMissing);
    }
}

TEST(FltToInventorHierarchyTest, NestedSwitchesWrapEachOther)
{
    FltWriter flt = openDatabase();
    FltWriter::Fields outer = masks(0, 1, 1, {0x2});
    FltWriter::Fields inner = masks(0, 1, 1, {0x1});
    inner.front() = {"idASCII", "t"};
    flt.add("Switch", outer).push();
    flt.add("Switch", inner).push();
    addGroup(flt, "a").pop();
    inner.front() = {"idASCII", "u"};
    flt.add("Switch", inner).push().pop().pop().pop();
    std::string const zeros = times(30, "0 ");
    EXPECT_EQ(textOf(flt), rootWith("  DEF s_(flt_switch) Separator {\n"
                                    "    DEF SoInfo_child_of_FLT_switch Info {\n"
                                    "      string \"Current Mask:0 NumberOfWordsPerMask:1 numberOfMasks:1 "
                                    "Switch Masks:" +
                                    zeros + R"(1 0   "
    }
    DEF child_of_s_(flt_switch) Switch {
      whichChild -1
      DEF t_(flt_switch) Separator {
        DEF SoInfo_child_of_FLT_switch Info {
          string "Current Mask:0 NumberOfWordsPerMask:1 numberOfMasks:1 Switch Masks:)" +
                                    zeros + R"(0 1   "
        }
        DEF child_of_t_(flt_switch) Switch {
          whichChild -3
          DEF a Separator {
          }
        }
      }
    }
    DEF child_of_s_(flt_switch) Switch {
      whichChild -3
      DEF u_(flt_switch) Separator {
        DEF SoInfo_child_of_FLT_switch Info {
          string "Current Mask:0 NumberOfWordsPerMask:1 numberOfMasks:1 Switch Masks:)" +
                                    zeros + R"(0 1   "
        }
      }
    }
  }
)"));
}

TEST(FltToInventorHierarchyTest, ALODBelowASwitchIsWrappedWhole)
{
    FltWriter flt = openDatabase();
    flt.add("Switch", masks(0, 1, 1, {0x1})).push().add("LOD", lod("l", 1, 2, 3, 5, 4)).push().pop();
    ConvertedScene const scene(flt.pop().pop());
    auto* const wrapper = static_cast<SoSwitch*>(scene.find("child_of_s_(flt_switch)"));
    ASSERT_NE(wrapper, nullptr);
    EXPECT_EQ(wrapper->whichChild.getValue(), SO_SWITCH_ALL);
    ASSERT_EQ(wrapper->getNumChildren(), 1);
    EXPECT_TRUE(wrapper->getChild(0)->isOfType(SoLOD::getClassTypeId()));
}

TEST(FltToInventorHierarchyTest, TheTextOfAnInfoNodeHoldsAllMasksInTheirOrder)
{
    FltToInventor converter;
    FltRecordSwitch record(36);
    record.indexOfCurrentMask = -3;
    record.numberOf32BitWordsPerMask = 1;
    record.numberOfMasks = 2;
    record.masks.reset(new std::int32_t[2]{0x40000001, -1});
    record.maskWordCount = 2;
    auto* info = new SoInfo;
    info->ref();
    converter.setFltSwitchPropertiesToSoInfo(info, &record);
    EXPECT_EQ(info->getName(), SbName("SoInfo_child_of_FLT_switch"));
    EXPECT_EQ(std::string(info->string.getValue().getString()),
              "Current Mask:-3 NumberOfWordsPerMask:1 numberOfMasks:2 Switch Masks:0 1 " + times(29, "0 ") +
                  "1   " + times(32, "1 ") + "  ");
    info->unref();
}

/// A group made by hand, with info nodes and switches.
class HandMadeSwitch
{
public:
    HandMadeSwitch() : group(new SoSeparator) { group->ref(); }
    ~HandMadeSwitch() { group->unref(); }

    HandMadeSwitch(HandMadeSwitch const&) = delete;
    HandMadeSwitch& operator=(HandMadeSwitch const&) = delete;

    HandMadeSwitch& info(char const* text, char const* name = "SoInfo_child_of_FLT_switch")
    {
        auto* const node = new SoInfo;
        node->setName(name);
        node->string = text;
        group->addChild(node);
        return *this;
    }

    HandMadeSwitch& child(SoNode* node)
    {
        group->addChild(node);
        return *this;
    }

    SoSeparator* group;
};

TEST(FltToInventorHierarchyTest, TheFirstInfoNodeOfTheRightNameHoldsTheMasks)
{
    FltToInventor converter;
    StreamCapture const err(std::cerr);
    HandMadeSwitch made;
    made.info("a comment", "")
        .info("another", "SoInfo_child")
        .child(new SoSwitch)
        .info("first")
        .info("second");
    EXPECT_STREQ(converter.getInfoStringFromAConvertedFltSwitch(made.group), "first");
    EXPECT_EQ(err.str(), "");
}

TEST(FltToInventorHierarchyTest, AGroupWithoutAnInfoNodeGivesATextOfItsOwnAndAMessage)
{
    FltToInventor converter;
    HandMadeSwitch made;
    auto* const notInfo = new SoSeparator;
    notInfo->setName("SoInfo_child_of_FLT_switch");
    made.child(notInfo);
    {
        StreamCapture const err(std::cerr);
        EXPECT_STREQ(converter.getInfoStringFromAConvertedFltSwitch(made.group), "No_SoInfo_switch_found");
        EXPECT_EQ(err.str(), switchInfoIsMissing);
    }
    StreamCapture const err(std::cerr);
    EXPECT_FALSE(converter.isSoSwitchTraverseHisChildren(made.group));
    EXPECT_EQ(err.str(), switchInfoIsMissing);
}

TEST(FltToInventorHierarchyTest, OnlyTheSwitchesAmongTheChildrenAreCounted)
{
    FltToInventor converter;
    HandMadeSwitch made;
    EXPECT_EQ(converter.currentNumberOfSwitchChildren(made.group), 0);
    made.info("text").child(new SoSwitch).child(new SoSeparator).child(new SoSwitch);
    EXPECT_EQ(converter.currentNumberOfSwitchChildren(made.group), 2);
}

TEST(FltToInventorHierarchyTest, TheNextChildIsAskedForByTheNumberOfSwitches)
{
    FltToInventor converter;
    HandMadeSwitch made;
    made.info(("0 1 1 :" + times(29, "0 ") + "1 0 1").c_str());
    EXPECT_TRUE(converter.isSoSwitchTraverseHisChildren(made.group));
    EXPECT_TRUE(converter.isSoSwitchTraverseHisChildren(made.group));
    made.child(new SoSeparator);
    EXPECT_TRUE(converter.isSoSwitchTraverseHisChildren(made.group));
    made.child(new SoSwitch);
    EXPECT_FALSE(converter.isSoSwitchTraverseHisChildren(made.group));
    made.child(new SoSwitch);
    EXPECT_TRUE(converter.isSoSwitchTraverseHisChildren(made.group));
    made.group->removeChild(made.group->getNumChildren() - 1);
    EXPECT_FALSE(converter.isSoSwitchTraverseHisChildren(made.group));
}

TEST(FltToInventorHierarchyTest, AGroupThatChangesOrComesAfterAnotherIsReadAnew)
{
    FltToInventor converter;
    std::string const on = "0 1 1 :" + times(31, "0 ") + "1";
    std::string const off = "0 1 1 :" + times(32, "0 ");
    for (int i = 0; i < 20; ++i) { // the toolkit makes the next group where the one before stood
        HandMadeSwitch made;
        made.info(i % 2 == 0 ? on.c_str() : off.c_str());
        EXPECT_EQ(converter.isSoSwitchTraverseHisChildren(made.group), i % 2 == 0);
        static_cast<SoInfo*>(made.group->getChild(0))->string = i % 2 == 0 ? off.c_str() : on.c_str();
        EXPECT_EQ(converter.isSoSwitchTraverseHisChildren(made.group), i % 2 != 0);
    }
}

TEST(FltToInventorHierarchyTest, NumbersThatNoCounterHoldsAreReadWithoutHarm)
{
    FltToInventor converter;
    for (char const* text : {"", "7", "7 ", "0 0", "0 99999999999999999999 1 1 1", "no digit at all",
                             "2147483647 2147483647 1 1 1 1", "4294967296 1 1 1", "1234567890123456789"}) {
        HandMadeSwitch made;
        made.info(text);
        EXPECT_FALSE(converter.isSoSwitchTraverseHisChildren(made.group)) << text;
    }
    // The rest of such a number is read again; what comes of it happens to lead to a bit.
    HandMadeSwitch made;
    made.info("99999999999999999999999999 1 1 1");
    EXPECT_TRUE(converter.isSoSwitchTraverseHisChildren(made.group));
}

TEST(FltToInventorHierarchyTest, ThousandsOfChildrenTakeTheirBitsWithOtherRecordsBetween)
{
    int const children = 6400;
    FltWriter flt;
    flt.vertexPalette();
    double const a = flt.vertex("VertexColor", 0, 0, 0);
    flt.push().add("Switch", masks(0, 1, children / 32, std::vector<double>(children / 32, 0x55555555)));
    flt.push();
    std::string expected;
    for (int i = 0; i < children; ++i) {
        addGroup(flt, "c" + std::to_string(i));
        if (i % 10 == 0)
            flt.face({a, a, a});
        expected += i % 2 == 0 ? '1' : '0';
    }
    ConvertedScene const scene(flt.pop().pop());
    EXPECT_EQ(shownBy(scene.find("s_(flt_switch)")), expected);
    EXPECT_EQ(scene.messages, "");
}

TEST(FltToInventorHierarchyTest, AMaskFarBeyondTheListOfBitsDrawsNoChild)
{
    for (int const mask : {0x7ffffffe, 0x7fffffff, 1 << 30})
        EXPECT_EQ(shownChildren(masks(mask, 1, 0x7fffffff, {0xffffffff}), 1), "0") << mask;
}

// Clip regions

FltWriter::Fields clip(std::string const& name, std::string const& flags,
                       std::vector<double> const& coefficients)
{
    return named(name, {{"flags", flags},
                        {"clipRegion1", {1, 2, 3}},
                        {"clipRegion4", {4, 5, 6}},
                        {"clipRegionCoefs", coefficients}});
}

TEST(FltToInventorHierarchyTest, AClipRegionAlwaysGivesFivePlanesBehindItsOtherChildren)
{
    FltWriter flt = openDatabase();
    flt.add("ClipRegion", clip("clip", std::string("\1\0\2\1\xff\1", 6),
                               {1, 0, 0, 0, 3, 0, 1, 0, 0, 4, 0, 0, 2, -1, 0, 1.5, -2.5, 3, 0, 10}));
    flt.add("Comment", {{"textDescription", "note"}});
    flt.add("Matrix", {{"matrix", {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 6, 7, 1}}}).pop();
    EXPECT_EQ(textOf(flt), rootWith(R"(  DEF clip Separator {
    Info {
      string "note"
    }
    MatrixTransform {
      matrix 1 0 0 0
        0 1 0 0
        0 0 1 0
        5 6 7 1
    }
    ClipPlane {
      plane 1 0 0  -1.5
      on TRUE
    }
    ClipPlane {
      plane 0 1 0  2.5
      on FALSE
    }
    ClipPlane {
      plane 0 0 1  -3
      on FALSE
    }
    ClipPlane {
      plane 0 0 -1  -0
      on TRUE
    }
    ClipPlane {
      plane 0.60000002 0.80000001 0  -10
      on FALSE
    }
  }
)"));
}

TEST(FltToInventorHierarchyTest, APlaneIsOnIfItsFlagIsExactly1)
{
    FltWriter flt = openDatabase();
    std::vector<double> const coefficients(20, 1);
    flt.add("ClipRegion", clip("a", std::string("\0\0\0\0\0\1", 6), coefficients)).add("Sound");
    flt.add("ClipRegion", clip("b", "\1\1\1\1\1", coefficients)).add("Sound");
    flt.add("ClipRegion", clip("c", "\x81\x31\xff\2\3", coefficients)).add("Sound");
    ConvertedScene const scene(flt.pop());
    auto const planesOf = [&](char const* name) {
        auto* const group = static_cast<SoGroup*>(scene.find(name));
        std::string on;
        for (int i = 0; i < group->getNumChildren(); ++i)
            on += static_cast<SoClipPlane*>(group->getChild(i))->on.getValue() ? '1' : '0';
        return on;
    };
    EXPECT_EQ(planesOf("a"), "00000");
    EXPECT_EQ(planesOf("b"), "11111");
    EXPECT_EQ(planesOf("c"), "00000");
}

TEST(FltToInventorHierarchyTest, CoefficientsOfNoPlaneAreTakenWithoutHarm)
{
    double const infinity = std::numeric_limits<double>::infinity();
    double const nan = std::numeric_limits<double>::quiet_NaN();
    for (double const value : {0.0, infinity, -infinity, nan, 1e300, 1e-300}) {
        FltWriter flt = openDatabase();
        flt.add("ClipRegion", clip("c", "\1\1\1\1\1", std::vector<double>(20, value))).add("Sound");
        ConvertedScene const scene(flt.pop());
        EXPECT_EQ(static_cast<SoGroup*>(scene.find("c"))->getNumChildren(), 5);
    }
}

TEST(FltToInventorHierarchyTest, TheRecordBehindATextOrAClipRegionIsPassedOver)
{
    for (char const* record : {"Text", "ClipRegion"}) {
        FltWriter flt = openDatabase();
        flt.add(record, named("n")).add("Comment").add("Group", named("passed"));
        ConvertedScene const scene(addGroup(flt, "next").pop());
        EXPECT_EQ(scene.find("passed"), nullptr);
        ASSERT_NE(scene.find("next"), nullptr);
        EXPECT_EQ(scene.root->getChild(4), scene.find("next"));
        EXPECT_EQ(scene.messages, "");
    }
}

TEST(FltToInventorHierarchyTest, ATextOrClipRegionFollowedByAPushGetsNoLevelAndItsPopClosesTheParents)
{
    for (char const* record : {"Text", "ClipRegion"}) {
        FltWriter flt = openDatabase();
        flt.add(record, named("n")).push();
        addGroup(flt, "a").pop(); // closes the level of the root
        addGroup(flt, "lost").pop();
        ConvertedScene const scene(flt);
        EXPECT_EQ(scene.root->getNumChildren(), 5);
        EXPECT_EQ(scene.root->getChild(4)->getName(), SbName("a"));
        EXPECT_EQ(scene.find("lost"), nullptr);
        EXPECT_EQ(scene.messages, popWithEmptyStack);
    }
}

TEST(FltToInventorHierarchyTest, ATextInALevelWithAPushBehindItEndsTheLevelAtItsOwnPop)
{
    FltWriter flt = openDatabase();
    flt.add("Group", named("g")).push().add("Text", named("t")).push();
    addGroup(flt, "a").pop(); // ends the walk over "g"
    addGroup(flt, "b").pop();
    ConvertedScene const scene(addGroup(flt, "lost").pop());
    EXPECT_EQ(scene.text(), rootWith(R"(  DEF g Separator {
    DEF t Separator {
    }
    DEF a Separator {
    }
  }
  DEF b Separator {
  }
)"));
    EXPECT_EQ(scene.messages, popWithEmptyStack);
}

TEST(FltToInventorHierarchyTest, ATextOrClipRegionFollowedByAPopLeavesTheLevelOpen)
{
    for (char const* record : {"Text", "ClipRegion"}) {
        FltWriter flt = openDatabase();
        flt.add("Group", named("g")).push().add(record, named("n")).pop();
        addGroup(flt, "inside").pop();
        ConvertedScene const scene(addGroup(flt, "behind").pop());
        auto* const group = static_cast<SoGroup*>(scene.find("g"));
        ASSERT_EQ(group->getNumChildren(), 2);
        EXPECT_EQ(group->getChild(1)->getName(), SbName("inside"));
        EXPECT_EQ(scene.root->getChild(4)->getName(), SbName("behind"));
        EXPECT_EQ(scene.messages, "");
    }
}

TEST(FltToInventorHierarchyTest, APushBehindALeafOpensTheLeaf)
{
    // The record behind the Text is passed over, so that the next Push is seen.
    FltWriter flt = openDatabase();
    flt.add("Text", named("t")).add("Sound").push();
    addGroup(flt, "below").pop();
    EXPECT_EQ(textOf(addGroup(flt, "next").pop()), rootWith(R"(  DEF t Separator {
    DEF below Separator {
    }
  }
  DEF next Separator {
  }
)"));
}

// Comments

/// The strings of the info nodes that a comment becomes.
std::vector<std::string> commentLines(std::string const& text)
{
    FltWriter flt = openDatabase();
    flt.add("Group", named("g")).add("Comment", {{"textDescription", text}}).push().pop().pop();
    ConvertedScene const scene(flt);
    auto* const group = static_cast<SoGroup*>(scene.find("g"));
    std::vector<std::string> lines;
    for (int i = 0; i < group->getNumChildren(); ++i)
        lines.emplace_back(static_cast<SoInfo*>(group->getChild(i))->string.getValue().getString());
    return lines;
}

using Lines = std::vector<std::string>;

TEST(FltToInventorHierarchyTest, ACommentOfOneLineIsOneInfoNode)
{
    EXPECT_EQ(commentLines("one line"), Lines{"one line"});
    EXPECT_EQ(commentLines("x"), Lines{"x"});
    EXPECT_EQ(commentLines("  blanks\tand \xe9 "), Lines{"  blanks\tand \xe9 "});
}

TEST(FltToInventorHierarchyTest, AnEmptyCommentIsNothing)
{
    EXPECT_EQ(commentLines(""), Lines{});
    EXPECT_EQ(commentLines(std::string(3, '\0')), Lines{});
}

TEST(FltToInventorHierarchyTest, ThePartBeforeTheFirstBreakIsLostAndTheLastLineComesTwice)
{
    EXPECT_EQ(commentLines("A\nB\nC"), (Lines{"B\nC", "C", "C"}));
    EXPECT_EQ(commentLines("A\nB"), (Lines{"B", "B"}));
    EXPECT_EQ(commentLines("A\nB\nC\nD"), (Lines{"B\nC\nD", "C\nD", "D", "D"}));
}

TEST(FltToInventorHierarchyTest, ACarriageReturnBreaksALineAsALineFeedDoes)
{
    EXPECT_EQ(commentLines("A\rB\rC"), (Lines{"B\rC", "C", "C"}));
    EXPECT_EQ(commentLines("A\rB\nC"), (Lines{"B\nC", "C", "C"}));
}

TEST(FltToInventorHierarchyTest, ACarriageReturnWithALineFeedIsOneBreak)
{
    EXPECT_EQ(commentLines("A\r\nB\r\nC"), (Lines{"B\r\nC", "C", "C"}));
}

TEST(FltToInventorHierarchyTest, ATrailingBreakGivesNothing)
{
    EXPECT_EQ(commentLines("A\n"), Lines{});
    EXPECT_EQ(commentLines("A\r"), Lines{});
    EXPECT_EQ(commentLines("A\r\n"), Lines{});
    EXPECT_EQ(commentLines("A\nB\n"), Lines{"B\n"});
    EXPECT_EQ(commentLines("A\r\nB\r\n"), Lines{"B\r\n"});
    EXPECT_EQ(commentLines("\n"), Lines{});
    EXPECT_EQ(commentLines("\r\n"), Lines{});
}

TEST(FltToInventorHierarchyTest, EmptyLinesAreTakenInPairsBetweenLineFeeds)
{
    EXPECT_EQ(commentLines("A\n\nB"), (Lines{"B", "B"}));
    EXPECT_EQ(commentLines("A\n\n\nB"), (Lines{"\nB", "B", "B"}));
    EXPECT_EQ(commentLines("A\n\n\n\nB"), (Lines{"\n\nB", "B", "B"}));
    EXPECT_EQ(commentLines("\nA"), (Lines{"A", "A"}));
    EXPECT_EQ(commentLines("\n\n\n"), Lines{"\n"});
}

TEST(FltToInventorHierarchyTest, EmptyLinesBetweenCarriageReturnsAreLinesOfTheirOwn)
{
    EXPECT_EQ(commentLines("A\r\rB"), (Lines{"\rB", "B", "B"}));
    EXPECT_EQ(commentLines("A\r\n\r\nB"), (Lines{"\r\nB", "B", "B"}));
    EXPECT_EQ(commentLines("A\n\rB"), (Lines{"\rB", "B", "B"}));
    EXPECT_EQ(commentLines("\r\r"), Lines{"\r"});
}

TEST(FltToInventorHierarchyTest, ACommentEndsAtItsFirstZero)
{
    EXPECT_EQ(commentLines(std::string("A\nB\0C\nD", 7)), (Lines{"B", "B"}));
}

TEST(FltToInventorHierarchyTest, CommentsStandAmongTheOtherAncillaryNodesInTheirOrder)
{
    FltWriter flt = openDatabase();
    flt.add("Object", named("o")).add("Comment", {{"textDescription", "head\nfirst\nlast"}});
    flt.add("Comment", {{"textDescription", "second"}}).pop();
    EXPECT_EQ(textOf(flt), rootWith(R"(  DEF o Separator {
    Info {
      string "first
last"
    }
    Info {
      string "last"
    }
    Info {
      string "last"
    }
    Info {
      string "second"
    }
  }
)"));
}

TEST(FltToInventorHierarchyTest, CommentsThatMultiplyAreBoundedAndToldOnce)
{
    FltWriter flt = openDatabase();
    flt.add("Group", named("g"));
    for (int i = 0; i < 4; ++i)
        flt.add("Comment", {{"textDescription", times(30000, "\nx")}});
    ConvertedScene const scene(flt.push().pop().pop());
    EXPECT_EQ(scene.messages, "WARNING ! The file's comments are too long: some are left out\n(Warning "
                              "Level: 2)\n\n");
    auto* const group = static_cast<SoGroup*>(scene.find("g"));
    std::size_t text = 0;
    for (int i = 0; i < group->getNumChildren(); ++i)
        text +=
            static_cast<std::size_t>(static_cast<SoInfo*>(group->getChild(i))->string.getValue().getLength());
    std::size_t const most = FltLimits::commentText.floor + 4 * 60100 * FltLimits::commentText.perByte;
    EXPECT_GT(text, most);
    EXPECT_LT(text, most + 65536);
}

// Matrices

TEST(FltToInventorHierarchyTest, ChildrenOfASwitchWithAVeryLongIdEndUpWithoutANameAndThatIsReportedOnce)
{
    int const length = 60000;
    std::string const id = "flt_switch" + std::string(length - 10, 'x');
    FltWriter flt = openDatabase();
    flt.add("Group", named("g")).add("LongID", named(id)).push();
    int const children = 300;
    for (int i = 0; i < children; ++i)
        addGroup(flt, "c");
    ConvertedScene const scene(flt.pop().pop());
    auto* const group = static_cast<SoGroup*>(scene.find(id));
    ASSERT_EQ(group->getNumChildren(), children);
    int withName = 0;
    for (int i = 0; i < children; ++i)
        withName += group->getChild(i)->getName().getLength() > 0 ? 1 : 0;
    EXPECT_GE(withName, FltLimits::switchNames.floor / length);
    EXPECT_LT(withName, children);
    EXPECT_EQ(countOf(scene.messages,
                      "WARNING ! Children of switches have too long names: some are left without one"),
              1);
}

TEST(FltToInventorHierarchyTest, AMatrixIsTakenAsItStands)
{
    FltWriter flt = openDatabase();
    flt.add("Group", named("g"));
    flt.add("Matrix", {{"matrix", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13.5, -14, 1e-5, 16}}});
    flt.add("Matrix").push().pop().pop();
    EXPECT_EQ(textOf(flt), rootWith(R"(  DEF g Separator {
    MatrixTransform {
      matrix 1 2 3 4
        5 6 7 8
        9 10 11 12
        13.5 -14 9.9999997e-006 16
    }
    MatrixTransform {
      matrix 0 0 0 0
        0 0 0 0
        0 0 0 0
        0 0 0 0
    }
  }
)"));
}

// Depth

/// A database of so many records of some kinds in turn, each below the one before if @p hasLevels. The
/// toolkit is slow with very many names, and with one name for very many nodes.
FltWriter chain(std::vector<std::string> const& records, int count, bool hasLevels)
{
    FltWriter flt = openDatabase();
    for (int i = 0; i < count; ++i) {
        flt.add(records[static_cast<std::size_t>(i) % records.size()], named("n" + std::to_string(i % 1000)));
        if (hasLevels)
            flt.push();
    }
    return flt;
}

TEST(FltToInventorHierarchyTest, AHundredThousandTextsAreSiblingsOfWhichEverySecondIsPassedOver)
{
    ConvertedScene const alone(chain({"Text"}, 100000, false));
    EXPECT_EQ(alone.root->getNumChildren(), 3 + 50000);
    EXPECT_EQ(alone.messages, "");
    EXPECT_GT(traverseScene(alone.root), 0U);
    ConvertedScene const levels(chain({"Text"}, 100000, true)); // each passes over its Push
    EXPECT_EQ(levels.root->getNumChildren(), 3 + 100000);
    EXPECT_EQ(levels.messages, "");
    EXPECT_GT(traverseScene(levels.root), 0U);
}

TEST(FltToInventorHierarchyTest, AHundredThousandObjectsInOneAnotherAreTheFacesOfTheFirst)
{
    for (bool const hasLevels : {false, true}) {
        ConvertedScene const scene(chain({"Object"}, 100000, hasLevels));
        EXPECT_EQ(scene.text(), rootWith(R"(  DEF n0 Separator {
    MaterialBinding {
      value PER_FACE_INDEXED
    }
  }
)"));
        EXPECT_EQ(scene.messages, "");
        EXPECT_GT(traverseScene(scene.root), 0U);
    }
}

/// The most nodes on a way from a group down.
int depthBelow(SoNode* node)
{
    struct Way {
        SoNode* node;
        int depth;
    };
    int deepest = 0;
    std::vector<Way> ways{{node, 0}};
    while (!ways.empty()) {
        Way const way = ways.back();
        ways.pop_back();
        deepest = std::max(deepest, way.depth);
        if (!way.node->isOfType(SoGroup::getClassTypeId()))
            continue;
        auto* const group = static_cast<SoGroup*>(way.node);
        for (int i = 0; i < group->getNumChildren(); ++i)
            ways.push_back({group->getChild(i), way.depth + 1});
    }
    return deepest;
}

TEST(FltToInventorHierarchyTest, AHundredThousandLODsOrSwitchesInOneAnotherAreCutAndToldOnce)
{
    std::vector<std::string> const kinds[] = {{"LOD"}, {"OLDLOD"}, {"Switch"}, {"LOD", "Switch"}};
    for (auto const& kind : kinds) {
        FltWriter flt = chain(kind, 100000, true);
        for (int i = 0; i < 100000; ++i)
            flt.pop();
        ConvertedScene const scene(addGroup(flt, "behind").pop());
        EXPECT_EQ(scene.result, 0);
        // A LOD and a switch's child take two nodes of the scene's depth each.
        EXPECT_EQ(scene.messages, sceneTooDeep + hierarchyTooDeep);
        EXPECT_LE(depthBelow(scene.root), FltLimits::sceneDepth + 2);
        EXPECT_GE(depthBelow(scene.root), FltLimits::sceneDepth - 2);
        EXPECT_EQ(scene.root->getNumChildren(), 5);
        EXPECT_EQ(scene.root->getChild(4), scene.find("behind"));
        EXPECT_GT(traverseScene(scene.root), 0U);
    }
}

TEST(FltToInventorHierarchyTest, ChainsOfNodesWithoutLevelsAreCutAndToldOnce)
{
    for (char const* kind : {"LOD", "Switch", "DOF"}) {
        ConvertedScene const scene(chain({kind}, 20000, false));
        EXPECT_EQ(scene.result, 0);
        EXPECT_EQ(scene.messages, (kind == std::string("DOF") ? "" : sceneTooDeep) + hierarchyTooDeep);
        EXPECT_LE(depthBelow(scene.root), FltLimits::sceneDepth + 2);
        EXPECT_EQ(scene.root->getNumChildren(), 3 + 1 + 19999 / (FltLimits::hierarchyDepth + 1));
        EXPECT_GT(traverseScene(scene.root), 0U);
    }
}

TEST(FltToInventorHierarchyTest, NestedSwitchesAndLODsOfARealDepthAreAllBuilt)
{
    for (char const* kind : {"LOD", "Switch"}) {
        ConvertedScene const scene(chain({kind}, 400, true));
        EXPECT_EQ(scene.messages, "");
        EXPECT_EQ(depthBelow(scene.root), 800);
        EXPECT_GT(traverseScene(scene.root), 0U);
    }
}

} // namespace
