#pragma once

#include "ViewDatabase.h"
#include "support/ScratchFolder.h"
#include "view/LoadedScene.h"

#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoSeparator.h>
#include <gtest/gtest.h>
#include <string>

/// The database of the viewer's tests, loaded.
class LoadedViewDatabase : public testing::Test
{
protected:
    LoadedViewDatabase() : path(save(folder.path("yard.flt"))), loaded(FltLoader(), path) {}

    static FltLoader exactly()
    {
        FltLoader loader;
        loader.exact = true;
        return loader;
    }

    static std::string save(std::string const& path)
    {
        viewDatabase().save(path);
        return path;
    }

    /// The node of a name; the test ends without it.
    static SoNode* nodeIn(LoadedScene const& scene, char const* name)
    {
        SoSearchAction search;
        search.setName(name);
        search.setSearchingAll(TRUE);
        search.apply(scene.scene.root());
        if (search.getPath() == nullptr)
            throw std::runtime_error(std::string("no node is named ") + name);
        return static_cast<SoFullPath*>(search.getPath())->getTail();
    }

    static FltRecordPlace placeIn(LoadedScene const& scene, char const* name)
    {
        return scene.scene.recordOf(*nodeIn(scene, name)).value();
    }

    SoNode* node(char const* name) const { return nodeIn(loaded, name); }
    FltRecordPlace place(char const* name) const { return placeIn(loaded, name); }

    ScratchFolder folder;
    std::string path;
    LoadedScene loaded;
};
