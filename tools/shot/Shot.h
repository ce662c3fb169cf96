#pragma once

#include "shot/ShotOptions.h"
#include "support/LoaderOptions.h"
#include "support/Picture.h"
#include "support/SceneMessages.h"
#include "toolkit/SoNodeRef.h"

#include <Inventor/nodes/SoPerspectiveCamera.h>
#include <string>
#include <vector>

/// Loads databases and draws a picture of each.
class Shot
{
public:
    /// All of them have to outlive this object.
    Shot(Program const& program, ShotOptions const& options, LoaderOptions const& loaderOptions,
         SceneMessages const& messages);

    /// @throw ToolError or FltLoadError if there is nothing to be seen: why, and what to do
    Picture take(std::string const& database);

    /// The files that the picture must not replace, of all databases that were taken.
    std::vector<KeptFile> const& keptFiles() const { return kept; }

private:
    FltScene load(std::string const& database);
    FltScene loadCarefully(std::string const& database) const;
    void tellOfBlankShapes(std::string const& database, FltScene const& scene) const;
    SoNodeRef<SoPerspectiveCamera> makeCamera(std::string const& database, FltScene const& scene,
                                              std::vector<SbVec3f> const& points) const;
    std::vector<SbVec3f> pointsBelow(std::string const& database, SoSeparator* scene, char const* option,
                                     std::string const& name) const;

    Program const& program;
    ShotOptions const& options;
    LoaderOptions const& loaderOptions;
    SceneMessages const& messages;
    std::vector<KeptFile> kept;
};
