#include "convert/FltToInventor.h"

#include "messages/FltLimits.h"
#include "records/FltRecordColorPalette.h"
#include "records/FltRecordControl.h"
#include "support/ConvertedScene.h"
#include "support/DirectConversion.h"
#include "support/ParsedRecords.h"
#include "support/SceneTraversal.h"
#include "support/Text.h"

#include <Inventor/nodes/SoSeparator.h>
#include <gtest/gtest.h>

namespace
{

std::string const popWithEmptyStack =
    "WARNING ! trying a pop() but stack is empty! (File corrupted ?)\n(Warning Level: 2)\n\n";

std::string const nestedTooDeep =
    "WARNING ! The hierarchy is nested deeper than 1200 levels: what lies deeper is left out\n(Warning "
    "Level: 2)\n\n";

FltWriter::Fields named(std::string const& name)
{
    return {{"idASCII", name}};
}

// Header

/// The scene of a header in units of which so many metres are one.
std::string rootScaledBy(std::string const& factor)
{
    std::string text = rootWith("");
    return text.insert(text.find('\n') + 1,
                       "  Scale {\n    scaleFactor " + factor + " " + factor + " " + factor + "\n  }\n");
}

std::string headerScene(int revision, int units, int multiplier = 1)
{
    return ConvertedScene(
               FltWriter(revision, {{"vertexCoordinateUnits", units}, {"multiplierDiviserUnit", multiplier}}))
        .text();
}

TEST(FltToInventorDispatchTest, AHeaderMakesTheRootWithItsScaleShapeHintsAndBindings)
{
    EXPECT_EQ(headerScene(1570, 1), R"(DEF root Separator {
  Scale {
    scaleFactor 1000 1000 1000
  }
  ShapeHints {
    vertexOrdering COUNTERCLOCKWISE
    shapeType SOLID
  }
  TextureCoordinateBinding {
    value PER_VERTEX_INDEXED
  }
  NormalBinding {
    value PER_VERTEX_INDEXED
  }
}
)");
}

TEST(FltToInventorDispatchTest, AFileInMetresOfARevisionFrom13OnHasNoScale)
{
    EXPECT_EQ(headerScene(13, 0), R"(DEF root Separator {
  ShapeHints {
    vertexOrdering COUNTERCLOCKWISE
    shapeType SOLID
  }
  TextureCoordinateBinding {
    value PER_VERTEX_INDEXED
  }
  NormalBinding {
    value PER_VERTEX_INDEXED
  }
}
)");
    EXPECT_EQ(headerScene(1580, 0, 7), rootWith(""));
}

TEST(FltToInventorDispatchTest, EachUnitIsScaledToMetres)
{
    EXPECT_EQ(headerScene(1570, 0), rootWith(""));
    EXPECT_EQ(headerScene(1570, 1), rootScaledBy("1000"));
    EXPECT_EQ(headerScene(1570, 2), rootWith(""));
    EXPECT_EQ(headerScene(1570, 3), rootWith(""));
    EXPECT_EQ(headerScene(1570, 4), rootScaledBy("0.3048"));
    EXPECT_EQ(headerScene(1570, 5), rootScaledBy("0.0254"));
    EXPECT_EQ(headerScene(1570, 6), rootWith(""));
    EXPECT_EQ(headerScene(1570, 7), rootWith(""));
    EXPECT_EQ(headerScene(1570, 8), rootScaledBy("1852"));
}

TEST(FltToInventorDispatchTest, AUnitOf9OrMoreScalesBy1)
{
    for (int const unit : {9, 10, 127, 128, 255})
        EXPECT_EQ(headerScene(1570, unit), rootWith("")) << unit;
}

TEST(FltToInventorDispatchTest, Units1AtRevision12WithAMultiplierOfMinus2ScaleBy500)
{
    EXPECT_EQ(headerScene(12, 1, -2), rootScaledBy("500"));
    EXPECT_EQ(headerScene(11, 1, -2), rootScaledBy("500"));
}

TEST(FltToInventorDispatchTest, UpToRevision12TheMultiplierCountsWithEveryUnit)
{
    EXPECT_EQ(headerScene(12, 0, 1), rootWith(""));
    EXPECT_EQ(headerScene(12, 0, -1), rootWith(""));
    EXPECT_EQ(headerScene(12, 0, 10), rootScaledBy("10"));
    EXPECT_EQ(headerScene(12, 0, -4), rootScaledBy("0.25"));
    EXPECT_EQ(headerScene(12, 8, 2), rootScaledBy("3704"));
    EXPECT_EQ(headerScene(12, 200, 3), rootScaledBy("3"));
    EXPECT_EQ(headerScene(12, 1, -1000), rootWith(""));
    EXPECT_EQ(headerScene(12, 0, 32767), rootScaledBy("32767"));
    EXPECT_EQ(headerScene(12, 0, -32768), rootScaledBy("3.0517578e-005"));
}

