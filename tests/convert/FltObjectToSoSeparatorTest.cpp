#include "convert/FltObjectToSoSeparator.h"

#include "messages/FltLimits.h"
#include "messages/FltWarningMessageConsole.h"
#include "records/FltRecordFace.h"
#include "records/FltRecordVertex.h"
#include "support/ConvertedScene.h"
#include "support/ObjectDatabase.h"
#include "support/RecordText.h"
#include "support/SceneText.h"
#include "support/SceneTraversal.h"
#include "support/StreamCapture.h"
#include "toolkit/SoNodeRef.h"

#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoPolygonOffset.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <Inventor/sensors/SoNodeSensor.h>
#include <gtest/gtest.h>

namespace
{

std::string const onlyTheBinding = "Separator object\n"
                                   "  MaterialBinding\n";

std::string printed(std::string const& message, int level)
{
    return message + "\n(Warning Level: " + std::to_string(level) + ")\n\n";
}

std::string const heterogeneous = printed("WARNING ! Remove a face having heterogeneous vertices", 1);
std::string const withoutId = printed("WARNING ! This SoVertexProperty hasn t any id,  "
                                      "UNDEFINED_SO_VERTEX_PROPERTY_ID will be returned",
                                      3);
std::string const notInitialised =
    printed("ERROR! In class FltObjectToSoSeparator: Try to build A SoSeparator from a FLT object\n but some "
            "fields aren't correctly initialized",
            3);

/// The material of the first batch of an object.
SoMaterial const& materialOf(ConvertedScene const& scene)
{
    return *static_cast<SoMaterial*>(scene.find("faceVertexColorSoMaterialSet"));
}

/// Records made one by one, as a vector to walk over.
class Records
{
public:
    FltRecord* add(std::string_view record, FltWriter::Fields const& fields = {})
    {
        owned.push_back(decodeLast(FltWriter().add(record, fields)));
        return repeat(owned.back().get());
    }
    FltRecord* addRaw(int opcode, std::string const& content)
    {
        owned.push_back(decodeLast(FltWriter().addRaw(opcode, content)));
        return repeat(owned.back().get());
    }
    FltRecord* repeat(FltRecord* record)
    {
        walked.back() = record;
        walked.push_back(nullptr);
        return record;
    }
    FltObjectToSoSeparator::RecordIterator begin() const { return walked.begin(); }
    std::ptrdiff_t positionOf(FltObjectToSoSeparator::RecordIterator iterator) const
    {
        return iterator - walked.begin();
    }

private:
    std::vector<std::unique_ptr<FltRecord>> owned;
    std::vector<FltRecord*> walked{nullptr};
};

/// An object that is converted without a file around it.
class FltObjectToSoSeparatorWalkTest : public testing::Test
{
protected:
    FltObjectToSoSeparatorWalkTest()
    {
        destination->ref();
        destination->setName("object");
        object.setFltToInventor(&converter);
        object.setDestination(destination);
    }
    ~FltObjectToSoSeparatorWalkTest() override { destination->unref(); }

    void build()
    {
        auto begin = records.begin();
        object.setCurrentIterator(begin);
        object.buildFinalSoSeparator();
    }

    /// Adds vertices with colour to the palette; each takes 40 bytes of it, the first at offset 8.
    void addVertices(int count)
    {
        auto const record = decodeLastAs<FltRecordVertexColor>(FltWriter().add("VertexColor"));
        for (int i = 0; i < count; ++i)
            converter.visitVertexColor(record.get());
    }

