#pragma once

#include "loader/FltLoader.h"
#include "view/LevelsOfDetail.h"
#include "view/RecordFile.h"
#include "view/RecordMatch.h"
#include "view/SceneStatistics.h"
#include "view/TextureList.h"

#include <chrono>
#include <map>
#include <string>

class SoMatrixTransform;

/// A database as the viewer has it: its scene, its records, and what belongs to both.
class LoadedScene
{
public:
    /// @throw FltLoadError
    LoadedScene(FltLoader const& loader, std::string const& path);
    LoadedScene(LoadedScene const&) = delete;
    LoadedScene& operator=(LoadedScene const&) = delete;

    std::string const& path() const { return records.path(); }

private:
    std::chrono::steady_clock::time_point start;

public:
    FltScene scene;
    double seconds; ///< That loading took.
    RecordFile records;
    RecordMatch match;
    TextureList textures;
    LevelsOfDetail levelsOfDetail;
    SceneStatistics statistics;

    /// The transformation by which the node of a degree of freedom is moved; null if it has none. It comes on
    /// top of what the scene does with the values that the record stores.
    SoMatrixTransform* moverOf(HierarchyRecord const& record) const;

    /// Whether the scene itself shows a degree of freedom at the values that the record stores.
    bool isAtCurrentValues(HierarchyRecord const& record) const;

    /// "15.7", "feet" and the like, for a person.
    std::string describe() const;

private:
    struct Mover {
        SoMatrixTransform* transform = nullptr;
        bool isAtCurrentValues = false;
    };

    void addMovers();

    std::map<std::size_t, Mover> movers; ///< By the position of the record.
};
