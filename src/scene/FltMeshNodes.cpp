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

template <class Field, class Value>
void setAll(Field& field, std::vector<Value> const& values)
{
    field.setNum(static_cast<int>(values.size()));
    std::copy(values.begin(), values.end(), field.startEditing());
    field.finishEditing();
}

/// The units of further textures take their coordinates by the same indices as the first.
void addLayerCoordinates(SoGroup& group, FltMesh const& mesh)
{
    if (mesh.layers.empty())
        return;
    for (FltMesh::Layer const& layer : mesh.layers) {
        auto* const unit = new SoTextureUnit;
        unit->unit = layer.number;
        auto* const coordinates = new SoTextureCoordinate2;
        setAll(coordinates->point, layer.uvs);
        group.addChild(unit);
        group.addChild(coordinates);
    }
    group.addChild(new SoTextureUnit);
}

std::vector<SbVec3f> moved(std::vector<SbVec3f> const& positions, SbVec3d const& way)
{
    std::vector<SbVec3f> places;
    places.reserve(positions.size());
    for (SbVec3f const& position : positions)
        places.emplace_back(SbVec3d(position) + way);
    return places;
}

SoVertexProperty* makeVertexProperty(FltMesh const& mesh, SbVec3d const& way)
{
    auto* const property = new SoVertexProperty;
    if (way == SbVec3d(0, 0, 0))
        setAll(property->vertex, mesh.positions);
    else
        setAll(property->vertex, moved(mesh.positions, way));
    if (!mesh.normals.empty())
        setAll(property->normal, mesh.normals);
    if (!mesh.uvs.empty())
        setAll(property->texCoord, mesh.uvs);
    auto const ofCorners = mesh.kind == FltMesh::Kind::points ? SoVertexProperty::PER_VERTEX
                                                              : SoVertexProperty::PER_VERTEX_INDEXED;
    property->normalBinding = ofCorners;
    if (mesh.colors.size() > 1)
        setAll(property->orderedRGBA, mesh.colors);
    property->materialBinding = mesh.colors.size() > 1 ? ofCorners : SoVertexProperty::OVERALL;
    return property;
}

template <class Shape>
SoNode* makeIndexedShape(FltMesh const& mesh, SbVec3d const& way)
{
    auto* const shape = new Shape;
    shape->vertexProperty = makeVertexProperty(mesh, way);
    setAll(shape->coordIndex, mesh.indices);
    return shape;
}

/// @param way what positions are moved by
SoNode* makeShape(FltMesh const& mesh, SbVec3d const& way)
{
    switch (mesh.kind) {
    case FltMesh::Kind::faces:
        return makeIndexedShape<SoIndexedFaceSet>(mesh, way);
    case FltMesh::Kind::lines:
        return makeIndexedShape<SoIndexedLineSet>(mesh, way);
    case FltMesh::Kind::points:
        break;
    }
    auto* const points = new SoPointSet;
    points->vertexProperty = makeVertexProperty(mesh, way);
    return points;
}

} // namespace

void FltMeshNodes::addTo(SoGroup& group, FltMesh const& mesh, FltAppearanceNodes& appearances,
                         bool isMirrored, SbVec3d const& zero)
{
    SbVec3d const place = mesh.origin - zero;
    bool const isMoved = place == SbVec3d(0, 0, 0) || FltLocalOrigin::mayMove(mesh.positions, place);
    SbVec3d const stand = isMoved ? SbVec3d(0, 0, 0) : FltLocalOrigin::roundedToFloats(place);
    FltMatrixNodes::addTranslation(group, stand);
    appearances.addTo(group, mesh, isMirrored);
    addLayerCoordinates(group, mesh);
    group.addChild(appearances.materialOf(mesh));
    group.addChild(makeShape(mesh, place - stand));
}

SoGroup* FltMeshNodes::make(FltMesh const& mesh, FltAppearanceNodes& appearances, bool isMirrored,
                            SbVec3d const& zero)
{
    auto* const group = new SoSeparator;
    addTo(*group, mesh, appearances, isMirrored, zero);
    return mesh.isHidden ? FltHiddenNode::around(group) : static_cast<SoGroup*>(group);
}
