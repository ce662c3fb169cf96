#include "convert/FltObjectToSoSeparator.h"

#include "messages/FltWarningMessageConsole.h"
#include "records/FltRecordFace.h"
#include "records/FltRecordVertex.h"
#include "support/ObjectDatabase.h"
#include "support/RecordText.h"
#include "support/SceneText.h"
#include "support/SceneTraversal.h"
#include "support/StreamCapture.h"

#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <gtest/gtest.h>

namespace
{

char const* const forms[] = {"VertexColor", "VertexColorNormal", "VertexColorUv", "VertexColorNormalUv"};

FltWriter::Fields texture(int index)
{
    return {{"texturePatternIndex", index}};
}

/// A database with a texture pattern of its own for each index.
FltWriter withTextures(std::vector<int> const& indices)
{
    FltWriter flt;
    for (int const index : indices)
        flt.add("TexturePattern",
                {{"fileName", "texture" + std::to_string(index) + ".rgb"}, {"patternIndex", index}});
    return flt;
}

/// The operations driven by hand, on a converter with two vertices of the first form at offsets 8 and 48.
class FltObjectToSoSeparatorFaceSetsByHandTest : public testing::Test
{
protected:
    FltObjectToSoSeparatorFaceSetsByHandTest()
    {
        destination->ref();
        destination->setName("object");
        object.setFltToInventor(&converter);
        object.setDestination(destination);
        for (int i = 1; i <= 2; ++i) {
            auto const record = decodeLastAs<FltRecordVertexColor>(
                FltWriter().add("VertexColor", {{"Xcoordinate", i}, {"Zcoordinate", -i}}));
            converter.visitVertexColor(record.get());
        }
        vertexColorProperty = converter.getVertexPropertyFromIntId(1);
    }
    ~FltObjectToSoSeparatorFaceSetsByHandTest() override { destination->unref(); }

