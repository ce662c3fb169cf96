#include "JoinedShapes.h"

#include <Inventor/SbMatrix.h>
#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoShape.h>
#include <Inventor/nodes/SoShapeHints.h>
#include <Inventor/nodes/SoTexture2.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <map>
#include <utility>
#include <vector>

namespace
{

struct Corners {
    SbVec2s size;
    int components = 0;
    std::vector<SbVec3f> places;
    std::vector<SbVec3f> normals;
    std::vector<SbVec2f> uvs;
    SbColor color;
};

using Shapes = std::map<std::pair<unsigned char const*, float>, Corners>;

void addTriangle(void* data, SoCallbackAction* action, SoPrimitiveVertex const* first,
                 SoPrimitiveVertex const* second, SoPrimitiveVertex const* third)
{
    SbVec2s size;
    int components = 0;
    unsigned char const* const picture = action->getTextureImage(size, components);
    SbColor ambient;
    SbColor diffuse;
    SbColor specular;
    SbColor emissive;
    float shininess = 0;
    float transparency = 0;
    action->getMaterial(ambient, diffuse, specular, emissive, shininess, transparency,
                        first->getMaterialIndex());
    Corners& corners = (*static_cast<Shapes*>(data))[{picture, transparency}];
    corners.size = size;
    corners.components = components;
    corners.color = diffuse;
    SbMatrix const& matrix = action->getModelMatrix();
    for (SoPrimitiveVertex const* const corner : {first, second, third}) {
        SbVec3f place;
        matrix.multVecMatrix(corner->getPoint(), place);
        corners.places.push_back(place);
        corners.normals.push_back(corner->getNormal());
        corners.uvs.emplace_back(corner->getTextureCoords()[0], corner->getTextureCoords()[1]);
    }
}

SoNode* makeShape(Corners const& corners)
{
    auto* const property = new SoVertexProperty;
    auto const count = static_cast<int>(corners.places.size());
    property->vertex.setValues(0, count, corners.places.data());
    property->normal.setValues(0, count, corners.normals.data());
    property->texCoord.setValues(0, count, corners.uvs.data());
    property->normalBinding = SoVertexProperty::PER_VERTEX_INDEXED;
    std::vector<int32_t> indices;
    for (int i = 0; i < count; ++i) {
        indices.push_back(i);
        if (i % 3 == 2)
            indices.push_back(-1);
    }
    auto* const shape = new SoIndexedFaceSet;
    shape->coordIndex.setValues(0, static_cast<int>(indices.size()), indices.data());
    shape->vertexProperty = property;
    return shape;
}

} // namespace

SoNodeRef<SoSeparator> JoinedShapes::of(SoNode* scene)
{
    Shapes shapes;
    SoCallbackAction action;
    action.addTriangleCallback(SoShape::getClassTypeId(), addTriangle, &shapes);
    action.apply(scene);
    SoNodeRef<SoSeparator> root(new SoSeparator);
    auto* const hints = new SoShapeHints;
    hints->vertexOrdering = SoShapeHints::COUNTERCLOCKWISE;
    hints->shapeType = SoShapeHints::SOLID;
    root->addChild(hints);
    for (auto const& [look, corners] : shapes) {
        auto* const part = new SoSeparator;
        auto* const material = new SoMaterial;
        material->diffuseColor = corners.color;
        material->transparency = look.second;
        part->addChild(material);
        if (look.first != nullptr) {
            auto* const texture = new SoTexture2;
            texture->image.setValue(corners.size, corners.components, look.first);
            part->addChild(texture);
        }
        part->addChild(makeShape(corners));
        root->addChild(part);
    }
    return root;
}
