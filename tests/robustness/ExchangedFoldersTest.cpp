#include "support/ExchangedFolders.h"

#include "loader/FltLoader.h"
#include "support/SceneText.h"
#include "support/SmallPictures.h"
#include "writer/FltWriter.h"

#include <Inventor/SoPath.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoTexture2.h>
#include <atomic>
#include <gtest/gtest.h>
#include <thread>

namespace
{

/// Exchanges the folder and the link again and again, as fast as it can, while it lives.
class Exchanges
{
public:
    explicit Exchanges(ExchangedFolders const& folders)
        : thread([this, &folders] {
              while (!isOver)
                  folders.exchange();
          })
    {
    }
    ~Exchanges()
    {
        isOver = true;
        thread.join();
    }

    Exchanges(Exchanges const&) = delete;
    Exchanges& operator=(Exchanges const&) = delete;

private:
    std::atomic<bool> isOver = false;
    std::thread thread;
};

FltWriter group(std::string const& name)
{
    FltWriter flt;
    flt.push().add("Group", {{"idASCII", name}}).pop();
    return flt;
}

/// Refers to a database and a texture by the name that is exchanged.
FltWriter database()
{
    FltWriter flt;
    flt.add("TexturePattern", {{"fileName", "part/tree.rgb"}, {"patternIndex", 3}}).vertexPalette();
    std::vector<double> corners;
    for (int const y : {0, 0, 1})
        corners.push_back(static_cast<double>(flt.vertex("VertexColorUv", corners.empty() ? 0 : 1, y, 0)));
    flt.push().add("Object").push().face(corners, {{"texturePatternIndex", 3}, {"materialIndex", -1}}).pop();
    return flt.add("ExternalReference", {{"asciiPath", "part/part.flt"}}).add("Group").pop();
}

int widthOfTexture(SoSeparator* scene)
{
    SoSearchAction search;
    search.setType(SoTexture2::getClassTypeId());
    search.apply(scene);
    SbVec2s size(0, 0);
    int components = 0;
    if (search.getPath() != nullptr)
        static_cast<SoTexture2*>(search.getPath()->getTail())->image.getValue(size, components);
    return size[0];
}

/// How many loads read what is inside, and how many what is outside.
struct Counts {
    int inside = 0;
    int outside = 0;
};

} // namespace

TEST(ExchangedFolders, NothingOutsideIsReadHoweverOftenAFolderAndALinkAreExchanged)
{
    ExchangedFolders const folders;
    folders.folder.write("tree/part/tree.rgb", SmallPictures::plainSgi(4));
    folders.folder.write("outside/tree.rgb", SmallPictures::plainSgi(8));
    group("inside").save(folders.inside() + "/part.flt");
    group("outside").save(folders.outside() + "/part.flt");
    std::string const path = folders.tree() + "/a.flt";
    database().save(path);
    FltLoader loader;
    loader.onlyBelow = folders.tree();
    Counts databases;
    Counts textures;
    Exchanges const exchanges(folders);
    for (int load = 0; load < 3000; ++load) {
        loader.exact = load % 2 == 1;
        FltScene const scene = loader.load(path);
        std::string const text = sceneText(scene.root());
        databases.inside += text.find("DEF inside ") != std::string::npos ? 1 : 0;
        databases.outside += text.find("DEF outside ") != std::string::npos ? 1 : 0;
        int const width = widthOfTexture(scene.root());
        textures.inside += width == 4 ? 1 : 0;
        textures.outside += width == 8 ? 1 : 0;
    }
    EXPECT_EQ(databases.outside, 0);
    EXPECT_EQ(textures.outside, 0);
    EXPECT_GT(databases.inside, 0);
    EXPECT_GT(textures.inside, 0);
}
