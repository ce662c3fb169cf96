// Tells what the toolkit draws of Open Inventor files: a line of JSON for each, with what stands below each
// name.
//
//     survey_scenes FILE.iv...

#include "support/ScenePrimitives.h"

#include <Inventor/SbBox3f.h>
#include <Inventor/SbMatrix.h>
#include <Inventor/SbVec3d.h>
#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/SoInteraction.h>
#include <Inventor/SoPrimitiveVertex.h>
#include <Inventor/actions/SoCallbackAction.h>
#include <Inventor/nodes/SoSeparator.h>
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

class Survey : public ScenePrimitives
{
public:
    std::map<std::string, Part> parts;

private:
    static SbVec3f placeOf(SoCallbackAction& action, Vertex const& vertex)
    {
        SbVec3f place;
        action.getModelMatrix().multVecMatrix(vertex.getPoint(), place);
        return place;
    }

    static void takeCorner(Part& part, SoCallbackAction& action, Vertex const& vertex)
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

    void takeTriangle(SoCallbackAction& action, Vertex const& a, Vertex const& b, Vertex const& c) override
    {
        Part& part = parts[name()];
        ++part.triangles;
        if (isTurning()) {
            ++part.turning;
            return;
        }
        part.unlit += action.getLightModel() == SoLightModel::BASE_COLOR ? 1 : 0;
        if (!picture().empty())
            ++part.textured[std::filesystem::path(picture()).filename()];
        for (Vertex const* vertex : {&a, &b, &c})
            takeCorner(part, action, *vertex);
        SbVec3d const first(placeOf(action, a)), second(placeOf(action, b)), third(placeOf(action, c));
        double const area = (second - first).cross(third - first).length() / 2;
        part.area += area;
        part.moment += (first + second + third) / 3 * area;
    }

    void takeLine(SoCallbackAction&, Vertex const&, Vertex const&) override { ++parts[name()].lines; }
    void takePoint(SoCallbackAction&, Vertex const&) override { ++parts[name()].points; }
};

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

Json surveyOf(std::string const& file)
{
    SoInput input;
    SoSeparator* const root = input.openFile(file.c_str()) ? SoDB::readAll(&input) : nullptr;
    if (root == nullptr)
        throw std::runtime_error(file + " can't be read");
    root->ref();
    Survey survey;
    survey.goOver(root);
    root->unref();
    Json parts = Json::object();
    for (auto const& [name, part] : survey.parts)
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
            std::cout << surveyOf(file) << '\n';
        return 0;
    } catch (std::exception const& problem) {
        std::cerr << "survey_scenes: " << problem.what() << '\n';
        return 1;
    }
}
