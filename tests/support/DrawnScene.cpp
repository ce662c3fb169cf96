#include "support/DrawnScene.h"

#include <Inventor/SbBox3f.h>
#include <Inventor/SoFullPath.h>
#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/nodes/SoNode.h>
#include <Inventor/nodes/SoShape.h>
#include <cmath>
#include <sstream>

namespace
{

/// The names of all nodes of a path. The toolkit has no other way to those that it hides than to take the
/// path for a full one, which it isn't.
__attribute__((no_sanitize("vptr"))) std::vector<std::string> namesAlong(SoPath const* path)
{
    auto const* const full = static_cast<SoFullPath const*>(path);
    std::vector<std::string> names;
    for (int i = 0; i < full->getLength(); ++i)
        if (full->getNode(i)->getName().getLength() > 0)
            names.emplace_back(full->getNode(i)->getName().getString());
    return names;
}

DrawnScene::Primitive primitiveOf(SoCallbackAction& action,
                                  std::vector<SoPrimitiveVertex const*> const& vertices)
{
    DrawnScene::Primitive primitive;
    SbMatrix const matrix = action.getModelMatrix();
    SbMatrix const normalMatrix = matrix.inverse().transpose();
    for (SoPrimitiveVertex const* vertex : vertices) {
        SbVec3f point;
        SbVec3f normal;
        matrix.multVecMatrix(vertex->getPoint(), point);
        normalMatrix.multDirMatrix(vertex->getNormal(), normal);
        normal.normalize();
        SbColor ambient;
        SbColor diffuse;
        SbColor specular;
        SbColor emission;
        float shininess;
        float transparency;
        action.getMaterial(ambient, diffuse, specular, emission, shininess, transparency,
                           vertex->getMaterialIndex());
        auto const byte = [](float part) { return static_cast<int>(std::lround(part * 255)); };
        primitive.points.push_back(point);
        primitive.normals.push_back(normal);
        primitive.colors.push_back(
            {byte(diffuse[0]), byte(diffuse[1]), byte(diffuse[2]), byte(1 - transparency)});
        primitive.emission = emission;
    }
    primitive.names = namesAlong(action.getCurPath());
    primitive.isLit = action.getLightModel() != SoLightModel::BASE_COLOR;
    primitive.isTwoSided = action.getShapeType() != SoShapeHints::SOLID;
    primitive.isClockwise = action.getVertexOrdering() == SoShapeHints::CLOCKWISE;
    return primitive;
}

double roundedTo(double value)
{
    return std::round(value * 1000) / 1000 + 0.0;
}

} // namespace

std::string DrawnScene::Primitive::color() const
{
    std::ostringstream text;
    for (std::size_t i = 0; i < 4; ++i)
        text << (i > 0 ? " " : "") << colors[0][i];
    return text.str();
}

SbVec3f DrawnScene::Primitive::front() const
{
    SbVec3f direction = (points[1] - points[0]).cross(points[2] - points[0]);
    direction.normalize();
    return isClockwise ? -direction : direction;
}

DrawnScene::DrawnScene(SoNode* root)
{
    using Vertex = SoPrimitiveVertex const;
    SoCallbackAction action;
    SoType const shape = SoShape::getClassTypeId();
    action.addTriangleCallback(
        shape,
        [](void* self, SoCallbackAction* at, Vertex* a, Vertex* b, Vertex* c) {
            static_cast<DrawnScene*>(self)->triangles.push_back(primitiveOf(*at, {a, b, c}));
        },
        this);
    action.addLineSegmentCallback(
        shape,
        [](void* self, SoCallbackAction* at, Vertex* a, Vertex* b) {
            static_cast<DrawnScene*>(self)->lines.push_back(primitiveOf(*at, {a, b}));
        },
        this);
    action.addPointCallback(
        shape,
        [](void* self, SoCallbackAction* at, Vertex* a) {
            static_cast<DrawnScene*>(self)->points.push_back(primitiveOf(*at, {a}));
        },
        this);
    action.apply(root);
}

double DrawnScene::area() const
{
    double sum = 0;
    for (Primitive const& each : triangles)
        sum += static_cast<double>(
                   (each.points[1] - each.points[0]).cross(each.points[2] - each.points[0]).length()) /
               2;
    return sum;
}

std::string DrawnScene::extent() const
{
    SbBox3f box;
    for (auto const* list : {&triangles, &lines, &points})
        for (Primitive const& each : *list)
            for (SbVec3f const& point : each.points)
                box.extendBy(point);
    if (box.isEmpty())
        return "nothing";
    std::ostringstream text;
    for (SbVec3f const& corner : {box.getMin(), box.getMax()}) {
        for (int i = 0; i < 3; ++i)
            text << (i > 0 ? " " : "") << roundedTo(static_cast<double>(corner[i]));
        text << (corner == box.getMin() ? " to " : "");
    }
    return text.str();
}
