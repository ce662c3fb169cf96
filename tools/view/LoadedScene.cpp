#include "view/LoadedScene.h"

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
    char text[400];
    FltDatabaseInfo const& info = scene.info();
    std::string header;
    if (info.revision != 0)
        header = "revision " + std::to_string(info.revision) + ", in " + FltDatabaseInfo::nameOf(info.unit) +
                 "  |  ";
    std::snprintf(text, sizeof text,
                  "%llu faces, %llu triangles in %llu shapes  |  %llu records  |  "
                  "%zu textures, %d missing  |  %zu messages  |  loaded in %.2f s",
                  static_cast<unsigned long long>(statistics.faces),
                  static_cast<unsigned long long>(statistics.triangles),
                  static_cast<unsigned long long>(statistics.shapes),
                  static_cast<unsigned long long>(info.records), textures.textures().size(),
                  textures.missingCount(), scene.messages().size(), seconds);
    return header + text;
}
