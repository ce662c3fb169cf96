#pragma once

#include "inspect/FltInventory.h"
#include "model/FltReferenceSearch.h"
#include "textures/FltTextureAttributes.h"
#include "textures/FltTextureSearch.h"
#include "toolkit/VelloReaderExport.h"

#include <functional>
#include <string>
#include <unordered_map>
#include <vector>

/// The files that a database needs: its textures and the databases that it refers to, with theirs.
class VELLOREADER_API FltDependencies
{
public:
    /// Finds an image. @return its path; empty if there is none
    using FindTexture = std::function<std::string(std::string const& name, std::string const& database)>;

    struct Texture {
        std::string name;     ///< As stored.
        std::string database; ///< The file that names it.
        std::string path;     ///< Where it was found; empty if it wasn't.
        std::uint64_t offset = 0;
        std::uint64_t uses = 0;          ///< Faces and layers that show it.
        bool isElsewhere = false;        ///< Whether it was found at another place than the stored one.
        FltTextureAttributes attributes; ///< Of the file beside the image; what is wrong with it included.
    };

    enum class State {
        found,
        missing,
        unreadable, ///< It is there, but no database, or damaged from the start.
        cycle,      ///< It leads back to a file that leads to it.
        tooDeep,    ///< It stands at the end of a longer chain of references than is followed.
    };

    struct Reference {
        std::string name;     ///< As stored.
        std::string database; ///< The file that names it.
        std::string path;     ///< Where it was found; empty if it wasn't.
        std::uint64_t offset = 0;
        State state = State::found;
        std::string problem;      ///< Why it is unreadable.
        bool isElsewhere = false; ///< Whether its name is spelled otherwise than stored.
    };

    /// Levels that are nested too deeply, those of the files that lead to them included.
    struct DeepLevels {
        std::string database;
        std::uint64_t offset = 0; ///< Of the first record that stands so deep.
        int opcode = 0;
    };

    FltDependencies(FltInventory const& inventory, FindTexture findTexture);

    std::vector<Texture> const& textures() const { return allTextures; }
    std::vector<Reference> const& references() const { return allReferences; }

    /// Of the files that the database refers to, each at its first place. What the database itself holds is
    /// no matter of files.
    std::vector<DeepLevels> const& deepLevels() const { return allDeepLevels; }

    /// The paths of all files that were found, without the database itself, each once.
    std::vector<std::string> files() const;

    /// The name that the present record gives a texture or a referenced database, byte for byte; empty for
    /// other records.
    static std::string nameIn(FltRecordScan const& scan);

    /// Finds the file that a reference names, as conversions do.
    using FindReference = FltReferenceSearch;

private:
    /// A file that was gone through.
    struct Visited {
        std::string problem;
        std::uint32_t height = 0; ///< Levels in it and below it.
    };

    std::uint32_t take(FltInventory const& inventory, std::uint32_t levelsAbove);
    void takeLevels(FltInventory const& inventory, std::uint32_t levelsAbove);
    std::uint32_t takeReference(FltInventory::Reference const& reference, std::string const& database,
                                std::uint32_t levelsAbove);
    std::uint32_t follow(Reference& reference, std::uint32_t levelsAbove);

    FindTexture findTexture;
    FltTextureAttributes attributesOf(std::string const& name, std::string const& picture,
                                      std::string const& database);

    FindReference search;
    FltTextureSearch attributeSearch{{}};
    std::vector<Texture> allTextures;
    std::vector<Reference> allReferences;
    std::vector<DeepLevels> allDeepLevels;
    std::vector<std::string> chain; ///< The files that lead to the present one, by canonical path.
    std::unordered_map<std::string, Visited> visited; ///< By canonical path.
};
