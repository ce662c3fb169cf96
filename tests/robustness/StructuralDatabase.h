#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// A database of every structure that the format knows, made at random, the same for the same number: levels
/// in one another, subfaces, extensions, meshes, instances, replicas, joints, levels of detail, switches,
/// text, lights, transformations, and the files that it refers to, in a chain or in a circle. One in three is
/// damaged.
class StructuralDatabase
{
public:
    explicit StructuralDatabase(unsigned number);

    struct File {
        std::string name;
        std::string bytes;
    };

    /// The database itself, then the files that it may refer to.
    std::vector<File> const& files() const { return allFiles; }

    bool isDamaged() const { return wasDamaged; }

    /// Writes all files into a directory that is there. @return the path of the database
    std::string save(std::filesystem::path const& folder) const;

private:
    std::vector<File> allFiles;
    bool wasDamaged;
};
