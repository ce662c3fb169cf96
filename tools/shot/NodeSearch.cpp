#include "shot/NodeSearch.h"

#include "support/LikeNames.h"
#include "support/SceneNodes.h"

#include "toolkit/SoNodeName.h"

#include <Inventor/SoPath.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoNode.h>

namespace
{

/// A node that bears a name of the database; null if none does. The toolkit would keep the name for ever if
/// it were asked.
SoNode* bearerOf(SoNode* scene, std::string const& name)
{
    SoNode* bearer = nullptr;
    std::string const wanted = SoNodeName::uncut(name);
    SceneNodes::forEach(scene, [&](SoNode& node) {
        if (bearer == nullptr && SoNodeName::uncut(SoNodeName::wholeOf(node)) == wanted)
            bearer = &node;
    });
    return bearer;
}

} // namespace

SoPath* NodeSearch::find(SoNode* scene, std::string const& name)
{
    SoNode* const bearer = bearerOf(scene, name);
    if (name.empty() || bearer == nullptr)
        return nullptr;
    bool const isCut = SoNodeName::wholeOf(*bearer) != bearer->getName().getString();
    for (bool const isHiddenToo : {false, true}) {
        SoSearchAction search;
        if (isCut)
            search.setNode(bearer); // others bear the same name
        else
            search.setName(bearer->getName());
        search.setInterest(SoSearchAction::FIRST);
        search.setSearchingAll(isHiddenToo);
        search.apply(scene);
        if (SoPath* const path = search.getPath(); path != nullptr) {
            path->ref();
            return path;
        }
    }
    return nullptr;
}

std::vector<std::string> NodeSearch::namesLike(SoNode* scene, std::string const& name)
{
    LikeNames like(name);
    SceneNodes::forEach(scene, [&like](SoNode& node) { like.offer(node.getName().getString()); });
    return like.found();
}
