#include "view/LoadedScene.h"

#include "records/FltOpcode.h"

#include <Inventor/nodes/SoMatrixTransform.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoTransformation.h>
#include <chrono>
#include <cstdio>

namespace
{

/// A scene that follows the stored values moves the node by a transformation of the same name.
bool hasOwnTransformation(SoGroup const& group)
{
    for (int i = 0; i < group.getNumChildren(); ++i)
        if (group.getChild(i)->isOfType(SoTransformation::getClassTypeId()) &&
            group.getChild(i)->getName() == group.getName())
            return true;
    return false;
}

double secondsSince(std::chrono::steady_clock::time_point start)
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

LoadedScene::LoadedScene(FltLoader const& loader, std::string const& path)
    : start(std::chrono::steady_clock::now()), scene(loader.load(path)), seconds(secondsSince(start)),
      records(path), match(scene.root(), records), textures(scene.root()), levelsOfDetail(scene.root()),
      statistics(scene.root())
{
    addMovers();
}

void LoadedScene::addMovers()
{
    auto const& outline = records.hierarchy();
    for (std::size_t i = 0; i < outline.size(); ++i) {
        SoNode* const node =
            outline[i].opcode == FltOpcode::dof ? match.nodeOf(static_cast<int>(i)) : nullptr;
        if (node == nullptr || !node->isOfType(SoGroup::getClassTypeId()))
            continue;
        auto* const group = static_cast<SoGroup*>(node);
        bool const isAtCurrentValues = hasOwnTransformation(*group);
        auto* const transform = new SoMatrixTransform;
        transform->setName("fltview_dof");
        group->insertChild(transform, 0);
        movers[outline[i].position] = {transform, isAtCurrentValues};
    }
}

SoMatrixTransform* LoadedScene::moverOf(HierarchyRecord const& record) const
{
    auto const found = movers.find(record.position);
    return found != movers.end() ? found->second.transform : nullptr;
}

bool LoadedScene::isAtCurrentValues(HierarchyRecord const& record) const
{
    auto const found = movers.find(record.position);
    return found != movers.end() && found->second.isAtCurrentValues;
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
                  "%lld triangles in %lld faces and %lld shapes  |  %zu records, %zu with a node  |  "
                  "%zu textures, %d missing  |  %zu messages  |  loaded in %.2f s",
                  static_cast<long long>(statistics.triangles), static_cast<long long>(statistics.faces),
                  static_cast<long long>(statistics.shapes), records.recordCount(), match.size(),
                  textures.textures().size(), textures.missingCount(), scene.messages().size(), seconds);
    return header + text;
}
