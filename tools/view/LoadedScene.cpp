#include "view/LoadedScene.h"

#include "support/Numbers.h"

#include <Inventor/nodes/SoSeparator.h>
#include <cstdio>

namespace
{

double secondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

LoadedScene::LoadedScene(FltLoader const& loader, std::string const& path)
    : databasePath(path), start(std::chrono::steady_clock::now()), scene(loader.load(path)),
      seconds(secondsSince(start)), isExact(loader.exact), records(path), storedSwitches(scene.switches()),
      storedJoints(scene.degreesOfFreedom()), textures(scene.root()), levelsOfDetail(scene.root()),
      statistics(SceneStatistics::of(scene, path))
{
}

std::string LoadedScene::describe() const
{
    using Numbers::counted;
    FltDatabaseInfo const& info = scene.info();
    std::string const separator = "  |  ";
    std::string text;
    if (info.revision != 0)
        text = "revision " + std::to_string(info.revision) + ", in " + FltDatabaseInfo::nameOf(info.unit) +
               separator;
    char time[40];
    std::snprintf(time, sizeof time, "loaded in %.2f s", seconds);
    return text + counted(statistics.faces, "face", "faces") + ", " +
           counted(statistics.triangles, "triangle", "triangles") + " in " +
           counted(statistics.shapes, "shape", "shapes") + separator +
           counted(info.records, "record", "records") + separator +
           counted(textures.textures().size(), "texture", "textures") + ", " +
           std::to_string(textures.missingCount()) + " missing" + separator +
           counted(scene.messages().size(), "message", "messages") + separator + time;
}