    FltToInventor converter;
    SoVertexProperty* vertexColorProperty = nullptr;
    SoGroup* destination = new SoSeparator;
    FltObjectToSoSeparator object;
};

// --- Emission

TEST(FltObjectToSoSeparatorFaceSetsTest, ObjectWithEveryBatchInUseEmitsThemInTheirOrder)
{
    FltWriter flt;
    flt.vertexPalette();
    std::vector<std::vector<double>> triangles;
    for (char const* form : forms)
        triangles.push_back(triangle(flt, form));
    beginObject(flt)
        .add("Face")
        .push()
        .add("OldVertex")
        .add("OldVertexColor")
        .add("OldVertexColorNormal")
        .pop();
    for (int form = 3; form >= 0; --form)
        flt.face(triangles[std::size_t(form)])
            .add("PushSubface")
            .face({triangles[std::size_t(form)][1]})
            .add("PopSubface");
    endObject(flt);
    EXPECT_EQ(objectOutline(flt), "Separator object\n"
                                  "  MaterialBinding\n"
                                  "  IndexedFaceSet OLD_VERTEX: 0 -1\n"
                                  "  IndexedFaceSet OLD_VERTEX: 0 -1\n"
                                  "  IndexedFaceSet OLD_VERTEX: 0 -1\n"
                                  "  IndexedFaceSet OLD_VERTEX: 0 -1\n"
                                  "  IndexedFaceSet OLD_VERTEX: 0 -1\n"
                                  "  IndexedFaceSet OLD_VERTEX: 0 -1\n"
                                  "  IndexedFaceSet OLD_VERTEX: 0 -1\n"
                                  "  IndexedFaceSet OLD_VERTEX: 0 -1\n"
                                  "  Material faceVertexColorSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 | 0\n"
                                  "  PolygonOffset\n"
                                  "  Material subFaceVertexColorSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColor: 1 -1 | 0\n"
                                  "  Material faceVertexColorNormalSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColorNormal: 0 1 2 -1 | 0\n"
                                  "  PolygonOffset\n"
                                  "  Material subFaceVertexColorNormalSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColorNormal: 1 -1 | 0\n"
                                  "  Material faceVertexColorUVSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColorUV: 0 1 2 -1 | 0\n"
                                  "  PolygonOffset\n"
                                  "  Material subFaceVertexColorUVSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColorUV: 1 -1 | 0\n"
                                  "  Material faceVertexColorNormalUVSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColorNormalUV: 0 1 2 -1 | 0\n"
                                  "  PolygonOffset\n"
                                  "  Material subFaceVertexColorNormalUVSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColorNormalUV: 1 -1 | 0\n"
                                  "  IndexedFaceSet OLD_VERTEX_COLOR_NORMAL: 0 -1\n"
                                  "  IndexedFaceSet OLD_VERTEX_COLOR: 0\n");
}

TEST(FltObjectToSoSeparatorFaceSetsTest, TexturedObjectAsWholeText)
{
    FltWriter flt = withTextures({7});
    flt.vertexPalette();
    double const a = flt.vertex("VertexColorNormalUv", 1, 0, 0, {{"vertexNormal", {0, 0, 1}}});
    double const b = flt.vertex("VertexColorNormalUv", 0, 1, 0, {{"texture", {0, 1}}});
    flt.push().add("Object", {{"idASCII", "object"}}).push();
    flt.face({a, b}, {{"flags", 0x40000000}});
    flt.add("PushSubface");
    flt.face({b, a}, {{"flags", 0x10000000}, {"packedColor", {255, 0, 0, 255}}, {"texturePatternIndex", 7}});
    flt.add("PopSubface").pop().pop();
    ConvertedScene const scene(flt);
    EXPECT_EQ(sceneText(scene.find("object")), R"(DEF object Separator {
  MaterialBinding {
    value PER_FACE_INDEXED
  }
  DEF faceVertexColorNormalUVSoMaterialSet Material {
    ambientColor 0.2 0.2 0.2
    diffuseColor 0.80000001 0.80000001 0.80000001
    specularColor 0 0 0
    emissiveColor 0 0 0
    shininess 0.2
    transparency 0
  }
  DEF SoIFSVertexColorNormalUV IndexedFaceSet {
    vertexProperty 
    DEF vertexColorNormalUVProperty VertexProperty {
      vertex [ 1 0 0,
          0 1 0 ]
      normal [ 0 0 1,
          0 0 0 ]
      texCoord [ 0 0,
          0 1 ]
      orderedRGBA [  ]
    }
    coordIndex [ 0, 1, -1 ]
    materialIndex 0
  }
  PolygonOffset {
    factor -1
    units -30
  }
  DEF subFaceVertexColorNormalUVSoMaterialSet Material {
    ambientColor 1 0 0
    diffuseColor 1 0 0
    specularColor 0 0 0
    emissiveColor 0 0 0
    shininess 0
    transparency 0
  }
  DEF isolateTexturesNodes Separator {
    Texture2 {
      filename "texture7.rgb"
    }
    DEF SoIFSVertexColorNormalUV IndexedFaceSet {
      vertexProperty 
      USE vertexColorNormalUVProperty
      coordIndex [ 1, 0, -1 ]
      materialIndex 0
    }
  }
}
)");
}

TEST(FltObjectToSoSeparatorFaceSetsTest, ObjectWithOnlySubFacesProducesTheBindingAndNoShape)
{
    FltWriter flt;
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    endObject(beginObject(flt).add("PushSubface").face(a).add("PopSubface"));
    EXPECT_EQ(objectOutline(flt), "Separator object\n"
                                  "  MaterialBinding\n");
}

TEST(FltObjectToSoSeparatorFaceSetsTest, SubFacesOfAFormWithoutBaseFacesAreLostBesideOtherForms)
{
    FltWriter flt;
    flt.vertexPalette();
    std::vector<double> const a = triangle(flt, "VertexColor");
    std::vector<double> const b = triangle(flt, "VertexColorNormal");
    endObject(beginObject(flt).face(a).add("PushSubface").face(b).add("PopSubface"));
    EXPECT_EQ(objectOutline(flt), "Separator object\n"
                                  "  MaterialBinding\n"
                                  "  Material faceVertexColorSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 | 0\n");
}