TEST(FltToInventorDispatchTest, AMultiplierOf0ScalesTheSceneToNothing)
{
    EXPECT_EQ(headerScene(12, 1, 0), rootScaledBy("0"));
}

TEST(FltToInventorDispatchTest, FromRevision13OnTheMultiplierIsIgnored)
{
    EXPECT_EQ(headerScene(13, 1, -2), rootScaledBy("1000"));
    EXPECT_EQ(headerScene(13, 0, 0), rootWith(""));
    EXPECT_EQ(headerScene(1570, 4, 100), rootScaledBy("0.3048"));
}

TEST(FltToInventorDispatchTest, AHeaderAloneLeavesTheRootWithItsNodesAndNoLevelOpen)
{
    ConvertedScene const alone{FltWriter()};
    EXPECT_EQ(alone.text(), rootWith(""));
    EXPECT_EQ(alone.messages, "");
    EXPECT_EQ(ConvertedScene(FltWriter().pop()).messages, popWithEmptyStack);
}

TEST(FltToInventorDispatchTest, AHeaderWithoutAResultMakesTheRoot)
{
    FltToInventor converter;
    FltRecordHeader header(324);
    header.formatRevisionLevel = 1570;
    EXPECT_EQ(converter.getResult(), nullptr);
    converter.visitHeader(&header);
    SoSeparator* const root = converter.getResult();
    ASSERT_NE(root, nullptr);
    EXPECT_EQ(root->getRefCount(), 1);
    EXPECT_EQ(root->getName(), SbName("root"));
    EXPECT_EQ(root->getNumChildren(), 3);
    root->unref();
}

TEST(FltToInventorDispatchTest, ASecondHeaderAddsItsNodesAndHoldsTheRootOnceMore)
{
    FltWriter flt;
    flt.push().add("Group", named("g")).push().add("Header", {{"formatRevisionLevel", 1570}}).pop();
    flt.push().add("Group", named("h")).push().pop().pop().pop();
    ConvertedScene const scene(flt);
    EXPECT_EQ(scene.rootReferences, 2);
    EXPECT_EQ(scene.text(), rootWith(R"(  DEF g Separator {
  }
  ShapeHints {
    vertexOrdering COUNTERCLOCKWISE
    shapeType SOLID
  }
  TextureCoordinateBinding {
    value PER_VERTEX_INDEXED
  }
  NormalBinding {
    value PER_VERTEX_INDEXED
  }
  DEF h Separator {
  }
)"));
}

// Levels

TEST(FltToInventorDispatchTest, ANodeBeforeTheFirstPushFindsNoLevelAndIsNotAttached)
{
    FltWriter flt;
    flt.add("Group", named("lost")).push().add("Group", named("inside")).push().pop().pop();
    flt.push().add("Group", named("kept")).push().pop().pop();
    ConvertedScene const scene(flt);
    // The Push behind a Pop opens the node that was made last: here one that hangs nowhere.
    EXPECT_EQ(scene.text(), rootWith(""));
    EXPECT_EQ(scene.messages, "");
}

TEST(FltToInventorDispatchTest, APopAtTopLevelWithNoLevelOpenIsToldAndALaterPushStillWorks)
{
    FltWriter flt;
    flt.pop().pop().push().add("Group", named("g")).push().pop().pop();
    ConvertedScene const scene(flt);
    EXPECT_EQ(scene.messages, popWithEmptyStack + popWithEmptyStack);
    EXPECT_EQ(scene.text(), rootWith("  DEF g Separator {\n  }\n"));
}

TEST(FltToInventorDispatchTest, LevelsMayBeOpenAtTheEnd)
{
    FltWriter flt;
    flt.push().push().add("Group", named("g")).push().push();
    ConvertedScene const scene(flt);
    EXPECT_EQ(scene.messages, "");
    EXPECT_EQ(scene.text(), rootWith("  DEF g Separator {\n  }\n"));
}

TEST(FltToInventorDispatchTest, APopDoesNotChangeTheGroupThatTheNextPushOpens)
{
    FltWriter flt;
    flt.push().add("Group", named("g")).push().add("Group", named("h")).push().pop().pop();
    flt.push().add("Group", named("i")).push().pop().pop();
    flt.add("Group", named("j")).push().pop().pop();
    EXPECT_EQ(ConvertedScene(flt).text(), rootWith(R"(  DEF g Separator {
    DEF h Separator {
      DEF i Separator {
      }
    }
  }
  DEF j Separator {
  }
)"));
}

