#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

/// A new directory, gone with all its files when this object goes.
class TemporaryDirectory
{
public:
    TemporaryDirectory()
    {
        std::string name = (std::filesystem::temp_directory_path() / "velloreader.XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr)
            throw std::runtime_error("cannot make a temporary directory");
        directory = name;
    }
    ~TemporaryDirectory()
    {
        std::error_code ignored;
        std::filesystem::remove_all(directory, ignored);
    }

    TemporaryDirectory(TemporaryDirectory const&) = delete;
    TemporaryDirectory& operator=(TemporaryDirectory const&) = delete;

    /// The path of a file in it.
    std::string operator/(std::string const& name) const { return (directory / name).string(); }

private:
    std::filesystem::path directory;
};