TEST(FltObjectToSoSeparatorFaceSetsTest, BaseAndSubFacesOfTwoFormsHaveTwoPolygonOffsets)
{
    FltWriter flt;
    flt.vertexPalette();
    std::vector<double> const a = triangle(flt, "VertexColor");
    std::vector<double> const b = triangle(flt, "VertexColorUv");
    endObject(beginObject(flt).face(a).face(b).add("PushSubface").face(a).face(b).add("PopSubface"));
    EXPECT_EQ(objectOutline(flt), "Separator object\n"
                                  "  MaterialBinding\n"
                                  "  Material faceVertexColorSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 | 0\n"
                                  "  PolygonOffset\n"
                                  "  Material subFaceVertexColorSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 | 0\n"
                                  "  Material faceVertexColorUVSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColorUV: 0 1 2 -1 | 0\n"
                                  "  PolygonOffset\n"
                                  "  Material subFaceVertexColorUVSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColorUV: 0 1 2 -1 | 0\n");
}

TEST(FltObjectToSoSeparatorFaceSetsTest, OldVerticesWithNormalAreFollowedByThoseWithColourAlone)
{
    FltWriter flt(11);
    beginObject(flt).add("Face").push().add("OldVertexColor").add("OldVertexColor").pop();
    flt.add("Face").push().add("OldVertexColorNormal", {{"Xcoordinate", 3}}).pop();
    ConvertedScene const scene(endObject(flt));
    EXPECT_EQ(objectOutline(scene), "Separator object\n"
                                    "  MaterialBinding\n"
                                    "  IndexedFaceSet OLD_VERTEX_COLOR_NORMAL: 0\n"
                                    "  IndexedFaceSet OLD_VERTEX_COLOR: 0 1\n");
    auto const* const faceSet =
        static_cast<SoIndexedFaceSet*>(static_cast<SoGroup*>(scene.find("object"))->getChild(1));
    auto const& property = static_cast<SoVertexProperty const&>(*faceSet->vertexProperty.getValue());
    EXPECT_STREQ(property.getName().getString(), "OLD_VERTEX_COLOR_NORMAL");
    ASSERT_EQ(property.vertex.getNum(), 1);
    EXPECT_EQ(property.vertex[0], SbVec3f(3, 0, 0));
    EXPECT_TRUE(property.texCoord.isDefault());
    EXPECT_TRUE(property.normal.isDefault());
}

TEST(FltObjectToSoSeparatorFaceSetsTest, OldVertexFaceSetsAreTakenApartIntoTrianglesWithoutMaterialIndices)
{
    FltWriter flt(11);
    std::vector<double> const offsets = triangle(flt.vertexPalette(), "VertexColor");
    beginObject(flt);
    for (char const* const form : {"OldVertex", "OldVertexColor", "OldVertexColorNormal"}) {
        flt.add("Face").push();
        for (int i = 0; i < 3; ++i)
            flt.add(form, {{"Xcoordinate", i}, {"Ycoordinate", i * i}});
        flt.add("VertexList", {{"offsets", offsets}}).pop();
    }
    ConvertedScene const scene(endObject(flt));
    EXPECT_EQ(objectOutline(scene), "Separator object\n"
                                    "  MaterialBinding\n"
                                    "  IndexedFaceSet OLD_VERTEX: 0 1 2 -1\n"
                                    "  IndexedFaceSet OLD_VERTEX: 0 1 2 -1\n"
                                    "  IndexedFaceSet OLD_VERTEX: 0 1 2 -1\n"
                                    "  Material faceVertexColorSoMaterialSet\n"
                                    "  IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 0 1 2 -1 0 1 2 -1 | 0 1 2\n"
                                    "  IndexedFaceSet OLD_VERTEX_COLOR_NORMAL: 0 1 2 -1\n"
                                    "  IndexedFaceSet OLD_VERTEX_COLOR: 0 1 2\n");
    EXPECT_EQ(countTriangles(scene.root), 8);
}

TEST(FltObjectToSoSeparatorFaceSetsTest, OldVerticesWithColourAloneGiveNoFaceSet)
{
    FltWriter flt(11);
    beginObject(flt).add("Face").push().add("OldVertexColor").add("OldVertexColor").pop();
    EXPECT_EQ(objectOutline(endObject(flt)), "Separator object\n"
                                             "  MaterialBinding\n");
}

// --- Textures

TEST(FltObjectToSoSeparatorFaceSetsTest, BatchOfOneTextureGivesOneSeparatorWithTheTextureAndOneFaceSet)
{
    FltWriter flt = withTextures({7});
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColorUv"));
    endObject(beginObject(flt).face(a, texture(7)).face(a, texture(7)));
    EXPECT_EQ(objectOutline(flt), "Separator object\n"
                                  "  MaterialBinding\n"
                                  "  Material faceVertexColorUVSoMaterialSet\n"
                                  "  Separator isolateTexturesNodes\n"
                                  "    Texture2 texture7.rgb\n"
                                  "    IndexedFaceSet SoIFSVertexColorUV: 0 1 2 -1 0 1 2 -1 | 0 1\n");
}