TEST(FltToInventorDispatchTest, EveryPushOfALevelOpensTheNodeMadeLast)
{
    FltWriter flt;
    flt.push().add("Group", named("g")).push().push().add("Group", named("h")).push().push();
    flt.add("Group", named("i")).push().pop().pop().pop().add("Group", named("j")).push().pop();
    flt.pop().pop().pop();
    EXPECT_EQ(ConvertedScene(flt).text(), rootWith(R"(  DEF g Separator {
    DEF h Separator {
      DEF i Separator {
      }
    }
    DEF j Separator {
    }
  }
)"));
}

// Children of a node

TEST(FltToInventorDispatchTest, TheNodesOfALevelAreTheChildrenInOrder)
{
    FltWriter flt;
    flt.push().add("Group", named("a")).push();
    flt.add("Group", named("b")).push().add("Group", named("c")).push().pop().pop();
    flt.add("Group", named("d")).push().pop();
    flt.pop().add("Group", named("e")).push().pop().pop();
    EXPECT_EQ(ConvertedScene(flt).text(), rootWith(R"(  DEF a Separator {
    DEF b Separator {
      DEF c Separator {
      }
    }
    DEF d Separator {
    }
  }
  DEF e Separator {
  }
)"));
}

TEST(FltToInventorDispatchTest, AGroupFollowedAtOnceByAGroupTakesItAsItsChild)
{
    FltWriter flt;
    flt.push().add("Group", named("a")).add("Group", named("b")).add("Group", named("c")).push();
    flt.add("Group", named("d")).push().pop().pop().add("Group", named("e")).push().pop().pop();
    EXPECT_EQ(ConvertedScene(flt).text(), rootWith(R"(  DEF a Separator {
    DEF b Separator {
      DEF c Separator {
        DEF d Separator {
        }
      }
    }
  }
  DEF e Separator {
  }
)"));
}

TEST(FltToInventorDispatchTest, AGroupFollowedByAPopStepsOverIt)
{
    // So the level around it stays open.
    FltWriter flt;
    flt.push().add("Group", named("a")).push().add("Group", named("b")).pop();
    flt.add("Group", named("c")).push().pop().pop().add("Group", named("d")).push().pop().pop();
    ConvertedScene const scene(flt);
    EXPECT_EQ(scene.text(), rootWith(R"(  DEF a Separator {
    DEF b Separator {
    }
    DEF c Separator {
    }
  }
  DEF d Separator {
  }
)"));
    EXPECT_EQ(scene.messages, "");
}

TEST(FltToInventorDispatchTest, WithoutALevelARecordThatMakesNoNodeIsTheOneChildAllTheSame)
{
    FltWriter flt;
    flt.push().add("Group", named("a")).push().add("Group", named("b")).add("Sound");
    flt.add("Group", named("c")).push().pop().pop().pop();
    EXPECT_EQ(ConvertedScene(flt).text(), rootWith(R"(  DEF a Separator {
    DEF b Separator {
    }
    DEF c Separator {
    }
  }
)"));
}

/// Children visited from the record at @p index on, below a group of an open level. @return where the walk
/// ended
int visitChildren(DirectConversion& conversion, ParsedRecords const& records, int index)
{
    conversion.converter.visitPushLevel();
    ParsedRecords::Iterator iterator = records.at(index);
    conversion.converter.visitGroupChildren(iterator);
    conversion.converter.visitPopLevel();
    return records.indexOf(iterator);
}

TEST(FltToInventorDispatchTest, TheWalkOverALevelEndsOnThePopThatClosesIt)
{
    FltWriter flt; // header, then
    flt.push().add("Group").push().pop().push().pop().pop().add("Group");
    DirectConversion conversion;
    ParsedRecords const records(flt);
    EXPECT_EQ(visitChildren(conversion, records, 1), 7);
    EXPECT_EQ(conversion.root->getNumChildren(), 4);
}

TEST(FltToInventorDispatchTest, TheWalkOverOneChildEndsOnTheLastRecordOfTheChild)
{
    FltWriter flt;
    flt.add("Group").add("LongID", {{"idASCII", "x"}}).push().pop().add("Group").pop();
    DirectConversion conversion;
    ParsedRecords const records(flt);
    EXPECT_EQ(visitChildren(conversion, records, 1), 4);
    EXPECT_EQ(visitChildren(conversion, records, 6), 6); // a Pop
}

TEST(FltToInventorDispatchTest, AWalkThatMeetsTheEndStopsOnIt)
{
    FltWriter flt;
    flt.push().add("Group").push();
    DirectConversion conversion;
    ParsedRecords const records(flt);
    EXPECT_EQ(visitChildren(conversion, records, 1), records.end());
    EXPECT_EQ(visitChildren(conversion, records, 2), records.end());
    EXPECT_EQ(visitChildren(conversion, records, records.end()), records.end());
}

// The table of primary records

