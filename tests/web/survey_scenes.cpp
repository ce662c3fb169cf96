// Tells what the toolkit draws of Open Inventor files: a line of JSON for each, with what stands below each
// name.
//
//     survey_scenes FILE.iv...

#include <Inventor/SbVec3d.h>
#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/SoInteraction.h>
#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/VRMLnodes/SoVRMLBillboard.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/elements/SoTextureUnitElement.h>
#include <Inventor/nodes/SoAsciiText.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoShape.h>
#include <Inventor/nodes/SoTexture2.h>
#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <vector>

namespace
{

using Json = nlohmann::json;

/// What is drawn below a name and no other. Sums are over all triangles, or over all of their corners.
struct Part {
    std::size_t triangles = 0;
    std::size_t turning = 0; ///< Of the triangles: to the eye. The rest doesn't know of them.
    std::size_t unlit = 0;
    std::map<std::string, std::size_t> textured; ///< Triangles by the name of the picture.
    double area = 0;
    SbVec3d moment{0, 0, 0};        ///< Of middles by areas.
    std::array<double, 4> colors{}; ///< Red, green, blue and opacity of corners.
    /// @name Of lit corners
    /// @{
    SbVec3d normals{0, 0, 0};
    SbVec3d emission{0, 0, 0};
    double roughness = 0; ///< The glTF term of what the shininess is.
    /// @}
    SbBox3f box;
    std::size_t lines = 0;
    std::size_t points = 0;
};

struct Traversal {
    std::map<std::string, Part> parts;
    int billboards = 0; ///< Above the present node.
    /// @name Of each separator above the present node
    /// @{
    std::vector<std::string> pictures = {""};
    std::vector<std::string> names = {""};
    /// @}

