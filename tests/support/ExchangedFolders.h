#pragma once

#include "support/ScratchFolder.h"

#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <stdexcept>
#include <string>

/// A folder "tree" with a folder "tree/part", whose name a link "tree/link" to a folder "outside" can take at
/// any time.
class ExchangedFolders
{
public:
    ExchangedFolders()
    {
        std::filesystem::create_directories(folder / "tree/part");
        std::filesystem::create_directories(folder / "outside");
        std::filesystem::create_directory_symlink(folder / "outside", folder / "tree/link");
    }

    std::string tree() const { return folder / "tree"; }
    std::string outside() const { return folder / "outside"; }

    /// What stands in "tree/part" as long as nothing is exchanged.
    std::string inside() const { return folder / "tree/part"; }

    /// Exchanges the folder and the link in one step. Doing it twice changes nothing.
    void exchange() const
    {
        if (::renameat2(AT_FDCWD, inside().c_str(), AT_FDCWD, (folder / "tree/link").c_str(),
                        RENAME_EXCHANGE) != 0)
            throw std::runtime_error("this file system can't exchange two names");
    }

    ScratchFolder const folder;
};