TEST(FltToInventorDispatchTest, EveryPrimaryRecordWithARowReachesItsHandler)
{
    FltWriter flt;
    flt.vertexPalette();
    double const a = flt.vertex("VertexColor", 1, 2, 3);
    flt.push();
    flt.add("Group", named("group")).push().pop();
    flt.add("OLDLOD", {{"idASCII", "oldlod"}, {"switchInDistance", 9}, {"XcenterCoordinate", 1}})
        .push()
        .pop();
    flt.add("Object", named("object")).push().pop();
    flt.face({a, a, a});
    flt.add("DOF", named("dof")).push().pop();
    flt.add("ExternalReference", {{"asciiPath", "missing.flt"}});
    flt.add("LOD", {{"idASCII", "lod"}, {"switchInDistance", 7}, {"XcenterCoordinate", 1}}).push().pop();
    flt.add("Switch", named("switch")).push().pop();
    flt.add("Text", named("text")).add("Group", named("behind"));
    flt.add("ClipRegion", named("clip")).add("Group", named("behind"));
    ConvertedScene const scene(flt.pop());
    EXPECT_EQ(scene.text(), rootWith(R"(  DEF vertexPropertyPalette Switch {
    whichChild -1
    DEF vertexColorProperty VertexProperty {
      vertex 1 2 3
      orderedRGBA [  ]
    }
  }
  DEF group Separator {
  }
  DEF oldlod LOD {
    center 1 0 0
    range [ 0, 9 ]
    Label {
      label "MinRangeLimitForLOD"
    }
    DEF oldlod Separator {
    }
    Label {
      label "MaxRangeLimitForLOD"
    }
  }
  DEF object Separator {
    MaterialBinding {
      value PER_FACE_INDEXED
    }
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
    coordIndex [ 0, 0, 0, -1 ]
    materialIndex 0
  }
  DEF dof Separator {
  }
  Separator {
    Label {
      label "From OpenFlight File:  missing.flt"
    }
  }
  DEF switch_(flt_switch) Separator {
    DEF SoInfo_child_of_FLT_switch Info {
      string "Current Mask:0 NumberOfWordsPerMask:0 numberOfMasks:0 Switch Masks:"
    }
  }
  DEF text Separator {
  }
  DEF clip Separator {
    ClipPlane {
      plane 0 0 0  -0
      on FALSE
    }
    ClipPlane {
      plane 0 0 0  -0
      on FALSE
    }
    ClipPlane {
      plane 0 0 0  -0
      on FALSE
    }
    ClipPlane {
      plane 0 0 0  -0
      on FALSE
    }
    ClipPlane {
      plane 0 0 0  -0
      on FALSE
    }
  }
)"));
    EXPECT_EQ(scene.messages, "ERROR! CAN'T RESOLVE EXTERNAL REFERENCE: missing.flt\n(Warning Level: 3)\n\n");
}

TEST(FltToInventorDispatchTest, PrimaryRecordsWithoutARowStopThere)
{
    FltWriter flt;
    flt.push().add("Group", named("a")).push();
    for (char const* record : {"OldVertex", "OldVertexColor", "OldVertexColorNormal", "VertexList",
                               "MorphVertexList", "Sound", "LightSource", "LightPoint"})
        flt.add(record);
    flt.add("Group", named("b")).push().pop().pop();
    for (char const* record : {"OldVertex", "OldVertexColor", "OldVertexColorNormal", "VertexList",
                               "MorphVertexList", "Sound", "LightSource", "LightPoint"})
        flt.add(record);
    ConvertedScene const scene(flt.add("Group", named("c")).push().pop().pop());
    EXPECT_EQ(scene.text(), rootWith(R"(  DEF a Separator {
    DEF b Separator {
    }
  }
  DEF c Separator {
  }
)"));
    EXPECT_EQ(scene.messages, "");
}

TEST(FltToInventorDispatchTest, BelowANodeRecordsOfOtherCategoriesArePassedOver)
{
    FltWriter flt;
    flt.vertexPalette();
    flt.vertex("VertexColor", 1, 2, 3);
    flt.push().add("Group", named("a")).push();
    for (char const* record :
         {"PushSubface", "PopSubface", "PushExtension", "PopExtension", "InstanceDefinition",
          "InstanceReference", "ColorPalette", "Material", "VertexPalette", "VertexColor", "LineStylePalette",
          "NamePalette", "EyePointTrackPlane", "TextureMappingPalette", "Replicate", "BoundingBox"})
        flt.add(record);
    flt.add("Comment", {{"textDescription", "nobody's"}}).addRaw(99).addRaw(115).addRaw(32000);
    flt.add("Group", named("b")).push().pop().pop().pop();
    ConvertedScene const scene(flt);
    EXPECT_EQ(scene.text(), rootWith(R"(  DEF vertexPropertyPalette Switch {
    whichChild -1
    DEF vertexColorProperty VertexProperty {
      vertex 1 2 3
      orderedRGBA [  ]
    }
  }
  DEF a Separator {
    DEF b Separator {
    }
  }
)"));
    EXPECT_EQ(scene.messages, "");
}

