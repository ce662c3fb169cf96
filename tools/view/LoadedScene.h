#pragma once

#include "loader/FltLoader.h"
#include "support/SceneStatistics.h"
#include "view/LevelsOfDetail.h"
#include "view/SceneRecords.h"
#include "view/TextureList.h"

#include <chrono>
#include <string>
#include <vector>

/// A database as the viewer has it: its scene, its records, and what belongs to both.
class LoadedScene
{
public:
    /// @throw FltLoadError
    LoadedScene(FltLoader const& loader, std::string const& path);
    LoadedScene(LoadedScene const&) = delete;
    LoadedScene& operator=(LoadedScene const&) = delete;

    std::string const& path() const { return databasePath; }

private:
    std::string databasePath;
    std::chrono::steady_clock::time_point start;

public:
    FltScene scene;
    double seconds; ///< That loading took.
    bool isExact;   ///< Whether nobody knows which record a node comes from, and what can be moved.
    SceneRecords records;
    std::vector<FltSwitch> storedSwitches;        ///< As the file has them.
    std::vector<FltDegreeOfFreedom> storedJoints; ///< As the file has them.
    TextureList textures;
    LevelsOfDetail levelsOfDetail;
    SceneStatistics statistics;

    /// "15.7", "feet" and the like, for a person.
    std::string describe() const;
};
