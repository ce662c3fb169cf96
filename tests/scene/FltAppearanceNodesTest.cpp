#include "scene/FltAppearanceNodes.h"

#include "support/SceneText.h"

#include <Inventor/nodes/SoPolygonOffset.h>
#include <Inventor/nodes/SoSeparator.h>
#include <gtest/gtest.h>
#include <set>

namespace
{

class FltAppearanceNodesTest : public testing::Test
{
protected:
    SoNodeRef<SoSeparator> groupOf(FltMesh const& mesh)
    {
        SoNodeRef<SoSeparator> group(new SoSeparator);
        nodes.addTo(*group, mesh);
        return group;
    }

    bool has(FltMesh const& mesh, char const* line)
    {
        return sceneText(groupOf(mesh).get()).find(line) != std::string::npos;
    }

    float offsetOf(FltMesh const& mesh)
    {
        SoNodeRef<SoSeparator> const group = groupOf(mesh);
        for (int i = 0; i < group->getNumChildren(); ++i)
            if (group->getChild(i)->isOfType(SoPolygonOffset::getClassTypeId())) {
                auto const& offset = static_cast<SoPolygonOffset const&>(*group->getChild(i));
                EXPECT_EQ(offset.units.getValue(), offset.factor.getValue());
                return offset.factor.getValue();
            }
        return 0;
    }

    std::vector<FltTexture> textures{2};
    FltAppearanceNodes nodes{textures};
};

} // namespace

TEST_F(FltAppearanceNodesTest, SharesNodesOfWhatMeshesHaveInCommon)
{
    FltMesh mesh;
    mesh.isLit = false;
    mesh.isBlended = true;
    mesh.level = 1;
    mesh.texture = 1;
    SoNodeRef<SoSeparator> const first = groupOf(mesh), second = groupOf(mesh);
    ASSERT_EQ(first->getNumChildren(), 5);
    for (int i = 0; i < 5; ++i)
        EXPECT_EQ(first->getChild(i), second->getChild(i)) << i;
}

TEST_F(FltAppearanceNodesTest, SharesAMaterialAmongMeshesInWhichEachOfItsValuesIsTheSame)
{
    FltMesh const plain;
    SoNodeRef<SoNode> const material(nodes.materialOf(plain));
    EXPECT_EQ(nodes.materialOf(FltMesh()), material.get());
    FltMesh white;
    white.colors = {~0U};
    EXPECT_EQ(nodes.materialOf(white), material.get());
    std::vector<FltMesh> others(5);
    others[0].colors = {0xff0000ff};
    others[1].colors = {0xffffff80};
    others[2].isLit = false;
    others[3].material.isFromPalette = true;
    others[4].material.shininess = 0.5F;
    using Material = FltMesh::Material;
    for (SbColor Material::*const color : {&Material::ambient, &Material::specular, &Material::emissive})
        for (int channel = 0; channel < 3; ++channel)
            (others.emplace_back().material.*color)[channel] = 0.75F;
    std::set<SoNode*> all = {material.get()};
    for (FltMesh const& other : others)
        all.insert(nodes.materialOf(other));
    EXPECT_EQ(all.size(), 1 + others.size());
}

TEST_F(FltAppearanceNodesTest, ShowsOneSideOrBoth)
{
    FltMesh mesh;
    EXPECT_TRUE(has(mesh, "shapeType SOLID"));
    EXPECT_TRUE(has(mesh, "vertexOrdering COUNTERCLOCKWISE"));
    mesh.isTwoSided = true;
    EXPECT_TRUE(has(mesh, "shapeType UNKNOWN_SHAPE_TYPE"));
    mesh.kind = FltMesh::Kind::lines;
    EXPECT_FALSE(has(mesh, "ShapeHints"));
}

TEST_F(FltAppearanceNodesTest, TurnsFacesInMirrors)
{
    FltMesh const mesh;
    SoNodeRef<SoSeparator> const group(new SoSeparator);
    nodes.addTo(*group, mesh, true);
    EXPECT_NE(sceneText(group.get()).find("vertexOrdering CLOCKWISE"), std::string::npos);
    EXPECT_TRUE(has(mesh, "vertexOrdering COUNTERCLOCKWISE"));
}

TEST_F(FltAppearanceNodesTest, BringsFacesOnFacesNearerAndTheirLinesNearest)
{
    FltMesh mesh;
    EXPECT_EQ(offsetOf(mesh), 0);
    mesh.isOutlined = true;
    EXPECT_EQ(offsetOf(mesh), 1);
    mesh.level = 2;
    EXPECT_EQ(offsetOf(mesh), -3);
    mesh.isOutlined = false;
    EXPECT_EQ(offsetOf(mesh), -4);
    mesh.kind = FltMesh::Kind::lines;
    EXPECT_EQ(offsetOf(mesh), 0);
}

TEST_F(FltAppearanceNodesTest, BlendsOrPassesOverTheAlphaOfThePicture)
{
    FltMesh mesh;
    EXPECT_FALSE(has(mesh, "TransparencyType"));
    mesh.ignoresTextureAlpha = true;
    EXPECT_TRUE(has(mesh, "value NONE"));
    mesh.isBlended = true;
    EXPECT_TRUE(has(mesh, "value SORTED_OBJECT_BLEND"));
}

