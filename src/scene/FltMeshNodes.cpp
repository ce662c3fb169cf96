#include "scene/FltMeshNodes.h"

#include "scene/FltHiddenNode.h"
#include "scene/FltMatrixNodes.h"
#include "visual/FltLocalOrigin.h"

#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <Inventor/nodes/SoIndexedLineSet.h>
#include <Inventor/nodes/SoPointSet.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoTextureCoordinate2.h>
#include <Inventor/nodes/SoTextureUnit.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <algorithm>

namespace
{

using FltMeshNodes::Arrays;

template <class Field, class Value>
void setAll(Field& field, std::vector<Value>& values, Arrays arrays)
{
    field.setNum(static_cast<int>(values.size()));
    std::copy(values.begin(), values.end(), field.startEditing());
    field.finishEditing();
    if (arrays == Arrays::freed)
        values = std::vector<Value>();
}

/// The units of further textures take their coordinates by the same indices as the first.
void addLayerCoordinates(SoGroup& group, FltMesh& mesh, Arrays arrays)
{
    if (mesh.layers.empty())
        return;
    for (FltMesh::Layer& layer : mesh.layers) {
        auto* const unit = new SoTextureUnit;
        unit->unit = layer.number;
        auto* const coordinates = new SoTextureCoordinate2;
        setAll(coordinates->point, layer.uvs, arrays);
        group.addChild(unit);
        group.addChild(coordinates);
    }
    group.addChild(new SoTextureUnit);
}

void setPositions(SoMFVec3f& field, std::vector<SbVec3f>& positions, SbVec3d const& way, Arrays arrays)
{
    setAll(field, positions, arrays);
    if (way == SbVec3d(0, 0, 0))
        return;
    SbVec3f* const places = field.startEditing();
    std::transform(places, places + field.getNum(), places,
                   [&way](SbVec3f const& position) { return SbVec3f(SbVec3d(position) + way); });
    field.finishEditing();
}

SoVertexProperty* makeVertexProperty(FltMesh& mesh, SbVec3d const& way, Arrays arrays)
{
    auto* const property = new SoVertexProperty;
    setPositions(property->vertex, mesh.positions, way, arrays);
    if (!mesh.normals.empty())
        setAll(property->normal, mesh.normals, arrays);
    if (!mesh.uvs.empty())
        setAll(property->texCoord, mesh.uvs, arrays);
    auto const ofCorners = mesh.kind == FltMesh::Kind::points ? SoVertexProperty::PER_VERTEX
                                                              : SoVertexProperty::PER_VERTEX_INDEXED;
    property->normalBinding = ofCorners;
    property->materialBinding = mesh.colors.size() > 1 ? ofCorners : SoVertexProperty::OVERALL;
    if (mesh.colors.size() > 1)
        setAll(property->orderedRGBA, mesh.colors, arrays);
    return property;
}

template <class Shape>
SoNode* makeIndexedShape(FltMesh& mesh, SbVec3d const& way, Arrays arrays)
{
    auto* const shape = new Shape;
    shape->vertexProperty = makeVertexProperty(mesh, way, arrays);
    setAll(shape->coordIndex, mesh.indices, arrays);
    return shape;
}

/// @param way what positions are moved by
SoNode* makeShape(FltMesh& mesh, SbVec3d const& way, Arrays arrays)
{
    switch (mesh.kind) {
    case FltMesh::Kind::faces:
        return makeIndexedShape<SoIndexedFaceSet>(mesh, way, arrays);
    case FltMesh::Kind::lines:
        return makeIndexedShape<SoIndexedLineSet>(mesh, way, arrays);
    case FltMesh::Kind::points:
        break;
    }
    auto* const points = new SoPointSet;
    points->vertexProperty = makeVertexProperty(mesh, way, arrays);
    return points;
}

} // namespace

void FltMeshNodes::addTo(SoGroup& group, FltMesh& mesh, Arrays arrays, FltAppearanceNodes& appearances,
                         bool isMirrored, SbVec3d const& zero)
{
    SbVec3d const place = mesh.origin - zero;
    bool const isMoved = place == SbVec3d(0, 0, 0) || FltLocalOrigin::mayMove(mesh.positions, place);
    SbVec3d const stand = isMoved ? SbVec3d(0, 0, 0) : FltLocalOrigin::roundedToFloats(place);
    FltMatrixNodes::addTranslation(group, stand);
    appearances.addTo(group, mesh, isMirrored);
    addLayerCoordinates(group, mesh, arrays);
    group.addChild(appearances.materialOf(mesh));
    group.addChild(makeShape(mesh, place - stand, arrays));
}

SoGroup* FltMeshNodes::make(FltMesh& mesh, Arrays arrays, FltAppearanceNodes& appearances, bool isMirrored,
                            SbVec3d const& zero)
{
    auto* const group = new SoSeparator;
    addTo(*group, mesh, arrays, appearances, isMirrored, zero);
    return mesh.isHidden ? FltHiddenNode::around(group) : static_cast<SoGroup*>(group);
}