TEST(FltObjectToSoSeparatorFaceSetsTest, FacesOfTextureNoneAnd3InTurnAreDividedAndKeepTheirMaterials)
{
    FltWriter flt = withTextures({3});
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColorUv"));
    beginObject(flt).face(a, texture(-1)).face({a[0]}, texture(3)).face({a[1]}, texture(-1));
    endObject(flt.face({a[2]}, texture(3)));
    EXPECT_EQ(objectOutline(flt), "Separator object\n"
                                  "  MaterialBinding\n"
                                  "  Material faceVertexColorUVSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColorUV: 0 1 2 -1 1 -1 | 0 2\n"
                                  "  Separator isolateTexturesNodes\n"
                                  "    Texture2 texture3.rgb\n"
                                  "    IndexedFaceSet SoIFSVertexColorUV: 0 -1 2 -1 | 1 3\n");
}

TEST(FltObjectToSoSeparatorFaceSetsTest, FacesWithoutTextureComeFirstThoughTheyStandLastInTheFile)
{
    FltWriter flt = withTextures({5});
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColorUv"));
    endObject(beginObject(flt).face(a, texture(5)).face({a[1]}, texture(-1)));
    EXPECT_EQ(objectOutline(flt), "Separator object\n"
                                  "  MaterialBinding\n"
                                  "  Material faceVertexColorUVSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColorUV: 1 -1 | 1\n"
                                  "  Separator isolateTexturesNodes\n"
                                  "    Texture2 texture5.rgb\n"
                                  "    IndexedFaceSet SoIFSVertexColorUV: 0 1 2 -1 | 0\n");
}

TEST(FltObjectToSoSeparatorFaceSetsTest, TexturesStandInAscendingOrderOfTheirSignedIndex)
{
    FltWriter flt = withTextures({2, 9});
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColorUv"));
    endObject(beginObject(flt).face({a[0]}, texture(9)).face({a[1]}, texture(2)).face({a[2]}, texture(-2)));
    EXPECT_EQ(objectOutline(flt), "Separator object\n"
                                  "  MaterialBinding\n"
                                  "  Material faceVertexColorUVSoMaterialSet\n"
                                  "  Separator isolateTexturesNodes\n"
                                  "    IndexedFaceSet SoIFSVertexColorUV: 2 -1 | 2\n"
                                  "  Separator isolateTexturesNodes\n"
                                  "    Texture2 texture2.rgb\n"
                                  "    IndexedFaceSet SoIFSVertexColorUV: 1 -1 | 1\n"
                                  "  Separator isolateTexturesNodes\n"
                                  "    Texture2 texture9.rgb\n"
                                  "    IndexedFaceSet SoIFSVertexColorUV: 0 -1 | 0\n");
}

TEST(FltObjectToSoSeparatorFaceSetsTest, TextureThatThePaletteDoesNotDefineGivesASeparatorWithoutOne)
{
    FltWriter flt;
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColorUv"));
    endObject(beginObject(flt).face(a, texture(12)));
    ConvertedScene const scene(flt);
    EXPECT_EQ(objectOutline(scene), "Separator object\n"
                                    "  MaterialBinding\n"
                                    "  Material faceVertexColorUVSoMaterialSet\n"
                                    "  Separator isolateTexturesNodes\n"
                                    "    IndexedFaceSet SoIFSVertexColorUV: 0 1 2 -1 | 0\n");
    EXPECT_EQ(scene.messages, "");
}

TEST(FltObjectToSoSeparatorFaceSetsTest, FaceSetsOfATextureShareItsNode)
{
    FltWriter flt = withTextures({7});
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColorUv"));
    beginObject(flt).face(a, texture(7)).add("PushSubface").face(a, texture(7)).add("PopSubface");
    ConvertedScene const scene(endObject(flt));
    auto const* const object = static_cast<SoGroup*>(scene.find("object"));
    ASSERT_EQ(object->getNumChildren(), 6);
    auto const textureBelow = [object](int child) {
        return static_cast<SoGroup*>(object->getChild(child))->getChild(0);
    };
    EXPECT_EQ(textureBelow(2), textureBelow(5));
}

