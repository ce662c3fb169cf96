#include "scene/FltMeshNodes.h"

#include "support/SceneText.h"
#include "toolkit/SoNodeRef.h"

#include <gtest/gtest.h>

namespace
{

std::vector<FltTexture> const textures = [] {
    std::vector<FltTexture> list(2);
    list[0].written = "first.png";
    list[1].written = "second.png";
    return list;
}();

std::string textOf(FltMesh& mesh, FltMeshNodes::Arrays arrays)
{
    FltAppearanceNodes appearances(textures);
    SoNodeRef<SoNode> const node(FltMeshNodes::make(mesh, arrays, appearances));
    return sceneText(node.get());
}

std::string textOf(FltMesh mesh)
{
    return textOf(mesh, FltMeshNodes::Arrays::kept);
}

FltMesh triangle()
{
    FltMesh mesh;
    mesh.isLit = false;
    mesh.positions = {SbVec3f(0, 0, 0), SbVec3f(1, 0, 0), SbVec3f(0, 1, 0)};
    mesh.colors = {0xff0000ff};
    mesh.indices = {0, 1, 2, FltMesh::end};
    return mesh;
}

bool has(FltMesh const& mesh, char const* line)
{
    return textOf(mesh).find(line) != std::string::npos;
}

} // namespace

TEST(FltMeshNodes, drawFaces)
{
    EXPECT_EQ(textOf(triangle()), R"(Separator {
  LightModel {
    model BASE_COLOR
  }
  ShapeHints {
    vertexOrdering COUNTERCLOCKWISE
    shapeType SOLID
  }
  Material {
    diffuseColor 1 0 0
    shininess 0
    transparency 0
  }
  IndexedFaceSet {
    vertexProperty 
    VertexProperty {
      vertex [ 0 0 0,
          1 0 0,
          0 1 0 ]
      normalBinding PER_VERTEX_INDEXED
      materialBinding OVERALL
    }
    coordIndex [ 0, 1, 2, -1 ]
  }
}
)");
}

TEST(FltMeshNodes, drawLines)
{
    FltMesh mesh = triangle();
    mesh.kind = FltMesh::Kind::lines;
    mesh.size = 2;
    EXPECT_EQ(textOf(mesh), R"(Separator {
  LightModel {
    model BASE_COLOR
  }
  DrawStyle {
    lineWidth 2
  }
  Material {
    diffuseColor 1 0 0
    shininess 0
    transparency 0
  }
  IndexedLineSet {
    vertexProperty 
    VertexProperty {
      vertex [ 0 0 0,
          1 0 0,
          0 1 0 ]
      normalBinding PER_VERTEX_INDEXED
      materialBinding OVERALL
    }
    coordIndex [ 0, 1, 2, -1 ]
  }
}
)");
}

TEST(FltMeshNodes, drawPointsEachWithItsColour)
{
    FltMesh mesh = triangle();
    mesh.kind = FltMesh::Kind::points;
    mesh.size = 3;
    mesh.colors = {0xff0000ff, 0x00ff00ff, 0x0000ff80};
    mesh.indices.clear();
    EXPECT_EQ(textOf(mesh), R"(Separator {
  LightModel {
    model BASE_COLOR
  }
  DrawStyle {
    pointSize 3
  }
  Material {
    diffuseColor 1 0 0
    shininess 0
    transparency 0
  }
  PointSet {
    vertexProperty 
    VertexProperty {
      vertex [ 0 0 0,
          1 0 0,
          0 1 0 ]
      orderedRGBA [ 0xff0000ff, 0xff00ff, 0xff80 ]
      normalBinding PER_VERTEX
      materialBinding PER_VERTEX
    }
  }
}
)");
}

TEST(FltMeshNodes, giveLightBackByTheMaterial)
{
    FltMesh mesh = triangle();
    mesh.isLit = true;
    mesh.normals = std::vector<SbVec3f>(3, SbVec3f(0, 0, 1));
    mesh.material.ambient = SbColor(0.5F, 0, 0);
    mesh.material.specular = SbColor(0, 1, 0);
    mesh.material.emissive = SbColor(0, 0, 1);
    mesh.material.shininess = 0.25F;
    EXPECT_FALSE(has(mesh, "specularColor"));
    EXPECT_FALSE(has(mesh, "LightModel"));
    EXPECT_TRUE(has(mesh, "ambientColor 0.5 0 0"));
    mesh.material.isFromPalette = true;
    EXPECT_TRUE(has(mesh, "specularColor 0 1 0"));
    EXPECT_TRUE(has(mesh, "emissiveColor 0 0 1"));
    EXPECT_TRUE(has(mesh, "shininess 0.25"));
    EXPECT_TRUE(has(mesh, "normal [ 0 0 1,"));
}