TEST_F(FltAppearanceNodesTest, SortsTheTrianglesOfSeveralFaces)
{
    FltMesh mesh;
    mesh.isBlended = true;
    mesh.indices = {0, 1, 2, 3, FltMesh::end};
    EXPECT_TRUE(has(mesh, "value SORTED_OBJECT_BLEND"));
    mesh.indices.insert(mesh.indices.end(), {4, 5, 6, FltMesh::end});
    EXPECT_TRUE(has(mesh, "value SORTED_OBJECT_SORTED_TRIANGLE_BLEND"));
    mesh.kind = FltMesh::Kind::lines;
    EXPECT_TRUE(has(mesh, "value SORTED_OBJECT_BLEND"));
}

TEST_F(FltAppearanceNodesTest, DrawsCutOutsAsOpaqueButForTheirClearPixels)
{
    FltMesh mesh;
    mesh.isCutOut = true;
    mesh.texture = 1;
    SoNodeRef<SoSeparator> const cutOut = groupOf(mesh), another = groupOf(mesh);
    EXPECT_EQ(sceneText(cutOut.get()), R"(Separator {
  ShapeHints {
    vertexOrdering COUNTERCLOCKWISE
    shapeType SOLID
  }
  TransparencyType {
    value NONE
  }
  AlphaTest {
    function GREATER
    value 0.5
  }
  Complexity {
    type OBJECT_SPACE ~
    value 0.5 ~
    textureQuality 0.40000001
  }
  Texture2 {
  }
}
)");
    for (int i = 0; i < cutOut->getNumChildren(); ++i)
        EXPECT_EQ(cutOut->getChild(i), another->getChild(i)) << i;
    mesh.isCutOut = false;
    SoNodeRef<SoSeparator> const opaque = groupOf(mesh);
    EXPECT_NE(opaque->getChild(opaque->getNumChildren() - 1), cutOut->getChild(cutOut->getNumChildren() - 1));
}

TEST_F(FltAppearanceNodesTest, DrawsCutOutsOfSinglePixelsPixelByPixel)
{
    std::vector<unsigned char> bytes(4 * 8 * 8, 0);
    bytes[3] = 255;
    textures[1].pixels = std::make_shared<PicturePixels const>(PicturePixels{8, 8, 4, bytes});
    FltMesh mesh;
    mesh.isCutOut = true;
    mesh.texture = 1;
    EXPECT_TRUE(has(mesh, "textureQuality 0.1"));
    mesh.texture = 0;
    EXPECT_TRUE(has(mesh, "textureQuality 0.4"));
}

TEST_F(FltAppearanceNodesTest, SetsTheSizeOfLinesAndPointsButNotOfFaces)
{
    FltMesh mesh;
    mesh.size = 4;
    EXPECT_FALSE(has(mesh, "DrawStyle"));
    mesh.kind = FltMesh::Kind::lines;
    EXPECT_TRUE(has(mesh, "lineWidth 4"));
    mesh.kind = FltMesh::Kind::points;
    EXPECT_TRUE(has(mesh, "pointSize 4"));
    mesh.size = 0;
    EXPECT_FALSE(has(mesh, "DrawStyle"));
}

TEST_F(FltAppearanceNodesTest, GivesTexturesTheirPictures)
{
    textures[1].written = "tree.png";
    textures[1].pixels = std::make_shared<PicturePixels const>(PicturePixels{1, 1, 3, {1, 2, 3}});
    FltMesh mesh;
    mesh.texture = 1;
    SoNodeRef<SoSeparator> const group = groupOf(mesh);
    auto* const texture = static_cast<SoTexture2*>(group->getChild(group->getNumChildren() - 1));
    EXPECT_STREQ(texture->filename.getValue().getString(), "tree.png");
    SbVec2s size;
    int components = 0;
    ASSERT_NE(texture->image.getValue(size, components), nullptr);
    EXPECT_EQ(size, SbVec2s(1, 1));
    EXPECT_EQ(components, 3);
}

TEST_F(FltAppearanceNodesTest, RepeatsAndMixesATextureAsItsAttributesSay)
{
    using Attributes = FltTextureAttributes;
    FltMesh mesh;
    mesh.texture = 0;
    auto const textOf = [&](Attributes::Wrap wrapV, Attributes::Environment environment) {
        FltTexture texture;
        texture.attributes.wrapV = wrapV;
        texture.attributes.environment = environment;
        std::vector<FltTexture> const list{texture};
        FltAppearanceNodes others(list);
        SoNodeRef<SoSeparator> const group(new SoSeparator);
        others.addTo(*group, mesh);
        return sceneText(group.get());
    };
    auto const holds = [](std::string const& text, char const* part) {
        return text.find(part) != std::string::npos;
    };
    std::string const usual = textOf(Attributes::Wrap::repeat, Attributes::Environment::modulate);
    EXPECT_FALSE(holds(usual, "wrap"));
    EXPECT_FALSE(holds(usual, "model "));
    std::string const clamped = textOf(Attributes::Wrap::clamp, Attributes::Environment::decal);
    EXPECT_TRUE(holds(clamped, "wrapT CLAMP"));
    EXPECT_FALSE(holds(clamped, "wrapS"));
    EXPECT_TRUE(holds(clamped, "model DECAL"));
    EXPECT_TRUE(holds(textOf(Attributes::Wrap::repeat, Attributes::Environment::replace), "model REPLACE"));
    std::string const blended = textOf(Attributes::Wrap::repeat, Attributes::Environment::blend);
    EXPECT_TRUE(holds(blended, "model BLEND"));
    EXPECT_TRUE(holds(blended, "blendColor 1 1 1"));
    EXPECT_EQ(textOf(Attributes::Wrap::mirror, Attributes::Environment::add), usual) << "as near as it can";
}
