#include "toolkit/SceneWriter.h"

#include "support/ConvertedScene.h"
#include "support/SceneText.h"
#include "support/SceneTraversal.h"
#include "toolkit/SoNodeRef.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoInfo.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <array>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>

namespace
{

std::string written(SoNode* root, bool isBinary)
{
    SceneWriter::Output output;
    std::size_t const firstGuess = 4096;
    output.setBuffer(std::malloc(firstGuess), firstGuess, std::realloc);
    output.setBinary(isBinary);
    SceneWriter::write(root, output);
    void* buffer = nullptr;
    std::size_t size = 0;
    output.getBuffer(buffer, size);
    std::string bytes(static_cast<char const*>(buffer), size);
    std::free(buffer);
    return bytes;
}

SoNodeRef<SoSeparator> readAgain(std::string const& bytes)
{
    SoInput input;
    input.setBuffer(bytes.data(), bytes.size());
    return SoNodeRef<SoSeparator>(SoDB::readAll(&input));
}

/// A set of three triangles of its own, without material indices.
SoIndexedFaceSet* triangles(std::vector<std::int32_t> const& indices)
{
    auto* const property = new SoVertexProperty;
    // Growing an array leaves the new values unset, so each of them is given.
    std::array<SbVec3f, 3> const corners{{{0, 0, 0}, {1, 0, 0}, {1, 1, 0}}};
    property->vertex.setValues(0, static_cast<int>(corners.size()), corners.data());
    auto* const faces = new SoIndexedFaceSet;
    faces->vertexProperty = property;
    faces->coordIndex.setValues(0, static_cast<int>(indices.size()), indices.data());
    return faces;
}

class SceneWriterTest : public testing::Test
{
protected:
    SceneWriterTest()
    {
        auto* const binding = new SoMaterialBinding;
        binding->value = SoMaterialBinding::PER_FACE_INDEXED;
        root->addChild(binding);
    }

    SoNodeRef<SoSeparator> root{new SoSeparator};
};

} // namespace

TEST_F(SceneWriterTest, TextsAreWrittenAsTheToolkitWritesThem)
{
    for (char const* const text :
         {"", "plain", "with \"quotes\"", "back\\slash", "two\nlines", "caf\xe9", "\"", "a'b"}) {
        auto* const info = new SoInfo;
        info->string = text;
        info->setName("name");
        root->addChild(info);
    }
    std::string const ascii = writtenScene(root.get(), false);
    std::string const binary = writtenScene(root.get(), true);
    EXPECT_EQ(written(root.get(), false), ascii);
    EXPECT_EQ(written(root.get(), true), binary);
}

TEST_F(SceneWriterTest, NumbersThatNoReaderTakesBecomeOnesThatItDoes)
{
    auto* const property = new SoVertexProperty;
    float const infinity = std::numeric_limits<float>::infinity();
    property->vertex.set1Value(0, std::numeric_limits<float>::quiet_NaN(), infinity, -infinity);
    property->vertex.set1Value(1, 1, 2, 3);
    root->addChild(property);
    SoNodeRef<SoSeparator> const again = readAgain(written(root.get(), false));
    ASSERT_NE(again.get(), nullptr);
    ASSERT_EQ(again->getNumChildren(), 2);
    auto const& vertex = static_cast<SoVertexProperty*>(again->getChild(1))->vertex;
    ASSERT_EQ(vertex.getNum(), 2);
    EXPECT_EQ(vertex[0][0], 0);
    EXPECT_GT(vertex[0][1], 1e38F);
    EXPECT_LT(vertex[0][2], -1e38F);
    EXPECT_EQ(vertex[1], SbVec3f(1, 2, 3));
}

TEST_F(SceneWriterTest, FacesWithoutMaterialIndicesStandBelowABindingThatWantsNone)
{
    root->addChild(triangles({0, 1, 2, -1}));
    SceneWriter::makePlain(root.get());
    ASSERT_EQ(root->getChild(1)->getTypeId(), SoSeparator::getClassTypeId());
    auto* const separator = static_cast<SoSeparator*>(root->getChild(1));
    ASSERT_EQ(separator->getNumChildren(), 2);
    EXPECT_EQ(static_cast<SoMaterialBinding*>(separator->getChild(0))->value.getValue(),
              SoMaterialBinding::OVERALL);
    EXPECT_EQ(separator->getChild(1)->getTypeId(), SoIndexedFaceSet::getClassTypeId());
}

