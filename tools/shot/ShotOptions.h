#pragma once

#include "shot/DrawingStyle.h"
#include "support/Program.h"

#include <Inventor/SbVec3d.h>
#include <optional>
#include <string>
#include <vector>

/// What the command line of fltshot asks for.
class ShotOptions
{
public:
    /// What the program says of itself.
    static ProgramDescription description();

    /// Adds the options.
    explicit ShotOptions(Program& program);

    ShotOptions(ShotOptions const&) = delete;
    ShotOptions& operator=(ShotOptions const&) = delete;

    /// Reads the values, once the command line was parsed.
    /// @throw UsageError if they can't be obeyed
    void check();

    /// Whether there are going to be captions.
    bool isSheet() const { return inputs.size() > 1 || !columnsText.empty() || hasDirectory; }

    bool isJpeg() const;

    std::vector<std::string> inputs;
    std::string output;
    DrawingStyle style;
    float azimuth = 0;   ///< Degrees, clockwise from north.
    float elevation = 0; ///< Degrees above the horizon.
    float zoom = 1;
    std::optional<SbVec3d> eye;         ///< In the coordinates of the database, in metres.
    std::optional<SbVec3d> lookAtPlace; ///< The same.
    std::string lookAtName;             ///< Of a node; empty for none.
    std::string fitName;                ///< Of a node; empty for none.
    int columns = 0;
    bool isThumbnail = false;
    OutputFile::Existing existing = OutputFile::Existing::replace; ///< A picture that is there already.
    std::vector<std::string> problems; ///< Why directories couldn't be read, a sentence each.

private:
    void findDatabases();
    void checkContradictions() const;
    void readSize();
    void readDirection();
    void readPlaces();
    void readColumns();

    bool hasDirectory = false;
    std::string sizeText;
    std::string viewText;
    std::string fromText;
    std::string zoomText = "1";
    std::string eyeText;
    std::string lookAtText;
    std::string backdropText;
    std::string columnsText;
    std::string thumbnailText;
};