    FltToInventor converter;
    SoGroup* destination = new SoSeparator;
    Records records;
    FltObjectToSoSeparator object;
};

// --- Faces outside an object

TEST(FltObjectToSoSeparatorTest, FaceDirectlyUnderAGroupGoesWithTransparency1IntoTheTopOfTheStack)
{
    FltWriter flt;
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    flt.push().add("Group", {{"idASCII", "group"}}).push();
    flt.face(a, {{"transparency", 32768}});
    flt.pop().pop();
    ConvertedScene const scene(flt);
    EXPECT_EQ(sceneOutline(scene.find("group")), "Separator group\n"
                                                 "  MaterialBinding\n"
                                                 "  Material faceVertexColorSoMaterialSet\n"
                                                 "  IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 | 0\n");
    EXPECT_EQ(materialOf(scene).transparency[0], 0.0F);
}

TEST(FltObjectToSoSeparatorTest, SuccessiveFacesOutsideAnObjectFormOneRun)
{
    FltWriter flt;
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    flt.push().add("Group", {{"idASCII", "group"}}).push();
    flt.face(a).face(a).face(a);
    flt.pop().pop();
    EXPECT_EQ(sceneOutline(ConvertedScene(flt).find("group")),
              "Separator group\n"
              "  MaterialBinding\n"
              "  Material faceVertexColorSoMaterialSet\n"
              "  IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 0 1 2 -1 0 1 2 -1 | 0 1 2\n");
}

TEST(FltObjectToSoSeparatorTest, RunOfFacesEndsBeforeAnObjectOrAnyOtherRecordBehindAClosedLevel)
{
    FltWriter flt;
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    flt.push().add("Group", {{"idASCII", "group"}}).push();
    flt.face(a);
    flt.add("Group", {{"idASCII", "inner"}}).push().pop();
    flt.face(a).add("Face");
    flt.add("Object", {{"idASCII", "object"}}).push().face(a).pop();
    flt.pop().pop();
    EXPECT_EQ(sceneOutline(ConvertedScene(flt).find("group")),
              "Separator group\n"
              "  MaterialBinding\n"
              "  Material faceVertexColorSoMaterialSet\n"
              "  IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 | 0\n"
              "  Separator inner\n"
              "  MaterialBinding\n"
              "  Material faceVertexColorSoMaterialSet\n"
              "  IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 | 0\n"
              "  Separator object\n"
              "    MaterialBinding\n"
              "    Material faceVertexColorSoMaterialSet\n"
              "    IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 | 0\n");
}

TEST(FltObjectToSoSeparatorTest, RunOfFacesTakesAGroupInThatFollowsAFaceWithoutALevel)
{
    FltWriter flt;
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    flt.push().add("Group", {{"idASCII", "group"}}).push();
    flt.add("Face").add("Group", {{"idASCII", "inner"}}).push().face(a).pop();
    flt.pop().add("Group", {{"idASCII", "next"}}).push().pop().pop();
    ConvertedScene const scene(flt);
    EXPECT_EQ(scene.find("inner"), nullptr);
    EXPECT_EQ(sceneOutline(scene.find("group")), "Separator group\n"
                                                 "  MaterialBinding\n"
                                                 "  Material faceVertexColorSoMaterialSet\n"
                                                 "  IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 | 0\n");
    EXPECT_EQ(sceneOutline(scene.find("next")), "Separator next\n");
}

TEST(FltObjectToSoSeparatorTest, FaceBeforeTheFirstPushHasNoGroupToGoToAndIsTold)
{
    FltWriter flt;
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    flt.face(a).push().add("Group", {{"idASCII", "group"}}).push().pop().pop();
    ConvertedScene const scene(flt);
    EXPECT_EQ(scene.messages, notInitialised);
    EXPECT_EQ(scene.find("faceVertexColorSoMaterialSet"), nullptr);
}

TEST(FltObjectToSoSeparatorTest, RunOfFacesStandsInAFileThatEndsInIt)
{
    FltWriter flt;
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    flt.push().add("Group", {{"idASCII", "group"}}).push();
    flt.face(a).add("Face").push().add("VertexList", {{"offsets", a}});
    EXPECT_EQ(sceneOutline(ConvertedScene(flt).find("group")),
              "Separator group\n"
              "  MaterialBinding\n"
              "  Material faceVertexColorSoMaterialSet\n"
              "  IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 0 1 2 -1 | 0 1\n");
}

TEST_F(FltObjectToSoSeparatorWalkTest, SuccessiveFacesAreLookedForAtAFaceOnly)
{
    records.add("VertexList", {{"offsets", {8.0}}});
    StreamCapture const messages(std::cerr);
    auto iterator = records.begin();
    converter.visitNextSuccessiveFaces(iterator);
    EXPECT_EQ(records.positionOf(iterator), 0);
    ++iterator;
    converter.visitNextSuccessiveFaces(iterator);
    EXPECT_EQ(records.positionOf(iterator), 1);
    EXPECT_EQ(messages.str(), "");
}

TEST_F(FltObjectToSoSeparatorWalkTest, ObjectRecordsAreSkippedUpToTheirClosingPop)
{
    records.add("PushLevel");
    records.add("Face");
    records.add("PushLevel");
    records.add("PopLevel");
    records.add("PopLevel");
    records.add("Group");
    auto iterator = records.begin();
    converter.visitObjectFaceRecords(iterator, 0.0F, destination);
    EXPECT_EQ(records.positionOf(iterator), 4);
    EXPECT_EQ(sceneOutline(destination), onlyTheBinding);
}

TEST_F(FltObjectToSoSeparatorWalkTest, ObjectRecordsAreSkippedUpToTheLastEntryAtMost)
{
    records.add("PopLevel");
    records.add("PushLevel");
    records.add("PopLevel");
    records.add("PushLevel");
    auto iterator = records.begin();
    converter.visitObjectFaceRecords(iterator, 0.0F, destination);
    EXPECT_EQ(records.positionOf(iterator), 3);
    ++iterator;
    converter.visitObjectFaceRecords(iterator, 0.0F, destination);
    EXPECT_EQ(records.positionOf(iterator), 4);
}

// --- Walk

TEST(FltObjectToSoSeparatorTest, AllFacesOfOneFormGiveOneBatchWithMaterialIndicesInFaceOrder)
{
    FltWriter flt;
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    endObject(beginObject(flt).face(a).face({a[2], a[1], a[0]}).face(a));
    ConvertedScene const scene(flt);
    EXPECT_EQ(objectOutline(scene),
              "Separator object\n"
              "  MaterialBinding\n"
              "  Material faceVertexColorSoMaterialSet\n"
              "  IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 2 1 0 -1 0 1 2 -1 | 0 1 2\n");
    EXPECT_EQ(materialOf(scene).diffuseColor.getNum(), 3);
    EXPECT_EQ(materialOf(scene).transparency.getNum(), 3);
    auto const* const object = static_cast<SoGroup*>(scene.find("object"));
    EXPECT_EQ(static_cast<SoMaterialBinding*>(object->getChild(0))->value.getValue(),
              SoMaterialBinding::PER_FACE_INDEXED);
}

TEST(FltObjectToSoSeparatorTest, FaceSetsOfAFormIndexOneSharedProperty)
{
    FltWriter flt;
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    beginObject(flt).face(a).pop().add("Object", {{"idASCII", "second"}}).push().face(a).pop().pop();
    ConvertedScene const scene(flt);
    auto const faceSetOf = [&scene](char const* name) {
        return static_cast<SoIndexedFaceSet*>(static_cast<SoGroup*>(scene.find(name))->getChild(2));
    };
    EXPECT_NE(faceSetOf("object"), faceSetOf("second"));
    EXPECT_EQ(faceSetOf("object")->vertexProperty.getValue(), faceSetOf("second")->vertexProperty.getValue());
    EXPECT_EQ(faceSetOf("object")->vertexProperty.getValue(), scene.find("vertexColorProperty"));
}

TEST(FltObjectToSoSeparatorTest, ListMixingForms3And4IsPromotedWithTheAverageNormal)
{
    FltWriter flt;
    flt.vertexPalette();
    int const uv = flt.vertex("VertexColorUv", 1, 2, 3, {{"texture", {0.25, 0.75}}});
    int const a = flt.vertex("VertexColorNormalUv", 4, 5, 6, {{"vertexNormal", {1, 0, 0}}});
    int const b = flt.vertex("VertexColorNormalUv", 7, 8, 9, {{"vertexNormal", {0, 0.5, 0.25}}});
    endObject(beginObject(flt).face({double(a), double(uv), double(b)}));
    ConvertedScene const scene(flt);
    EXPECT_EQ(objectOutline(scene), "Separator object\n"
                                    "  MaterialBinding\n"
                                    "  Material faceVertexColorNormalUVSoMaterialSet\n"
                                    "  IndexedFaceSet SoIFSVertexColorNormalUV: 0 2 1 -1 | 0\n");
    auto const* const faceSet = static_cast<SoIndexedFaceSet*>(scene.find("SoIFSVertexColorNormalUV"));
    auto const& property = static_cast<SoVertexProperty const&>(*faceSet->vertexProperty.getValue());
    ASSERT_EQ(property.vertex.getNum(), 3);
    ASSERT_EQ(property.normal.getNum(), 3);
    ASSERT_EQ(property.texCoord.getNum(), 3);
    EXPECT_EQ(property.vertex[2], SbVec3f(1, 2, 3));
    EXPECT_EQ(property.normal[2], SbVec3f(0.5F, 0.25F, 0.125F));
    EXPECT_EQ(property.texCoord[2], SbVec2f(0.25F, 0.75F));
    EXPECT_EQ(scene.messages, "");
}

TEST(FltObjectToSoSeparatorTest, FaceMixingForms1And2IsLeftOutWithAMessage)
{
    FltWriter flt;
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    int const normal = flt.vertex("VertexColorNormal", 0, 0, 1);
    endObject(beginObject(flt).face(a).face({a[0], a[1], double(normal)}).face(a));
    ConvertedScene const scene(flt);
    EXPECT_EQ(objectOutline(scene), "Separator object\n"
                                    "  MaterialBinding\n"
                                    "  Material faceVertexColorSoMaterialSet\n"
                                    "  IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 0 1 2 -1 | 0 1\n");
    EXPECT_EQ(materialOf(scene).diffuseColor.getNum(), 2);
    EXPECT_EQ(scene.messages, heterogeneous);
}

TEST(FltObjectToSoSeparatorTest, ListMixingForms2And4IsLeftOutTooForOneOfThemHasNoUV)
{
    FltWriter flt;
    flt.vertexPalette();
    double const normal = flt.vertex("VertexColorNormal", 0, 0, 1);
    double const normalUV = flt.vertex("VertexColorNormalUv", 0, 0, 1);
    endObject(beginObject(flt).face({normalUV, normal, normalUV}));
    ConvertedScene const scene(flt);
    EXPECT_EQ(objectOutline(scene), onlyTheBinding);
    EXPECT_EQ(scene.messages, heterogeneous);
}

TEST(FltObjectToSoSeparatorTest, FaceWithOneVertexYieldsAOneVertexPolygon)
{
    FltWriter flt;
    flt.vertexPalette();
    double const a = flt.vertex("VertexColorNormal", 0, 0, 1);
    endObject(beginObject(flt).face({a}));
    EXPECT_EQ(objectOutline(flt), "Separator object\n"
                                  "  MaterialBinding\n"
                                  "  Material faceVertexColorNormalSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColorNormal: 0 -1 | 0\n");
}

TEST(FltObjectToSoSeparatorTest, FaceWithAnEmptyListIsLeftOut)
{
    FltWriter flt;
    flt.vertexPalette();
    endObject(beginObject(flt).face({}));
    ConvertedScene const scene(flt);
    EXPECT_EQ(objectOutline(scene), onlyTheBinding);
    EXPECT_EQ(scene.messages, "");
}

TEST(FltObjectToSoSeparatorTest, FacesBetweenPushAndPopSubfaceAreSubFacesAtAnyDepth)
{
    FltWriter flt;
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    beginObject(flt).face(a);
    flt.add("PushSubface").face({a[0]});
    flt.add("PushSubface").face({a[1]}).add("PopSubface");
    flt.face({a[2]}).add("PopSubface");
    endObject(flt.face({a[2], a[1], a[0]}));
    EXPECT_EQ(objectOutline(flt), "Separator object\n"
                                  "  MaterialBinding\n"
                                  "  Material faceVertexColorSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 2 1 0 -1 | 0 1\n"
                                  "  PolygonOffset\n"
                                  "  Material subFaceVertexColorSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColor: 0 -1 1 -1 2 -1 | 0 1 2\n");
}

TEST(FltObjectToSoSeparatorTest, StrayPopSubfaceMakesSubFacesOfTheFacesBehindIt)
{
    FltWriter flt;
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    endObject(beginObject(flt).face(a).add("PopSubface").face({a[0]}).add("PushSubface").face({a[1]}));
    EXPECT_EQ(objectOutline(flt), "Separator object\n"
                                  "  MaterialBinding\n"
                                  "  Material faceVertexColorSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 1 -1 | 0 1\n"
                                  "  PolygonOffset\n"
                                  "  Material subFaceVertexColorSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColor: 0 -1 | 0\n");
}

TEST(FltObjectToSoSeparatorTest, SubfaceMarkerBehindAFaceWithoutALevelStillCounts)
{
    FltWriter flt;
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    beginObject(flt).face(a);
    flt.add("Face").add("VertexList", {{"offsets", a}}).add("PushSubface").face({a[0]}).add("PopSubface");
    endObject(flt);
    EXPECT_EQ(objectOutline(flt), "Separator object\n"
                                  "  MaterialBinding\n"
                                  "  Material faceVertexColorSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 0 1 2 -1 | 0 1\n"
                                  "  PolygonOffset\n"
                                  "  Material subFaceVertexColorSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColor: 0 -1 | 0\n");
}

TEST(FltObjectToSoSeparatorTest, HiddenFaceIsConvertedLikeAnyOther)
{
    FltWriter flt;
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    endObject(beginObject(flt).face(a, {{"flags", 0x04000000}}));
    EXPECT_EQ(objectOutline(flt), "Separator object\n"
                                  "  MaterialBinding\n"
                                  "  Material faceVertexColorSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 | 0\n");
}

TEST(FltObjectToSoSeparatorTest, RecordWithOpcode133EndsTheObjectsRecordsAtOnce)
{
    FltWriter flt;
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    endObject(beginObject(flt).face(a).addRaw(132).face(a).addRaw(133).face(a));
    EXPECT_EQ(objectOutline(flt), "Separator object\n"
                                  "  MaterialBinding\n"
                                  "  Material faceVertexColorSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 0 1 2 -1 | 0 1\n");
}

TEST(FltObjectToSoSeparatorTest, OpcodeWithItsTopBitSetDoesNotEndTheObject)
{
    FltWriter flt;
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    endObject(beginObject(flt).addRaw(0xffff).face(a));
    EXPECT_EQ(objectOutline(flt), "Separator object\n"
                                  "  MaterialBinding\n"
                                  "  Material faceVertexColorSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 | 0\n");
}

TEST(FltObjectToSoSeparatorTest, FacesBelowNestedPrimariesOfAnObjectAreItsFaces)
{
    FltWriter flt;
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    beginObject(flt).add("Group", {{"idASCII", "inner"}}).push().face(a);
    flt.add("LOD", {{"idASCII", "lod"}}).push().face({a[0]}).pop().pop();
    endObject(flt);
    ConvertedScene const scene(flt);
    EXPECT_EQ(objectOutline(scene), "Separator object\n"
                                    "  MaterialBinding\n"
                                    "  Material faceVertexColorSoMaterialSet\n"
                                    "  IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 0 -1 | 0 1\n");
    EXPECT_EQ(scene.find("inner"), nullptr);
    EXPECT_EQ(scene.find("lod"), nullptr);
}

TEST(FltObjectToSoSeparatorTest, FaceBelowAFaceIsAFaceOfItsOwn)
{
    FltWriter flt;
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    beginObject(flt).add("Face").push().add("VertexList", {{"offsets", a}}).face({a[1]}).pop();
    endObject(flt);
    EXPECT_EQ(objectOutline(flt), "Separator object\n"
                                  "  MaterialBinding\n"
                                  "  Material faceVertexColorSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 1 -1 | 0 1\n");
}

TEST(FltObjectToSoSeparatorTest, ListWithoutAFaceIsPassedOver)
{
    FltWriter flt;
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    endObject(beginObject(flt).add("VertexList", {{"offsets", a}}));
    EXPECT_EQ(objectOutline(flt), onlyTheBinding);
}

TEST(FltObjectToSoSeparatorTest, SeveralListsOfAFaceFormOnePolygonAndTheLastFormWins)
{
    FltWriter flt;
    flt.vertexPalette();
    std::vector<double> const a = triangle(flt, "VertexColor");
    std::vector<double> const b = triangle(flt, "VertexColorNormal");
    beginObject(flt).add("Face").push();
    flt.add("VertexList", {{"offsets", a}}).add("VertexList", {{"offsets", {b[0], b[2]}}}).pop();
    endObject(flt);
    EXPECT_EQ(objectOutline(flt), "Separator object\n"
                                  "  MaterialBinding\n"
                                  "  Material faceVertexColorNormalSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColorNormal: 0 1 2 0 2 -1 | 0\n");
}

TEST(FltObjectToSoSeparatorTest, HeterogeneousListBesideAGoodOneLosesOnlyItself)
{
    FltWriter flt;
    flt.vertexPalette();
    std::vector<double> const a = triangle(flt, "VertexColor");
    std::vector<double> const b = triangle(flt, "VertexColorNormal");
    beginObject(flt).add("Face").push().add("VertexList", {{"offsets", a}});
    flt.add("VertexList", {{"offsets", {a[0], b[0]}}}).pop();
    endObject(flt);
    ConvertedScene const scene(flt);
    EXPECT_EQ(objectOutline(scene), "Separator object\n"
                                    "  MaterialBinding\n"
                                    "  Material faceVertexColorSoMaterialSet\n"
                                    "  IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 | 0\n");
    EXPECT_EQ(scene.messages, heterogeneous);
}

TEST(FltObjectToSoSeparatorTest, UnknownOffsetsAreToldOncePerVertexAndTheFaceIsLeftOut)
{
    FltWriter flt;
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    endObject(beginObject(flt).face({9, 10}).face(a));
    ConvertedScene const scene(flt);
    EXPECT_EQ(objectOutline(scene), "Separator object\n"
                                    "  MaterialBinding\n"
                                    "  Material faceVertexColorSoMaterialSet\n"
                                    "  IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 | 0\n");
    EXPECT_EQ(scene.messages, withoutId + withoutId);
}

TEST(FltObjectToSoSeparatorTest, ListMixingKnownAndUnknownOffsetsIsHeterogeneous)
{
    FltWriter flt;
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    endObject(beginObject(flt).face({a[0], 9, a[1]}));
    ConvertedScene const scene(flt);
    EXPECT_EQ(objectOutline(scene), onlyTheBinding);
    EXPECT_EQ(scene.messages, withoutId + heterogeneous);
}

TEST_F(FltObjectToSoSeparatorWalkTest, NegativeOffsetFillsTheKeyByItsSignAndEntersTheMap)
{
    auto const list =
        decodeLastAs<FltRecordVertexList>(FltWriter().add("VertexList", {{"offsets", {-1.0, -1.0}}}));
    std::vector<int> indices;
    int id = 0;
    StreamCapture const messages(std::cerr);
    object.visitVertexList(list.get(), indices, id);
    EXPECT_EQ(id, 5);
    EXPECT_EQ(indices, (std::vector<int>{0, 0}));
    StreamCapture const out(std::cout);
    converter.showOffsetToVertexEntryMap(0);
    EXPECT_EQ(out.str(), "offset: 18446744073709551615  index: 0  size: 0  SOVP: 5\n");
    EXPECT_EQ(messages.str(), withoutId + withoutId + withoutId);
}

// --- Morph lists

TEST(FltObjectToSoSeparatorTest, MorphListTakesTheSecondMemberOfEachEntryAndItsFormFromTheFirst)
{
    FltWriter flt;
    flt.vertexPalette();
    triangle(flt, "VertexColor");
    std::vector<double> const b = triangle(flt, "VertexColorNormal");
    // With four words the second members begin one word behind the first ones: the last of them is the record
    // that follows, an offset that nobody knows.
    beginObject(flt).add("Face").push().add("MorphVertexList", {{"offsets", {0, b[1], b[2], b[1]}}}).pop();
    endObject(flt);
    EXPECT_EQ(objectOutline(flt), "Separator object\n"
                                  "  MaterialBinding\n"
                                  "  Material faceVertexColorNormalSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColorNormal: 1 2 1 0 -1 | 0\n");
}

TEST_F(FltObjectToSoSeparatorWalkTest, MorphListMakesNoTestThatItsVerticesAgreeInForm)
{
    addVertices(2);
    auto const normal = decodeLastAs<FltRecordVertexColorNormal>(FltWriter().add("VertexColorNormal"));
    converter.visitVertexColorNormal(normal.get());
    FltRecordMorphVertexList list(4);
    list.vertexOffsets = {{0, 48}, {0, 88}, {0, 8}};
    std::vector<int> indices{7};
    int id = 0;
    StreamCapture const messages(std::cerr);
    object.visitMorphVertexList(&list, indices, id);
    EXPECT_EQ(indices, (std::vector<int>{7, 1, 0, 0}));
    EXPECT_EQ(id, 1);
    EXPECT_EQ(messages.str(), "");
}

TEST(FltObjectToSoSeparatorTest, MorphListWithoutEntriesIsPassedOver)
{
    FltWriter flt;
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    beginObject(flt).add("Face").push().add("VertexList", {{"offsets", a}}).add("MorphVertexList").pop();
    endObject(flt);
    ConvertedScene const scene(flt);
    EXPECT_EQ(objectOutline(scene), "Separator object\n"
                                    "  MaterialBinding\n"
                                    "  Material faceVertexColorSoMaterialSet\n"
                                    "  IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 | 0\n");
    EXPECT_EQ(scene.messages, "");
}

TEST(FltObjectToSoSeparatorTest, FaceWithIndicesBeyondThePropertyOfItsFormIsKeptAndFindsRoomThere)
{
    FltWriter flt;
    flt.vertexPalette();
    std::vector<double> const a = triangle(flt, "VertexColor");
    double const normal = flt.vertex("VertexColorNormal", 0, 0, 1);
    beginObject(flt).add("Face").push();
    flt.add("VertexList", {{"offsets", a}}).add("VertexList", {{"offsets", {normal}}}).pop();
    endObject(flt);
    ConvertedScene const scene(flt);
    EXPECT_EQ(objectOutline(scene), "Separator object\n"
                                    "  MaterialBinding\n"
                                    "  Material faceVertexColorNormalSoMaterialSet\n"
                                    "  IndexedFaceSet SoIFSVertexColorNormal: 0 1 2 0 -1 | 0\n");
    EXPECT_EQ(scene.messages, "");
    auto const& property = static_cast<SoVertexProperty const&>(*scene.find("vertexColorNormalProperty"));
    EXPECT_EQ(property.vertex.getNum(), 1);
    EXPECT_EQ(property.vertex.getValues(0)[2], SbVec3f(0, 0, 0));
    EXPECT_EQ(property.normal.getValues(0)[2], SbVec3f(0, 0, 0));
}

// --- Obsolete vertices

FltWriter& oldFace(FltWriter& flt, std::string_view form, int count, int x = 0)
{
    flt.add("Face").push();
    for (int i = 0; i < count; ++i)
        flt.add(form, {{"Xcoordinate", x + i}, {"Ycoordinate", 10}, {"Zcoordinate", -3}});
    return flt.pop();
}

TEST(FltObjectToSoSeparatorTest, ObjectWhoseFacesAllCarryOldVerticesWithoutColourYieldsNoFaceSet)
{
    FltWriter flt(11);
    beginObject(flt);
    oldFace(flt, "OldVertex", 3);
    oldFace(flt, "OldVertex", 3);
    EXPECT_EQ(objectOutline(endObject(flt)), onlyTheBinding);
}

TEST(FltObjectToSoSeparatorTest, OldVerticesRunOnUntilAFaceWithAListClosesThem)
{
    FltWriter flt(11);
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    beginObject(flt);
    oldFace(flt, "OldVertex", 2);
    oldFace(flt, "OldVertex", 1, 5);
    endObject(flt.face(a));
    ConvertedScene const scene(flt);
    EXPECT_EQ(objectOutline(scene), "Separator object\n"
                                    "  MaterialBinding\n"
                                    "  IndexedFaceSet OLD_VERTEX: 0 1 2 -1\n"
                                    "  Material faceVertexColorSoMaterialSet\n"
                                    "  IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 | 0\n");
    auto const* const faceSet =
        static_cast<SoIndexedFaceSet*>(static_cast<SoGroup*>(scene.find("object"))->getChild(1));
    auto const& property = static_cast<SoVertexProperty const&>(*faceSet->vertexProperty.getValue());
    EXPECT_STREQ(property.getName().getString(), "OLD_VERTEX");
    ASSERT_EQ(property.vertex.getNum(), 3);
    EXPECT_EQ(property.vertex[0], SbVec3f(0, 10, -3));
    EXPECT_EQ(property.vertex[1], SbVec3f(1, 10, -3));
    EXPECT_EQ(property.vertex[2], SbVec3f(5, 10, -3));
    EXPECT_EQ(property.texCoord.getNum(), 3);
    EXPECT_FALSE(property.vertex.isDefault());
    EXPECT_TRUE(property.isNotifyEnabled());
}

TEST(FltObjectToSoSeparatorTest, OldVertexBringsItsTextureCoordinates)
{
    FltWriter flt(11);
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    beginObject(flt).add("Face").push();
    flt.add("OldVertexTextured", {{"texture", {0.5, 0.25}}}).add("OldVertex").pop();
    endObject(flt.face(a));
    ConvertedScene const scene(flt);
    auto const* const faceSet =
        static_cast<SoIndexedFaceSet*>(static_cast<SoGroup*>(scene.find("object"))->getChild(1));
    auto const& property = static_cast<SoVertexProperty const&>(*faceSet->vertexProperty.getValue());
    ASSERT_EQ(property.texCoord.getNum(), 2);
    EXPECT_EQ(property.texCoord[0], SbVec2f(0.5F, 0.25F));
    EXPECT_EQ(property.texCoord[1], SbVec2f(0, 0));
}

TEST(FltObjectToSoSeparatorTest, EachFurtherFaceWithAListAddsAFaceSetOfAllOldVerticesSoFar)
{
    FltWriter flt(11);
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    beginObject(flt);
    oldFace(flt, "OldVertex", 2);
    flt.face(a).face({a[0]});
    oldFace(flt, "OldVertex", 1);
    endObject(flt.face({a[1]}));
    EXPECT_EQ(objectOutline(flt), "Separator object\n"
                                  "  MaterialBinding\n"
                                  "  IndexedFaceSet OLD_VERTEX: 0 1 -1\n"
                                  "  IndexedFaceSet OLD_VERTEX: 0 1 -1\n"
                                  "  IndexedFaceSet OLD_VERTEX: 0 1 -1 2 -1\n"
                                  "  Material faceVertexColorSoMaterialSet\n"
                                  "  IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 0 -1 1 -1 | 0 1 2\n");
}

TEST(FltObjectToSoSeparatorTest, ACopyOfASceneOfOldVerticesKeepsTheirGuard)
{
    FltWriter flt(13);
    flt.push().add("Object").push();
    for (char const* const form : {"OldVertexColorNormal", "OldVertexColor", "OldVertex"}) {
        oldFace(flt, form, 3);
        oldFace(flt, form, 5, 7);
    }
    ConvertedScene const scene(flt.add("Face").pop().pop());
    SoNodeRef<SoNode> const copy(scene.root->copy());
    EXPECT_EQ(sceneText(copy.get()), scene.text());
    EXPECT_EQ(countTriangles(copy.get()), countTriangles(scene.root));
    SoNodeRef<SoNode> const again(copy->copy(TRUE));
    EXPECT_EQ(countTriangles(again.get()), countTriangles(scene.root));
}

TEST(FltObjectToSoSeparatorTest, TexturedFacePutsTheOldVerticesInASeparatorWithItsTexture)
{
    FltWriter flt(11);
    flt.add("TexturePattern", {{"fileName", "bricks.rgb"}, {"patternIndex", 4}});
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    beginObject(flt);
    oldFace(flt, "OldVertex", 1);
    flt.face(a, {{"texturePatternIndex", 4}}).face(a, {{"texturePatternIndex", 5}});
    EXPECT_EQ(objectOutline(endObject(flt)), "Separator object\n"
                                             "  MaterialBinding\n"
                                             "  Separator\n"
                                             "    Texture2 bricks.rgb\n"
                                             "    IndexedFaceSet OLD_VERTEX: 0 -1\n"
                                             "  Separator\n"
                                             "    IndexedFaceSet OLD_VERTEX: 0 -1\n"
                                             "  Material faceVertexColorSoMaterialSet\n"
                                             "  Separator isolateTexturesNodes\n"
                                             "    Texture2 bricks.rgb\n"
                                             "    IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 | 0\n"
                                             "  Separator isolateTexturesNodes\n"
                                             "    IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 | 1\n");
}

TEST(FltObjectToSoSeparatorTest, FaceOfUnknownVerticesStillClosesTheOldOnes)
{
    FltWriter flt(11);
    flt.vertexPalette();
    beginObject(flt);
    oldFace(flt, "OldVertex", 1);
    oldFace(flt, "OldVertexColorNormal", 1);
    flt.face({9});
    oldFace(flt, "OldVertexColorNormal", 1);
    EXPECT_EQ(objectOutline(endObject(flt)), "Separator object\n"
                                             "  MaterialBinding\n"
                                             "  IndexedFaceSet OLD_VERTEX: 0 -1\n"
                                             "  IndexedFaceSet OLD_VERTEX_COLOR_NORMAL: 0 -1 1\n");
}

TEST(FltObjectToSoSeparatorTest, FacesWithAListCloseOldVerticesWithNormalButNotThoseWithColourAlone)
{
    FltWriter flt(11);
    std::vector<double> const a = (flt.vertexPalette(), triangle(flt, "VertexColor"));
    beginObject(flt);
    oldFace(flt, "OldVertexColorNormal", 2);
    oldFace(flt, "OldVertexColor", 2);
    flt.face(a);
    oldFace(flt, "OldVertexColorNormal", 1);
    oldFace(flt, "OldVertexColor", 1);
    EXPECT_EQ(objectOutline(endObject(flt)), "Separator object\n"
                                             "  MaterialBinding\n"
                                             "  Material faceVertexColorSoMaterialSet\n"
                                             "  IndexedFaceSet SoIFSVertexColor: 0 1 2 -1 | 0\n"
                                             "  IndexedFaceSet OLD_VERTEX_COLOR_NORMAL: 0 1 -1 2\n"
                                             "  IndexedFaceSet OLD_VERTEX_COLOR: 0 1 2\n");
}

TEST_F(FltObjectToSoSeparatorWalkTest, RepeatedOldVerticesEndAtTheirCeilingWithOneMessage)
{
    addVertices(1);
    records.add("PushLevel");
    records.add("Face");
    records.add("PushLevel");
    FltRecord* const vertex = records.add("OldVertex");
    int const vertices = 1000000;
    for (int i = 1; i < vertices; ++i)
        records.repeat(vertex);
    FltRecord* const pop = records.add("PopLevel");
    FltRecord* const face = records.add("Face");
    FltRecord* const list = records.add("VertexList", {{"offsets", {8.0}}});
    int const faces = static_cast<int>(FltLimits::oldVertexIndices.floor / vertices) + 5;
    for (int i = 1; i < faces; ++i) {
        records.repeat(face);
        records.repeat(list);
    }
    records.repeat(pop);
    StreamCapture const messages(std::cerr);
    build();
    // Each set closes its polygon with one more index, so the last one that would fit exactly doesn't.
    int const sets = static_cast<int>(FltLimits::oldVertexIndices.floor / vertices) - 1;
    EXPECT_EQ(destination->getNumChildren(), 1 + sets + 2);
    EXPECT_EQ(messages.str(), printed("WARNING ! The faces of obsolete vertices repeat too many vertices: "
                                      "further ones are left out",
                                      2));
}

TEST_F(FltObjectToSoSeparatorWalkTest, OldVerticesBehindAFaceSetDoNotNotifyTheSceneOneByOne)
{
    addVertices(1);
    records.add("PushLevel");
    records.add("Face");
    FltRecord* const vertex = records.add("OldVertex");
    records.add("VertexList", {{"offsets", {8.0}}});
    records.add("Face");
    for (int i = 0; i < 1000; ++i)
        records.repeat(vertex);
    records.add("PopLevel");
    int notifications = 0;
    SoNodeSensor sensor([](void* data, SoSensor*) { ++*static_cast<int*>(data); }, &notifications);
    sensor.setPriority(0);
    sensor.attach(destination);
    build();
    ASSERT_EQ(destination->getNumChildren(), 4);
    EXPECT_LT(notifications, 10);
    auto const* const faceSet = static_cast<SoIndexedFaceSet*>(destination->getChild(1));
    EXPECT_EQ(static_cast<SoVertexProperty*>(faceSet->vertexProperty.getValue())->vertex.getNum(), 1001);
}

// --- The class driven by hand

TEST_F(FltObjectToSoSeparatorWalkTest, BuildWithoutOneOfItsInputsTellsTheConsoleAndAddsNothing)
{
    records.add("PushLevel");
    StreamCapture const messages(std::cerr);
    object.buildFinalSoSeparator();
    EXPECT_EQ(messages.str(), notInitialised) << "no iterator";
    object.setFltToInventor(nullptr);
    build();
    EXPECT_EQ(messages.str(), notInitialised + notInitialised) << "no converter";
    object.setFltToInventor(&converter);
    SoGroup* none = nullptr;
    object.setDestination(none);
    build();
    EXPECT_EQ(messages.str(), notInitialised + notInitialised + notInitialised) << "no destination";
    EXPECT_EQ(destination->getNumChildren(), 0);
    EXPECT_EQ(FltWarningMessageConsole::setOfMessages.back().level, 3);
}

TEST_F(FltObjectToSoSeparatorWalkTest, ObjectWithoutAnyRecordGetsTheBinding)
{
    build();
    EXPECT_EQ(sceneOutline(destination), onlyTheBinding);
}

TEST_F(FltObjectToSoSeparatorWalkTest, RecordsOfAnObjectEndWithTheirLevelAndAStrayPopIsLeftOut)
{
    records.add("PushLevel");
    records.add("Face");
    records.add("PopLevel");
    records.add("PopLevel");
    std::vector<FltRecord*> found;
    auto iterator = records.begin();
    object.getAllRecordsFromFltObject(iterator, found);
    EXPECT_EQ(found.size(), 3U);
    EXPECT_EQ(records.positionOf(iterator), 2);
    ++iterator;
    found.clear();
    object.getAllRecordsFromFltObject(iterator, found);
    EXPECT_TRUE(found.empty());
    EXPECT_EQ(records.positionOf(iterator), 3);
}

TEST_F(FltObjectToSoSeparatorWalkTest, RecordsOfAFaceEndWithItsLevelOrBeforeTheNextFace)
{
    records.add("Face");
    records.add("PushLevel");
    records.add("VertexList");
    records.add("PopLevel");
    records.add("Face");
    records.add("Comment");
    records.add("Face");
    records.add("PopLevel");
    std::vector<FltRecord*> found;
    auto iterator = records.begin();
    auto const next = [&] {
        found.clear();
        object.getFirstFaceFromIterator(iterator, found);
        return found.size();
    };
    EXPECT_EQ(next(), 4U);
    EXPECT_EQ(records.positionOf(iterator), 3);
    ++iterator;
    EXPECT_EQ(next(), 2U);
    EXPECT_EQ(records.positionOf(iterator), 5);
    ++iterator;
    EXPECT_EQ(next(), 2U) << "the Pop of the level around it takes the depth below zero";
    EXPECT_EQ(records.positionOf(iterator), 8) << "on the null entry at the end";
    EXPECT_EQ(next(), 0U);
    EXPECT_EQ(records.positionOf(iterator), 8);
}

TEST_F(FltObjectToSoSeparatorWalkTest, RecordsOfAFaceHoldTheLevelsWithinItsOwn)
{
    for (char const* const record :
         {"Face", "PushLevel", "VertexList", "PushLevel", "VertexList", "PopLevel", "PopLevel", "Comment"})
        records.add(record);
    std::vector<FltRecord*> found;
    auto iterator = records.begin();
    object.getFirstFaceFromIterator(iterator, found);
    EXPECT_EQ(found.size(), 7U);
    EXPECT_EQ(records.positionOf(iterator), 6) << "the Pop that ends its level";
}

TEST_F(FltObjectToSoSeparatorWalkTest, RecordsOfAFaceEndBeforeSubFacesAndOtherThings)
{
    for (char const* const end : {"PushSubface", "PopSubface"}) {
        Records faces;
        faces.add("Face");
        faces.add("Comment");
        faces.add(end);
        std::vector<FltRecord*> found;
        auto iterator = faces.begin();
        object.getFirstFaceFromIterator(iterator, found);
        EXPECT_EQ(found.size(), 2U) << end;
        EXPECT_EQ(faces.positionOf(iterator), 1) << end;
    }
}

/// The last opcode that may stand in an Object is that of an indexed string.
TEST_F(FltObjectToSoSeparatorWalkTest, RecordsOfAFaceHoldThoseUpToTheLastOpcodeOfAnObject)
{
    records.add("Face");
    records.addRaw(FltOpcode::indexedString, std::string("\0\0\0\1open", 8));
    records.add("Comment");
    std::vector<FltRecord*> found;
    auto iterator = records.begin();
    object.getFirstFaceFromIterator(iterator, found);
    EXPECT_EQ(found.size(), 3U);
    found.clear();
    iterator = records.begin();
    object.getAllRecordsFromFltObject(iterator, found);
    EXPECT_EQ(found.size(), 3U);
}

TEST_F(FltObjectToSoSeparatorWalkTest, SearchForAFaceNeverStepsBackBehindItsStart)
{
    records.add("PushSubface");
    std::vector<FltRecord*> found;
    auto iterator = records.begin();
    object.getFirstFaceFromIterator(iterator, found);
    EXPECT_EQ(records.positionOf(iterator), 0);
    EXPECT_TRUE(found.empty());
}

TEST_F(FltObjectToSoSeparatorWalkTest, PolygonOffsetTakesFactorThenUnits)
{
    object.addPolygonOffset(-1.0F, -30.0F);
    ASSERT_EQ(sceneOutline(destination), "Separator object\n  PolygonOffset\n");
    auto const* const offset = static_cast<SoPolygonOffset*>(destination->getChild(0));
    EXPECT_EQ(offset->factor.getValue(), -1.0F);
    EXPECT_EQ(offset->units.getValue(), -30.0F);
}

TEST_F(FltObjectToSoSeparatorWalkTest, AddedFaceMovesTheCounterAndFillsAllListsOfItsBatch)
{
    auto const face = decodeLastAs<FltRecordFace>(
        FltWriter().add("Face", {{"texturePatternIndex", -2}, {"flags", 0x40000000}}));
    FltObjectToSoSeparator::Batch batch;
    EXPECT_EQ(batch.faceCounter, -1);
    object.addFaceToVector(face.get(), {4, 5, 6}, batch);
    object.addFaceToVector(face.get(), {7}, batch);
    EXPECT_EQ(batch.indices, (std::vector<int>{4, 5, 6, -1, 7, -1}));
    EXPECT_EQ(batch.textureIndices, (std::vector<int>{-2, -2}));
    EXPECT_EQ(batch.materialIndices, (std::vector<int>{0, 1}));
    EXPECT_EQ(batch.faceCounter, 1);
    EXPECT_EQ(batch.materialSlots.getNum(), 2);
}

} // namespace
