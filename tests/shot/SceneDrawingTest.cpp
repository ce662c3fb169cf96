#include "shot/SceneDrawing.h"

#include "toolkit/SoNodeRef.h"

#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoOrthographicCamera.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoVertexProperty.h>
#include <gtest/gtest.h>
#include <set>

namespace
{

/// Narrow faces side by side, each a little higher and of another colour, so that all pixels differ.
SoNodeRef<SoSeparator> unevenScene()
{
    SoNodeRef<SoSeparator> scene(new SoSeparator);
    auto* const camera = new SoOrthographicCamera;
    camera->height = 2;
    camera->position.setValue(0, 0, 1);
    scene->addChild(camera);
    auto* const light = new SoLightModel;
    light->model = SoLightModel::BASE_COLOR;
    scene->addChild(light);
    constexpr int count = 9;
    for (int i = 0; i < count; ++i) {
        auto* const faces = new SoFaceSet;
        auto* const corners = new SoVertexProperty;
        auto const side = [](int number) { return -1 + 2 * static_cast<float>(number) / count; };
        SbVec3f const quad[] = {
            {side(i), -1, 0}, {side(i + 1), -1, 0}, {side(i + 1), side(i + 1), 0}, {side(i), side(i), 0}};
        corners->vertex.setValues(0, 4, quad);
        corners->orderedRGBA =
            0xff + 0x1b000000U * static_cast<unsigned int>(i) + 0x00370000U * (8U - i % 5U) / 2;
        faces->vertexProperty = corners;
        faces->numVertices = 4;
        scene->addChild(faces);
    }
    return scene;
}

} // namespace

TEST(SceneDrawingTest, eachPixelIsTheMeanOfThoseOfTheFinerPicture)
{
    SoNodeRef<SoSeparator> const scene = unevenScene();
    constexpr int width = 8, height = 6;
    for (int const fine : {2, 3}) {
        Picture const finer = SceneDrawing::drawNodes(scene.get(), width * fine, height * fine, 1);
        Picture const drawn = SceneDrawing::drawNodes(scene.get(), width, height, fine);
        std::set<int> means;
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                for (int channel = 0; channel < 3; ++channel) {
                    double sum = 0;
                    for (int row = 0; row < fine; ++row)
                        for (int column = 0; column < fine; ++column)
                            sum += finer.at(x * fine + column, y * fine + row)[channel];
                    int const mean = static_cast<int>(sum / (fine * fine) + 0.5);
                    ASSERT_EQ(drawn.at(x, y)[channel], mean) << fine << ": " << x << ' ' << y;
                    means.insert(mean);
                }
        EXPECT_GT(means.size(), 20U) << "the scene is uneven";
    }
}
