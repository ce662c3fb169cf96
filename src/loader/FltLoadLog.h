#pragma once

#include "dump/FltDumpOutput.h"
#include "dump/FltLogBuffer.h"

#include <optional>
#include <string>

/// The listing of the records of a load, in the file that was asked for, or nowhere. std::cout isn't touched.
class FltLoadLog
{
public:
    /// @param log      FltLoader::log
    /// @param database what is loaded
    /// @throw FltLoadError if the file can't be written, or isn't a log that may be replaced
    FltLoadLog(std::optional<std::string> const& log, std::string const& database);

    /// Ends the log.
    /// @return false if not all of it could be written
    bool close();

    /// The file; empty if there is none.
    std::string const& getPath() const { return path; }

private:
    std::string path;
    FltLogStream stream;
    std::optional<FltDumpOutput::Redirect> redirect;
};
