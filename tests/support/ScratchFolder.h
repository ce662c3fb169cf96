#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

/// A folder of its own for a test's files, gone with the object.
class ScratchFolder
{
public:
    ScratchFolder()
    {
        std::random_device random;
        do
            folder =
                std::filesystem::temp_directory_path() / ("velloreader-test-" + std::to_string(random()));
        while (!std::filesystem::create_directories(folder));
    }
    ~ScratchFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(folder, ignored);
    }

    ScratchFolder(ScratchFolder const&) = delete;
    ScratchFolder& operator=(ScratchFolder const&) = delete;

    /// The path of a name in the folder. Nothing is made.
    std::string operator/(std::string const& name) const { return (folder / name).string(); }

    /// The path of a file in the folder; sub-folders of it are made.
    std::string path(std::string const& name) const
    {
        std::filesystem::path const file = folder / name;
        std::filesystem::create_directories(file.parent_path());
        return file.string();
    }

    /// Writes a file into the folder. @return its path
    std::string write(std::string const& name, std::string const& bytes) const
    {
        std::ofstream(path(name), std::ios::binary) << bytes;
        return path(name);
    }

private:
    std::filesystem::path folder;
};

/// All bytes of a file, or an empty text.
inline std::string contentsOf(std::string const& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}