// --- By hand

TEST_F(FltObjectToSoSeparatorFaceSetsByHandTest, ManyFilesAreNeededWhenAnEntryDiffersFromTheFirst)
{
    auto const needsMany = [this](std::vector<int> const& textures) {
        return object.isSoIndexedFaceSetNeedsManyTextureFiles(textures);
    };
    EXPECT_FALSE(needsMany({}));
    EXPECT_FALSE(needsMany({-1, -1}));
    EXPECT_FALSE(needsMany({4}));
    EXPECT_TRUE(needsMany({-1, 4}));
    EXPECT_TRUE(needsMany({4, 4, -1}));
}

TEST_F(FltObjectToSoSeparatorFaceSetsByHandTest, TextureFileIndexIsTheFirstThatIsNotNone)
{
    EXPECT_EQ(object.getTextureFileIndex({}), -1);
    EXPECT_EQ(object.getTextureFileIndex({-1, -1}), -1);
    EXPECT_EQ(object.getTextureFileIndex({-1, 6, 2}), 6);
    EXPECT_EQ(object.getTextureFileIndex({-2}), -2);
}

TEST_F(FltObjectToSoSeparatorFaceSetsByHandTest, OneFaceIsCopiedWithItsEndAndTheIteratorMovesBehindIt)
{
    std::vector<int> const indices{3, 4, -1, -1, 5, -1};
    std::vector<int> face{9};
    auto iterator = indices.begin();
    object.copyOneFaceVertexIndices(face, iterator);
    EXPECT_EQ(face, (std::vector<int>{9, 3, 4, -1}));
    EXPECT_EQ(iterator - indices.begin(), 3);
    object.copyOneFaceVertexIndices(face, iterator);
    EXPECT_EQ(face, (std::vector<int>{9, 3, 4, -1, -1}));
    EXPECT_EQ(iterator - indices.begin(), 4);
}

TEST_F(FltObjectToSoSeparatorFaceSetsByHandTest, EachSharedPropertyHasItsNameAndAnyOtherIsTold)
{
    StreamCapture const messages(std::cerr);
    std::vector<std::string> names;
    for (int id = 1; id <= 4; ++id) {
        SoVertexProperty* property = converter.getVertexPropertyFromIntId(id);
        names.emplace_back(object.getSoIndexedFaceSetNameFromSoVertexProperty(property));
    }
    EXPECT_EQ(names, (std::vector<std::string>{"SoIFSVertexColor", "SoIFSVertexColorNormal",
                                               "SoIFSVertexColorUV", "SoIFSVertexColorNormalUV"}));
    EXPECT_EQ(messages.str(), "");
    SoVertexProperty* none = nullptr;
    EXPECT_STREQ(object.getSoIndexedFaceSetNameFromSoVertexProperty(none), "SoIFSVertexUNDEFINED");
    EXPECT_EQ(messages.str(),
              "WARNING ! I can't give a name for a SoIndexedFaceSet\n"
              " since This SoVertexProperty doesn'fit with one of the 4 global SoVertexProperty\n"
              " SO_INDEXED_FACE_SET_WITH_UNDEFINED_VERTEX_NAME returned\n"
              "(Warning Level: 1)\n\n");
}

TEST_F(FltObjectToSoSeparatorFaceSetsByHandTest, FieldsOwnTheirIndexArrays)
{
    object.buildAndAddIndexedFaceSetFromIndicesVector({0, 1, -1}, {0}, {-1}, vertexColorProperty);
    ASSERT_EQ(sceneOutline(destination), "Separator object\n"
                                         "  IndexedFaceSet SoIFSVertexColor: 0 1 -1 | 0\n");
    auto const* const faceSet = static_cast<SoIndexedFaceSet*>(destination->getChild(0));
    EXPECT_TRUE(faceSet->coordIndex.isDeleteValuesEnabled());
    EXPECT_TRUE(faceSet->materialIndex.isDeleteValuesEnabled());
    EXPECT_TRUE(faceSet->normalIndex.isDefault());
    EXPECT_TRUE(faceSet->textureCoordIndex.isDefault());
    EXPECT_EQ(faceSet->vertexProperty.getValue(), vertexColorProperty);
}