TEST_F(SceneWriterTest, FacesThatHaveWhatTheBindingWantsStayAsTheyAre)
{
    auto* const withIndices = triangles({0, 1, 2, -1});
    withIndices->materialIndex = 0;
    root->addChild(withIndices);
    auto* const withColours = triangles({0, 1, 2, -1});
    static_cast<SoVertexProperty*>(withColours->vertexProperty.getValue())->orderedRGBA = 0xff;
    root->addChild(withColours);
    std::string const before = writtenScene(root.get(), false);
    EXPECT_EQ(written(root.get(), false), before);
}

TEST_F(SceneWriterTest, IndicesAfterTheLastVertexBecomeTheLastOne)
{
    auto* const faces = triangles({0, 1, 3, -1, 2, 1, 70000, -1});
    faces->materialIndex = 0;
    root->addChild(faces);
    SceneWriter::makePlain(root.get());
    std::vector<std::int32_t> const expected{0, 1, 2, -1, 2, 1, 2, -1};
    std::int32_t const* const values = faces->coordIndex.getValues(0);
    EXPECT_EQ(std::vector<std::int32_t>(values, values + faces->coordIndex.getNum()), expected);
    faces->coordIndex.set1Value(6, 3); // the one right behind, alone
    SceneWriter::makePlain(root.get());
    EXPECT_EQ(faces->coordIndex[6], 2);
}

TEST_F(SceneWriterTest, ASharedPartIsMadePlainOnce)
{
    auto* const shared = new SoGroup;
    shared->addChild(triangles({0, 1, 2, -1}));
    root->addChild(shared);
    root->addChild(shared);
    SceneWriter::makePlain(root.get());
    EXPECT_EQ(shared->getChild(0)->getTypeId(), SoSeparator::getClassTypeId());
    auto* const separator = static_cast<SoSeparator*>(shared->getChild(0));
    EXPECT_EQ(separator->getChild(1)->getTypeId(), SoIndexedFaceSet::getClassTypeId());
}

TEST_F(SceneWriterTest, ScenesOfObsoleteVerticesAreDrawnAlikeAfterTheyAreWrittenAndRead)
{
    FltWriter flt(13);
    flt.push().add("Object").push();
    for (char const* const form : {"OldVertexColorNormal", "OldVertexColor", "OldVertex"})
        for (int face = 0; face < 2; ++face) {
            flt.add("Face").push();
            for (int i = 0; i < 3 + face; ++i)
                flt.add(form, {{"Xcoordinate", i}, {"Ycoordinate", i * i}});
            flt.pop();
        }
    ConvertedScene const scene(flt.add("Face").pop().pop());
    int const drawn = countTriangles(scene.root);
    EXPECT_GT(drawn, 0);
    for (bool const isBinary : {false, true}) {
        SoNodeRef<SoSeparator> const again = readAgain(written(scene.root, isBinary));
        ASSERT_NE(again.get(), nullptr);
        EXPECT_EQ(countTriangles(again.get()), drawn);
        SoNodeRef<SoNode> const copy(again->copy());
        EXPECT_EQ(countTriangles(copy.get()), drawn);
    }
}

TEST_F(SceneWriterTest, FacesWithoutAnyBindingStayAsTheyAre)
{
    SoNodeRef<SoSeparator> const plain(new SoSeparator);
    plain->addChild(triangles({0, 1, 2, -1}));
    SceneWriter::makePlain(plain.get());
    EXPECT_EQ(plain->getChild(0)->getTypeId(), SoIndexedFaceSet::getClassTypeId());
}

TEST_F(SceneWriterTest, FacesWithAnEmptyListOfMaterialIndicesHaveNone)
{
    auto* const faces = triangles({0, 1, 2, -1});
    faces->materialIndex.setNum(0);
    root->addChild(faces);
    SceneWriter::makePlain(root.get());
    EXPECT_EQ(root->getChild(1)->getTypeId(), SoSeparator::getClassTypeId());
}

TEST_F(SceneWriterTest, IndicesIntoOneVertexPointAtItAndThoseIntoNoneStayAsTheyAre)
{
    auto* const faces = triangles({0, 1, 2, -1});
    faces->materialIndex = 0;
    auto& vertex = static_cast<SoVertexProperty*>(faces->vertexProperty.getValue())->vertex;
    root->addChild(faces);
    auto const indices = [&] {
        SceneWriter::makePlain(root.get());
        std::int32_t const* const values = faces->coordIndex.getValues(0);
        return std::vector<std::int32_t>(values, values + faces->coordIndex.getNum());
    };
    vertex.setNum(0);
    EXPECT_EQ(indices(), (std::vector<std::int32_t>{0, 1, 2, -1}));
    vertex.setValue(1, 2, 3);
    EXPECT_EQ(indices(), (std::vector<std::int32_t>{0, 0, 0, -1}));
}