TEST(FltToInventorDispatchTest, AnOpcodeAboveThatOfTheLastRowDoesNothing)
{
    ParsedRecords const records(FltWriter().add("ExtensionAttribute").add("LightPoint").addRaw(99));
    DirectConversion conversion;
    conversion.converter.visitPushLevel();
    for (int i = 1; i < records.end(); ++i) {
        ParsedRecords::Iterator iterator = records.at(i);
        conversion.converter.visitPrimaryRecord(iterator);
        EXPECT_EQ(records.indexOf(iterator), i);
    }
    EXPECT_EQ(conversion.root->getNumChildren(), 3);
}

// Control records

TEST(FltToInventorDispatchTest, SubfaceAndExtensionLevelsHaveNoEffectAtTopLevel)
{
    FltWriter flt;
    flt.add("PopSubface").add("PopExtension").add("PushSubface").add("PushExtension");
    flt.push().add("PushSubface").add("Group", named("a")).push().pop().add("PopSubface");
    flt.add("PushExtension").add("Group", named("b")).push().pop().add("PopExtension").pop();
    ConvertedScene const scene(flt);
    EXPECT_EQ(scene.text(), rootWith("  DEF a Separator {\n  }\n  DEF b Separator {\n  }\n"));
    EXPECT_EQ(scene.messages, "");
}

TEST(FltToInventorDispatchTest, InstanceRecordsAreDispatchedAtTopLevel)
{
    FltWriter flt;
    flt.push().add("InstanceDefinition", {{"instanceDefinitionNumber", 2}}).push();
    flt.add("Group", named("a")).push().pop().pop();
    flt.add("InstanceReference", {{"instanceDefinitionNumber", 2}}).pop();
    EXPECT_EQ(ConvertedScene(flt).text(), rootWith(R"(  DEF InstanceDefinition_2 Separator {
    DEF a Separator {
    }
  }
  USE InstanceDefinition_2
)"));
}

// Palettes

TEST(FltToInventorDispatchTest, EveryPaletteWithARowReachesItsHandler)
{
    FltWriter flt;
    flt.add("ColorPalette", {{"color", {0xff000000, 0xff0000ff, 0xff00ff00}}});
    flt.add("TexturePattern", {{"fileName", "none.rgb"}, {"patternIndex", 4}});
    flt.add("LineStylePalette", {{"lineStyleIndex", 6}, {"patternMask", 0x0f0f}, {"lineWidth", 3}});
    flt.add("Material", {{"index", 5}, {"diffuse", {0.5, 0.25, 0.75}}, {"alpha", 1}});
    flt.vertexPalette();
    double const a = flt.vertex("VertexColor", 0, 0, 0);
    double const b = flt.vertex("VertexColor", 1, 0, 0);
    double const c = flt.vertex("VertexColor", 0, 1, 0);
    flt.vertex("VertexColorNormal", 2, 0, 0);
    flt.vertex("VertexColorUv", 3, 0, 0);
    flt.vertex("VertexColorNormalUv", 4, 0, 0);
    flt.push().add("Object", named("o")).push();
    flt.face({a, b, c}, {{"materialIndex", 5}, {"texturePatternIndex", 4}, {"flags", 0x40000000}});
    flt.face({a, b, c}, {{"primaryColorIndex", 2 * 128 + 127}});
    ConvertedScene const scene(flt.pop().pop());
    EXPECT_EQ(scene.text(), rootWith(R"(  DEF vertexPropertyPalette Switch {
    whichChild -1
    DEF vertexColorProperty VertexProperty {
      vertex [ 0 0 0,
          1 0 0,
          0 1 0 ]
      orderedRGBA [  ]
    }
    DEF vertexColorNormalProperty VertexProperty {
      vertex 2 0 0
      normal 0 0 0
      orderedRGBA [  ]
    }
    DEF vertexColorUVProperty VertexProperty {
      vertex 3 0 0
      texCoord 0 0
      orderedRGBA [  ]
    }
    DEF vertexColorNormalUVProperty VertexProperty {
      vertex 4 0 0
      normal 0 0 0
      texCoord 0 0
      orderedRGBA [  ]
    }
  }
  DEF o Separator {
    MaterialBinding {
      value PER_FACE_INDEXED
    }
    DEF faceVertexColorSoMaterialSet Material {
      ambientColor [ 0 0 0,
          0 1 0 ]
      diffuseColor [ 0.5 0.25 0.75,
          0 1 0 ]
      specularColor [ 0 0 0,
          0 0 0 ]
      emissiveColor [ 0 0 0,
          0 0 0 ]
      shininess [ 0, 0 ]
      transparency [ 0, 0 ]
    }
    DEF SoIFSVertexColor IndexedFaceSet {
      vertexProperty 
      USE vertexColorProperty
      coordIndex [ 0, 1, 2, -1 ]
      materialIndex 1
    }
    DEF isolateTexturesNodes Separator {
      Texture2 {
        filename "none.rgb"
      }
      DEF SoIFSVertexColor IndexedFaceSet {
        vertexProperty 
        USE vertexColorProperty
        coordIndex [ 0, 1, 2, -1 ]
        materialIndex 0
      }
    }
  }
)"));
}