TEST_F(FltObjectToSoSeparatorFaceSetsByHandTest, ManyTexturesWithoutAnyFaceMakeNothing)
{
    object.buildAndAddIndexedFaceSetFromIndicesVectorManyTextureFile({}, {}, {}, vertexColorProperty);
    EXPECT_EQ(destination->getNumChildren(), 0);
}

TEST_F(FltObjectToSoSeparatorFaceSetsByHandTest, OneTextureWithoutAnyFaceMakesAnEmptyFaceSet)
{
    object.buildAndAddIndexedFaceSetFromIndicesVectorOneTextureFile({}, {}, {}, vertexColorProperty);
    EXPECT_EQ(sceneOutline(destination), "Separator object\n"
                                         "  IndexedFaceSet SoIFSVertexColor: |\n");
}

TEST_F(FltObjectToSoSeparatorFaceSetsByHandTest, OldVertexSetsAreAddedOnlyWithVertices)
{
    object.buildAndAddIndexedFaceSetFromOldVertexColorNormal();
    object.buildAndAddIndexedFaceSetFromOldVertexColor();
    object.buildAndAddIndexedFaceSetFromOldVertex();
    EXPECT_EQ(destination->getNumChildren(), 0);

    auto const vertex = decodeLastAs<FltRecordOldVertex>(FltWriter().add("OldVertex"));
    auto const color = decodeLastAs<FltRecordOldVertexColor>(FltWriter().add("OldVertexColor"));
    auto const normal = decodeLastAs<FltRecordOldVertexColorNormal>(FltWriter().add("OldVertexColorNormal"));
    FltRecordOldVertex const* oldVertex = vertex.get();
    FltRecordOldVertexColor const* oldVertexColor = color.get();
    FltRecordOldVertexColorNormal const* oldVertexColorNormal = normal.get();
    object.addOldVertexToSoVertexProperty(oldVertex);
    object.addOldVertexToSoVertexProperty(oldVertex);
    object.addOldVertexColorToSoVertexProperty(oldVertexColor);
    object.addOldVertexColorNormalToSoVertexProperty(oldVertexColorNormal);
    object.buildAndAddIndexedFaceSetFromOldVertexColorNormal();
    object.buildAndAddIndexedFaceSetFromOldVertexColor();
    object.buildAndAddIndexedFaceSetFromOldVertex();
    EXPECT_EQ(sceneOutline(destination), "Separator object\n"
                                         "  IndexedFaceSet OLD_VERTEX_COLOR_NORMAL: 0\n"
                                         "  IndexedFaceSet OLD_VERTEX_COLOR: 0\n"
                                         "  IndexedFaceSet OLD_VERTEX: 0 1\n");
}

TEST_F(FltObjectToSoSeparatorFaceSetsByHandTest,
       FaceSetWithCoordinatesOfItsOwnCopiesThoseOfTheSharedProperties)
{
    auto const list =
        decodeLastAs<FltRecordVertexList>(FltWriter().add("VertexList", {{"offsets", {48, 8, 9}}}));
    object.addFaceSetFromVertexListNoGlobalSoVertexProperty(list.get());
    ASSERT_EQ(sceneOutline(destination), "Separator object\n"
                                         "  FaceSet irregularSoFaceSet\n");
    EXPECT_EQ(sceneText(destination->getChild(0)), R"(DEF irregularSoFaceSet FaceSet {
  vertexProperty 
  DEF localSoVertexProperty VertexProperty {
    vertex [ 2 0 -2,
        1 0 -1,
        0 0 0 ]
    materialBinding PER_FACE_INDEXED
  }
  numVertices 3
}
)");
}

TEST_F(FltObjectToSoSeparatorFaceSetsByHandTest, FaceSetWithCoordinatesOfItsOwnMayHaveNone)
{
    auto const list = decodeLastAs<FltRecordVertexList>(FltWriter().add("VertexList"));
    object.addFaceSetFromVertexListNoGlobalSoVertexProperty(list.get());
    ASSERT_EQ(destination->getNumChildren(), 1);
    auto const* const faceSet = static_cast<SoFaceSet*>(destination->getChild(0));
    ASSERT_EQ(faceSet->numVertices.getNum(), 1);
    EXPECT_EQ(faceSet->numVertices[0], 0);
}

} // namespace
