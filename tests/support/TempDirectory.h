#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

/// A directory of its own for a test, gone with everything in it at the end.
class TempDirectory
{
public:
    TempDirectory()
    {
        std::string pattern = (std::filesystem::temp_directory_path() / "velloreader-XXXXXX").string();
        if (::mkdtemp(&pattern[0]) == nullptr)
            throw std::runtime_error("cannot make " + pattern);
        directory = pattern;
    }
    ~TempDirectory()
    {
        std::error_code ignored;
        std::filesystem::remove_all(directory, ignored);
    }

    TempDirectory(TempDirectory const&) = delete;
    TempDirectory& operator=(TempDirectory const&) = delete;

    /// The path of something in it.
    std::string path(std::string const& name) const { return directory + "/" + name; }

    /// Writes a file into it. @return its path
    std::string write(std::string const& name, std::string const& bytes) const
    {
        std::ofstream file(path(name), std::ios::binary);
        file << bytes;
        if (!file.flush())
            throw std::runtime_error("cannot write " + path(name));
        return path(name);
    }

    /// The bytes of a file in it.
    std::string read(std::string const& name) const
    {
        std::ifstream file(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }

private:
    std::string directory;
};
