// Scenes drawn again and again, so that the toolkit draws from what it keeps of them.

#include "loader/FltLoader.h"
#include "support/ScratchFolder.h"
#include "toolkit/SoNodeRef.h"
#include "writer/FltWriter.h"

#include <Inventor/SoOffscreenRenderer.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoSwitch.h>
#include <gtest/gtest.h>
#include <vector>

namespace
{

/// A scene of two Objects of two looks each, one of which is hidden, and a renderer that goes on.
class KeptParts : public testing::Test
{
protected:
    void SetUp() override
    {
        FltWriter flt;
        flt.vertexPalette();
        std::vector<std::vector<double>> faces;
        for (int x = 0; x < 4; ++x)
            faces.push_back({double(flt.vertex("VertexColor", x, 0, 0)),
                             double(flt.vertex("VertexColor", x + 1, 0, 0)),
                             double(flt.vertex("VertexColor", x + 1, 1, 0))});
        flt.endVertexPalette().push();
        for (std::size_t i = 0; i < faces.size(); ++i) {
            if (i % 2 == 0)
                flt.add("Object", {{"idASCII", "o" + std::to_string(i)}}).push();
            flt.face(faces[i], {{"packedColor", {255, 60.0 * double(i), 40, 220}},
                                {"flags", i == 3 ? 0x14000000L : 0x10000000L},
                                {"drawType", i % 2 == 0 ? 0 : 1}});
            if (i % 2 == 1)
                flt.pop();
        }
        flt.pop().save(folder / "model.flt");
        scene = FltLoader().load(folder / "model.flt");
        top->addChild(camera);
        top->addChild(scene.root());
        camera->viewAll(top.get(), viewport);
        renderer.setComponents(SoOffscreenRenderer::RGB);
    }

    std::vector<unsigned char> draw()
    {
        EXPECT_TRUE(renderer.render(top.get()));
        return {renderer.getBuffer(), renderer.getBuffer() + 3 * size * size};
    }

    SoSwitch* hidden() const
    {
        SoSearchAction search;
        search.setType(SoSwitch::getClassTypeId());
        search.setSearchingAll(TRUE);
        search.apply(scene.root());
        return search.getPath() != nullptr ? static_cast<SoSwitch*>(search.getPath()->getTail()) : nullptr;
    }

    static constexpr short size = 64;
    ScratchFolder const folder;
    FltScene scene;
    SoNodeRef<SoSeparator> const top{new SoSeparator};
    SoPerspectiveCamera* const camera = new SoPerspectiveCamera;
    SbViewportRegion const viewport{size, size};
    SoOffscreenRenderer renderer{viewport};
};

} // namespace

TEST_F(KeptParts, AreDrawnAsTheyWereTheFirstTime)
{
    EXPECT_EQ(scene.root()->renderCaching.getValue(), SoSeparator::ON);
    std::vector<unsigned char> const first = draw();
    for (int frame = 0; frame < 100; ++frame) // the toolkit forgets unused textures after 60
        ASSERT_EQ(draw(), first) << frame;
}

TEST_F(KeptParts, ChangeWhenWhatIsHiddenIsShown)
{
    for (int frame = 0; frame < 4; ++frame)
        draw();
    std::vector<unsigned char> const before = draw();
    ASSERT_NE(hidden(), nullptr);
    hidden()->whichChild = SO_SWITCH_ALL;
    std::vector<unsigned char> const shown = draw();
    EXPECT_NE(shown, before);
    scene.root()->renderCaching = SoSeparator::OFF;
    EXPECT_EQ(draw(), shown);
}