TEST(FltToInventorDispatchTest, PalettesOfNoUseInTheSceneDoNothing)
{
    FltWriter flt;
    for (char const* record : {"VertexPalette", "EyePointTrackPlane", "SoundPaletteTable",
                               "LightSourcePalette", "TextureMappingPalette"})
        flt.add(record);
    ConvertedScene const scene(flt.push().pop());
    EXPECT_EQ(scene.text(), rootWith(""));
    EXPECT_EQ(scene.messages, "");
}

// Ancillary records

TEST(FltToInventorDispatchTest, AncillaryRecordsAreAppliedInTheirOrder)
{
    FltWriter flt;
    flt.push().add("Group", named("short")).add("Comment", {{"textDescription", "one"}});
    flt.add("Matrix", {{"matrix", {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 6, 7, 1}}});
    flt.add("LongID", {{"idASCII", "first long name"}});
    flt.add("Comment", {{"textDescription", "two"}}).add("LongID", {{"idASCII", "last_long_name"}});
    flt.push().add("Group", named("child")).push().pop().pop().pop();
    EXPECT_EQ(ConvertedScene(flt).text(), rootWith(R"(  DEF last_long_name Separator {
    Info {
      string "one"
    }
    MatrixTransform {
      matrix 1 0 0 0
        0 1 0 0
        0 0 1 0
        5 6 7 1
    }
    Info {
      string "two"
    }
    DEF child Separator {
    }
  }
)"));
}

TEST(FltToInventorDispatchTest, AncillaryRecordsWithoutUseInTheScenePassInSilence)
{
    FltWriter flt;
    flt.push().add("Group", named("g"));
    for (char const* record : {"Vector", "OldBoundingBox", "Multitexture", "BoundingBox", "RotateAboutEdge",
                               "Translate", "ScaleNonUniform", "RotateAboutPoint", "PutTransform",
                               "GeneralMatrix", "ExtensionAttribute", "BoundingVolumeSphere",
                               "BoundingVolumeCylinder", "BoundingVolumeCenter", "BoundingVolumeOrientation"})
        flt.add(record);
    flt.add("Comment", {{"textDescription", "the run goes on to here"}}).push().pop().pop();
    ConvertedScene const scene(flt);
    EXPECT_EQ(scene.text(), rootWith(R"(  DEF g Separator {
    Info {
      string "the run goes on to here"
    }
  }
)"));
    EXPECT_EQ(scene.messages, "");
}

TEST(FltToInventorDispatchTest, AReplicateGetsTheElementsBehindIt)
{
    FltWriter flt;
    flt.push().add("Group", named("g")).add("Replicate", {{"numberOfReplications", 1}});
    flt.add("Matrix", {{"matrix", {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 5, 0, 0, 1}}});
    flt.add("Matrix", {{"matrix", {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 6, 0, 0, 1}}});
    flt.add("Group", named("passed")).push().pop().pop();
    EXPECT_EQ(ConvertedScene(flt).text(), rootWith(R"(  DEF g Separator {
  }
  DEF Replications Separator {
    MatrixTransform {
      matrix 1 0 0 0
        0 1 0 0
        0 0 1 0
        6 0 0 1
    }
    USE g
  }
)"));
}

TEST(FltToInventorDispatchTest, AncillaryRecordsAtTopLevelWithNoNodeBeforeThemDoNothing)
{
    FltWriter flt;
    flt.add("Comment", {{"textDescription", "about the file"}}).add("LongID", {{"idASCII", "other"}});
    flt.push().add("Matrix").pop();
    EXPECT_EQ(ConvertedScene(flt).text(), rootWith(""));
}

TEST(FltToInventorDispatchTest, TheRunOfAncillaryRecordsEndsBeforeAnotherRecordAndAtTheEnd)
{
    FltWriter flt;
    flt.add("Comment").add("Matrix").push().add("LongID").add("Comment");
    ParsedRecords const records(flt);
    DirectConversion conversion;
    auto const collect = [&](int index) {
        std::vector<FltRecord*> out;
        ParsedRecords::Iterator iterator = records.at(index);
        conversion.converter.iterator2VectorOfAncillaryElements(out, iterator);
        std::vector<int> opcodes{records.indexOf(iterator)};
        for (FltRecord const* record : out)
            opcodes.push_back(record->getOpcode());
        return opcodes;
    };
    EXPECT_EQ(collect(1), (std::vector<int>{3, 31, 49}));
    EXPECT_EQ(collect(2), (std::vector<int>{3, 49}));
    EXPECT_EQ(collect(3), (std::vector<int>{3}));
    EXPECT_EQ(collect(4), (std::vector<int>{6, 33, 31}));
    EXPECT_EQ(collect(6), (std::vector<int>{6}));
}