TEST(FltMeshNodes, moveTheirPlacesWhereFloatsHoldThemAndStandThereOtherwise)
{
    FltMesh mesh = triangle();
    mesh.origin = SbVec3d(10, 20, 30);
    EXPECT_TRUE(has(mesh, "vertex [ 10 20 30,"));
    EXPECT_FALSE(has(mesh, "ranslation"));
    mesh.origin = SbVec3d(4500000.25, 0, 0);
    EXPECT_TRUE(has(mesh, "translation 4500000 0 0\n"));
    EXPECT_TRUE(has(mesh, "vertex [ 0.25 0 0,"));
}

TEST(FltMeshNodes, hideWhatIsHiddenInASwitch)
{
    FltMesh mesh = triangle();
    mesh.isHidden = true;
    EXPECT_EQ(textOf(mesh).substr(0, 19), "DEF hidden Switch {");
    EXPECT_FALSE(has(mesh, "whichChild"));
}

TEST(FltMeshNodes, haveATextureUnitForEachLayer)
{
    FltMesh mesh = triangle();
    mesh.texture = 0;
    mesh.uvs = std::vector<SbVec2f>(3, SbVec2f(0.5F, 0.25F));
    FltMesh::Layer layer;
    layer.number = 3;
    layer.texture = 1;
    layer.uvs = std::vector<SbVec2f>(3, SbVec2f(1, 2));
    mesh.layers.push_back(layer);
    EXPECT_EQ(textOf(mesh), R"(Separator {
  LightModel {
    model BASE_COLOR
  }
  ShapeHints {
    vertexOrdering COUNTERCLOCKWISE
    shapeType SOLID
  }
  Texture2 {
    filename "first.png"
  }
  TextureUnit {
    unit 3
  }
  Texture2 {
    filename "second.png"
  }
  TextureUnit {
  }
  TextureUnit {
    unit 3
  }
  TextureCoordinate2 {
    point [ 1 2,
        1 2,
        1 2 ]
  }
  TextureUnit {
  }
  Material {
    diffuseColor 1 0 0
    shininess 0
    transparency 0
  }
  IndexedFaceSet {
    vertexProperty 
    VertexProperty {
      vertex [ 0 0 0,
          1 0 0,
          0 1 0 ]
      texCoord [ 0.5 0.25,
          0.5 0.25,
          0.5 0.25 ]
      normalBinding PER_VERTEX_INDEXED
      materialBinding OVERALL
    }
    coordIndex [ 0, 1, 2, -1 ]
  }
}
)");
}

TEST(FltMeshNodes, freeTheArraysOfAMeshThatIsNeededNoMore)
{
    FltMesh mesh = triangle();
    mesh.origin = SbVec3d(1, 2, 3);
    mesh.isLit = true;
    mesh.texture = 0;
    mesh.normals.assign(3, SbVec3f(0, 0, 1));
    mesh.uvs.assign(3, SbVec2f(0, 1));
    mesh.colors = {1, 2, 3};
    mesh.layers = {{1, 1, std::vector<SbVec2f>(3, SbVec2f(1, 0))}};
    std::string const text = textOf(mesh, FltMeshNodes::Arrays::kept);
    EXPECT_EQ(mesh.positions.size() + mesh.normals.size() + mesh.uvs.size() + mesh.colors.size(), 12U);
    EXPECT_EQ(mesh.indices.size() + mesh.layers[0].uvs.size(), 7U);
    EXPECT_EQ(textOf(mesh, FltMeshNodes::Arrays::freed), text);
    EXPECT_EQ(mesh.positions.capacity() + mesh.normals.capacity() + mesh.uvs.capacity(), 0U);
    EXPECT_EQ(mesh.colors.capacity() + mesh.indices.capacity() + mesh.layers[0].uvs.capacity(), 0U);
}