    Part& part() { return parts[names.back()]; }
};

Traversal& of(void* data)
{
    return *static_cast<Traversal*>(data);
}

SbVec3f placeOf(SoCallbackAction& action, SoPrimitiveVertex const& vertex)
{
    SbVec3f place;
    action.getModelMatrix().multVecMatrix(vertex.getPoint(), place);
    return place;
}

void takeCorner(Part& part, SoCallbackAction& action, SoPrimitiveVertex const& vertex)
{
    SbColor ambient, diffuse, specular, emission;
    float shininess = 0, transparency = 0;
    action.getMaterial(ambient, diffuse, specular, emission, shininess, transparency,
                       vertex.getMaterialIndex());
    for (int i = 0; i < 3; ++i)
        part.colors.at(static_cast<std::size_t>(i)) += diffuse[i];
    part.colors[3] += 1 - transparency;
    part.box.extendBy(placeOf(action, vertex));
    if (action.getLightModel() == SoLightModel::BASE_COLOR)
        return;
    part.emission += SbVec3d(SbVec3f(emission.getValue()));
    // The shininess of the toolkit is an exponent's part of 128.
    part.roughness += specular == SbColor(0, 0, 0) ? 1 : std::sqrt(2 / (128 * shininess + 2));
    SbVec3f normal;
    action.getModelMatrix().inverse().transpose().multDirMatrix(vertex.getNormal(), normal);
    normal.normalize();
    part.normals += SbVec3d(normal);
}

void takeTriangle(void* data, SoCallbackAction* action, SoPrimitiveVertex const* a,
                  SoPrimitiveVertex const* b, SoPrimitiveVertex const* c)
{
    if (action->getCurPathTail()->isOfType(SoAsciiText::getClassTypeId()))
        return;
    Traversal& traversal = of(data);
    Part& part = traversal.part();
    ++part.triangles;
    if (traversal.billboards > 0) {
        ++part.turning;
        return;
    }
    part.unlit += action->getLightModel() == SoLightModel::BASE_COLOR ? 1 : 0;
    if (!traversal.pictures.back().empty())
        ++part.textured[traversal.pictures.back()];
    std::array<SbVec3d, 3> places;
    SoPrimitiveVertex const* const corners[] = {a, b, c};
    for (std::size_t i = 0; i < places.size(); ++i) {
        takeCorner(part, *action, *corners[i]);
        places.at(i) = SbVec3d(placeOf(*action, *corners[i]));
    }
    double const area = (places[1] - places[0]).cross(places[2] - places[0]).length() / 2;
    part.area += area;
    part.moment += (places[0] + places[1] + places[2]) / 3 * area;
}

void takeLine(void* data, SoCallbackAction*, SoPrimitiveVertex const*, SoPrimitiveVertex const*)
{
    ++of(data).part().lines;
}

void takePoint(void* data, SoCallbackAction*, SoPrimitiveVertex const*)
{
    ++of(data).part().points;
}

template <int change>
SoCallbackAction::Response passBillboard(void* data, SoCallbackAction*, SoNode const*)
{
    of(data).billboards += change;
    return SoCallbackAction::CONTINUE;
}

SoCallbackAction::Response beginSeparator(void* data, SoCallbackAction*, SoNode const* node)
{
    Traversal& traversal = of(data);
    std::string const name = node->getName().getString();
    traversal.pictures.push_back(traversal.pictures.back());
    // The writer of files calls nodes without a name "_" that stand in several places.
    bool const isOwn = !name.empty() && name != "_";
    traversal.names.push_back(isOwn ? name : traversal.names.back());
    return SoCallbackAction::CONTINUE;
}

SoCallbackAction::Response endSeparator(void* data, SoCallbackAction*, SoNode const*)
{
    of(data).pictures.pop_back();
    of(data).names.pop_back();
    return SoCallbackAction::CONTINUE;
}

SoCallbackAction::Response takePicture(void* data, SoCallbackAction* action, SoNode const* node)
{
    if (SoTextureUnitElement::get(action->getState()) == 0)
        of(data).pictures.back() =
            std::filesystem::path(static_cast<SoTexture2 const*>(node)->filename.getValue().getString())
                .filename();
    return SoCallbackAction::CONTINUE;
}

std::array<double, 3> listOf(SbVec3d const& vector)
{
    return {vector[0], vector[1], vector[2]};
}

Json jsonOf(Part const& part)
{
    Json json = {{"triangles", part.triangles},
                 {"turning", part.turning},
                 {"unlit", part.unlit},
                 {"textured", part.textured},
                 {"area", part.area},
                 {"moment", listOf(part.moment)},
                 {"colors", part.colors},
                 {"lines", part.lines},
                 {"points", part.points},
                 {"normals", listOf(part.normals)},
                 {"emission", listOf(part.emission)},
                 {"roughness", part.roughness}};
    if (!part.box.isEmpty())
        json["box"] = {listOf(SbVec3d(part.box.getMin())), listOf(SbVec3d(part.box.getMax()))};
    return json;
}

Json survey(std::string const& file)
{
    SoInput input;
    SoSeparator* const root = input.openFile(file.c_str()) ? SoDB::readAll(&input) : nullptr;
    if (root == nullptr)
        throw std::runtime_error(file + " can't be read");
    root->ref();
    Traversal traversal;
    SoCallbackAction action;
    SoType const shape = SoShape::getClassTypeId(), billboard = SoVRMLBillboard::getClassTypeId();
    action.addPreCallback(billboard, passBillboard<1>, &traversal);
    action.addPostCallback(billboard, passBillboard<-1>, &traversal);
    action.addPreCallback(SoSeparator::getClassTypeId(), beginSeparator, &traversal);
    action.addPostCallback(SoSeparator::getClassTypeId(), endSeparator, &traversal);
    action.addPreCallback(SoTexture2::getClassTypeId(), takePicture, &traversal);
    action.addTriangleCallback(shape, takeTriangle, &traversal);
    action.addLineSegmentCallback(shape, takeLine, &traversal);
    action.addPointCallback(shape, takePoint, &traversal);
    action.apply(root);
    root->unref();
    Json parts = Json::object();
    for (auto const& [name, part] : traversal.parts)
        parts[name] = jsonOf(part);
    return {{"file", file}, {"parts", parts}};
}

} // namespace

int main(int argc, char** argv)
{
    SoDB::init();
    SoInteraction::init();
    try {
        for (std::string const& file : std::vector<std::string>(argv + 1, argv + argc))
            std::cout << survey(file) << '\n';
        return 0;
    } catch (std::exception const& problem) {
        std::cerr << "survey_scenes: " << problem.what() << '\n';
        return 1;
    }
}