TEST(FltToInventorDispatchTest, TheCollectedRunIsAppendedToWhatIsThere)
{
    ParsedRecords const records(FltWriter().add("Comment").add("Matrix"));
    DirectConversion conversion;
    std::vector<FltRecord*> out{nullptr};
    ParsedRecords::Iterator iterator = records.at(1);
    conversion.converter.iterator2VectorOfAncillaryElements(out, iterator);
    EXPECT_EQ(out, (std::vector<FltRecord*>{nullptr, *records.at(1), *records.at(2)}));
}

TEST(FltToInventorDispatchTest, VisitingAncillaryRecordsLeavesTheIteratorOnTheFirstOtherRecord)
{
    ParsedRecords const records(FltWriter().add("Matrix").add("Comment").pop().add("Matrix"));
    DirectConversion conversion;
    ParsedRecords::Iterator iterator = records.at(1);
    conversion.converter.visitAncillaryRecords(iterator, conversion.root);
    EXPECT_EQ(records.indexOf(iterator), 3);
    conversion.converter.visitAncillaryRecords(iterator, conversion.root);
    EXPECT_EQ(records.indexOf(iterator), 3);
    iterator = records.at(4);
    conversion.converter.visitAncillaryRecords(iterator, conversion.root);
    EXPECT_EQ(records.indexOf(iterator), records.end());
    EXPECT_EQ(conversion.root->getNumChildren(), 3 + 2);
}

// The end of a file

/// A hierarchy of all nodes, and what closes it behind each of its records.
struct Hierarchy {
    std::vector<std::string> prefixes; ///< The database up to each record.
    std::vector<std::string> rests;    ///< What closes the levels that are open there.

    Hierarchy()
    {
        flt.vertexPalette();
        a = flt.vertex("VertexColor", 1, 2, 3);
        add("PushLevel").add("Group", named("group")).add("Comment", {{"textDescription", "text"}});
        add("LongID", {{"idASCII", "a long name"}}).add("PushLevel").object("first");
        add("LOD", {{"idASCII", "lod"}, {"switchInDistance", 9}}).add("Matrix").add("PushLevel");
        add("Switch",
            {{"idASCII", "switch"}, {"numberOfMasks", 1}, {"numberOf32BitWordsPerMask", 1}, {"masks", {1}}});
        add("PushLevel").add("DOF", named("dof")).add("PushLevel").object("second").add("PopLevel");
        add("OLDLOD", named("oldlod")).add("PushLevel").add("PopLevel").add("PopLevel").add("PopLevel");
        add("ClipRegion", named("clip")).add("Comment").add("Sound").add("Text", named("text"));
        add("Comment").add("Sound").add("PopLevel").add("Replicate").add("PopLevel");
    }

private:
    Hierarchy& add(char const* record, FltWriter::Fields const& fields = {})
    {
        flt.add(record, fields);
        levels += std::string(record) == "PushLevel" ? 1 : std::string(record) == "PopLevel" ? -1 : 0;
        // An Object that a Pop follows is empty. One at the end has its geometry still to come.
        FltWriter rest(flt.getRevision());
        std::size_t const header = rest.bytes().size();
        if (std::string(record) == "Object")
            rest.push().pop();
        for (int level = 0; level < levels; ++level)
            rest.pop();
        prefixes.push_back(flt.bytes());
        rests.push_back(rest.bytes().substr(header));
        return *this;
    }

    Hierarchy& object(char const* name)
    {
        add("Object", named(name)).add("PushLevel").add("Face").add("PushLevel");
        return add("VertexList", {{"offsets", {a, a, a}}}).add("PopLevel").add("PopLevel");
    }

    FltWriter flt;
    double a = 0;
    int levels = 0;
};

TEST(FltToInventorDispatchTest, AFileThatEndsInsideAWalkIsConvertedToItsEnd)
{
    Hierarchy const hierarchy;
    for (std::size_t i = 0; i < hierarchy.prefixes.size(); ++i) {
        ConvertedScene const cut(hierarchy.prefixes[i]);
        EXPECT_EQ(cut.result, 0);
        EXPECT_EQ(cut.messages, "");
        EXPECT_EQ(cut.text(), ConvertedScene(hierarchy.prefixes[i] + hierarchy.rests[i]).text())
            << "after record " << i;
    }
}

