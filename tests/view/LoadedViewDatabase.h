#pragma once

#include "ViewDatabase.h"
#include "support/ScratchFolder.h"
#include "view/LoadedScene.h"

#include <gtest/gtest.h>
#include <string>

/// The database of the viewer's tests, loaded.
class LoadedViewDatabase : public testing::Test
{
protected:
    LoadedViewDatabase() : path(save(folder.path("yard.flt"))), loaded(exactly(), path) {}

    /// Records have nodes of their names in the exact conversion above all.
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

    /// The index of a record by its name; the test fails without it.
    int entry(std::string const& name) const
    {
        auto const& outline = loaded.records.hierarchy();
        for (std::size_t i = 0; i < outline.size(); ++i)
            if (outline[i].name == name)
                return static_cast<int>(i);
        ADD_FAILURE() << "no record is named " << name;
        return 0;
    }

    HierarchyRecord const& record(std::string const& name) const
    {
        return loaded.records.hierarchy()[static_cast<std::size_t>(entry(name))];
    }

    SoNode* node(std::string const& name) const { return loaded.match.nodeOf(entry(name)); }

    ScratchFolder folder;
    std::string path;
    LoadedScene loaded;
};
