#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// The files that a database needs, without what those need in turn. No scene is made.
struct DatabaseScan {
    struct Reference {
        std::string path;        ///< As the database leads to it.
        std::string identity;    ///< Its canonical path.
        std::uint64_t count = 0; ///< How often the database refers to it.
    };

    std::vector<Reference> references; ///< To files that are there, each once, in the order of the records.
    std::vector<std::string> textureNames; ///< As stored, each once, whether a face shows them or not.
    std::vector<std::string> textures;     ///< Files of them that are there.

    /// Looks into a database. One that can't be read needs nothing.
    /// @param texturePath   where to look for textures besides
    /// @param wantsTextures whether they matter
    static DatabaseScan of(std::string const& database, std::vector<std::string> const& texturePath,
                           bool wantsTextures);

    /// As texts, to send them to another process.
    std::vector<std::string> fields() const;
    static DatabaseScan fromFields(std::vector<std::string> const& fields);
};