TEST(FltToInventorDispatchTest, AFileThatEndsInsideARecordIsConvertedUpToThatRecord)
{
    std::string const whole = Hierarchy().prefixes.back();
    std::string const scene = ConvertedScene(whole).text();
    EXPECT_EQ(ConvertedScene(whole.substr(0, whole.size() - 4)).text(), scene); // the last Pop
    for (std::size_t cut = whole.size() - 1; cut > whole.size() - 600; cut -= 7) {
        ConvertedScene const part(whole.substr(0, cut));
        EXPECT_EQ(part.result, 0);
        EXPECT_NE(part.find("lod"), nullptr);
    }
}

// Depth

TEST(FltToInventorDispatchTest, EightHundredNestedGroupsAreAllBuilt)
{
    for (bool const hasLevels : {true, false}) {
        FltWriter flt;
        flt.push();
        for (int i = 0; i < 800; ++i) {
            flt.add("Group", named("g" + std::to_string(i)));
            if (hasLevels)
                flt.push();
        }
        ConvertedScene const scene(flt);
        EXPECT_EQ(scene.messages, "");
        EXPECT_EQ(countOf(scene.text(), "DEF g"), 800);
        SoNode* node = scene.root;
        int depth = -1;
        for (; static_cast<SoGroup*>(node)->getNumChildren() > 0; ++depth) {
            auto* const group = static_cast<SoGroup*>(node);
            node = group->getChild(group->getNumChildren() - 1);
        }
        EXPECT_EQ(node->getName(), SbName("g799"));
        EXPECT_EQ(depth, 799);
        EXPECT_GT(traverseScene(scene.root), 0U);
    }
}

TEST(FltToInventorDispatchTest, AHundredThousandNestedGroupsAreCutAtTheDepthOfAHierarchyAndToldOnce)
{
    FltWriter flt;
    flt.push();
    for (int i = 0; i < 100000; ++i)
        flt.add("Group", named("g" + std::to_string(i % 1000))).push();
    for (int i = 0; i < 100000; ++i)
        flt.pop();
    flt.add("Group", named("behind")).push().pop().pop();
    ConvertedScene const scene(flt);
    EXPECT_EQ(scene.result, 0);
    EXPECT_EQ(scene.messages, nestedTooDeep);
    EXPECT_EQ(countOf(scene.text(), "DEF g"), FltLimits::hierarchyDepth + 1);
    EXPECT_NE(scene.find("behind"), nullptr);
    EXPECT_GT(traverseScene(scene.root), 0U);
}

TEST(FltToInventorDispatchTest, AHundredThousandGroupsInARowWithoutLevelsAreAllKeptAndTheirDepthIsToldOnce)
{
    FltWriter flt;
    flt.push();
    for (int i = 0; i < 100000; ++i)
        flt.add("Group", named("g" + std::to_string(i % 1000)));
    ConvertedScene const scene(flt);
    EXPECT_EQ(scene.result, 0);
    EXPECT_EQ(scene.messages, nestedTooDeep);
    // One of them is the child of the one before, until the hierarchy is as deep as it may be; the next is
    // their sibling again.
    int const chains = scene.root->getNumChildren() - 3;
    int nodes = 0;
    for (int i = 0; i < chains; ++i)
        for (SoNode* node = scene.root->getChild(3 + i); node != nullptr; ++nodes) {
            auto* const group = static_cast<SoGroup*>(node);
            node = group->getNumChildren() > 0 ? group->getChild(0) : nullptr;
        }
    EXPECT_EQ(chains, 1 + 99999 / (FltLimits::hierarchyDepth + 1));
    EXPECT_EQ(nodes, 100000);
    EXPECT_GT(traverseScene(scene.root), 0U);
}

TEST(FltToInventorDispatchTest, AHundredThousandLevelsWithoutNodesAreOpenedAndClosed)
{
    FltWriter flt;
    for (int i = 0; i < 100000; ++i)
        flt.push();
    flt.add("Group", named("g"));
    for (int i = 0; i < 100000; ++i)
        flt.push();
    flt.add("Group", named("h")).push().pop();
    for (int i = 0; i < 200000; ++i)
        flt.pop();
    ConvertedScene const scene(flt);
    EXPECT_EQ(scene.messages, "");
    EXPECT_EQ(scene.text(), rootWith("  DEF g Separator {\n    DEF h Separator {\n    }\n  }\n"));
    EXPECT_GT(traverseScene(scene.root), 0U);
}

TEST(FltToInventorDispatchTest, AHundredThousandPopsWithNoLevelOpenAreEachToldAndTheWalkGoesOn)
{
    FltWriter flt;
    for (int i = 0; i < 100000; ++i)
        flt.pop();
    ConvertedScene const scene(flt.push().add("Group", named("g")).push().pop().pop());
    EXPECT_EQ(scene.messages.size(), 100000 * popWithEmptyStack.size());
    EXPECT_EQ(scene.text(), rootWith("  DEF g Separator {\n  }\n"));
}

} // namespace
