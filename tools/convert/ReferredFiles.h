#pragma once

#include <map>
#include <string>
#include <sys/types.h>
#include <utility>

/// The files that a run needs: its databases, their logs, and all that they refer to. None of them may become
/// an output, whatever name leads to it.
class ReferredFiles
{
public:
    /// Notes a file, if it is there.
    /// @param what it is to the user: "a texture of models/town.flt"
    void add(std::string const& path, std::string const& what);

    /// Why a file must not be written, as add() was told first; null if it may be, as one that isn't there.
    std::string const* reasonToKeep(std::string const& path) const;

private:
    std::map<std::pair<dev_t, ino_t>, std::string> files;
};
