#pragma once

#include "complete/FltAppearanceNodes.h"
#include "complete/FltCompleteScene.h"
#include "complete/FltLODChains.h"
#include "complete/FltNodeNames.h"
#include "records/FltRecordHeader.h"
#include "toolkit/OpenFile.h"

#include <Inventor/nodes/SoSeparator.h>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// Converts a database into a scene that shows what its modeller saw.
///
/// The scene is made of the toolkit's own nodes, and survives copying, writing and reading back. What is
/// reported on the way goes to FltWarningMessageConsole; nothing is written to std::cout.
class FltCompleteConversion
{
public:
    using Lod = FltLODChoice;

    /// The unit of the scene.
    enum class Units {
        metres,
        stored, ///< That of the database. External files are brought to it.
    };

    /// What becomes of external references.
    enum class References {
        inlined, ///< Their scenes are part of the scene. Each file is converted once and shared.
        file,    ///< An SoFile names each.
        skipped,
    };

    struct Options {
        Lod lod = Lod::stored;
        Units units = Units::metres;
        References references = References::inlined;

        /// Whether reading goes on after a place where the records end before the file does.
        bool salvage = true;

        /// Makes the node of a texture for its name as it is stored. Without it the name counts from the
        /// directory of the referring file, if the texture is there, and is taken as it is otherwise.
        FltAppearanceNodes::MakeTexture makeTexture;

        /// Is told how far a file is: reading is the first half of its bytes, making its scene the second.
        /// @return whether the conversion goes on
        std::function<bool(std::string const& file, std::size_t done, std::size_t all)> progress;

        /// Opens an external file that is read, or named in the scene; without it any regular file is opened.
        /// @return nothing if it isn't to be read, which this function reports; a file that isn't open if it
        ///         can't be opened
        std::function<std::optional<OpenFile>(std::string const& file)> open;
    };

    /// How a conversion ended.
    enum class Outcome {
        converted,
        cannotOpen,
        notOpenFlight, ///< The file doesn't begin with a header.
        oldRevision,   ///< The format's revision is older than FltRevision::oldest.
        cancelled,     ///< The progress function said so.
    };

    /// An external file that the database refers to.
    struct Reference {
        std::string stored; ///< As it is named.
        std::string from;   ///< The file that refers to it.
        std::string found;  ///< The file that is meant; empty if there is none.
        bool isLoaded;      ///< Whether its scene is a part of this one.
    };

    struct Result {
        Outcome outcome = Outcome::cannotOpen;
        SoNodeRef<SoSeparator> root; ///< Null unless it was converted.
        FltNodeNames names;          ///< Of its nodes, which have none yet.
        int revision = 0;            ///< Of the format; 0 if the file has no header.
        double metresPerUnit = 1;    ///< Of the database.
        std::uint64_t records = 0;   ///< In the file itself.
        std::uint64_t bytes = 0;     ///< The size of the file.

        /// The header record of the file; null if it has none.
        std::shared_ptr<FltRecordHeader const> header;

        /// What isn't shown, by kind, and how often.
        std::map<std::string, std::int64_t> leftOut;

        std::vector<FltCompleteSwitch> switches;
        std::vector<FltCompleteDOF> dofs;
        std::vector<Reference> references;
    };

    /// Converts a file. The toolkit must be initialised.
    /// @throw std::bad_alloc, or what a function of the options throws
    static Result convert(std::string const& fileName, Options const& options);

    /// The same for a file that is open already.
    static Result convert(std::string const& fileName, OpenFile file, Options const& options);
};
