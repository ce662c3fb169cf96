#pragma once

#include "records/FltRecordHeader.h"
#include "textures/FltReadableTree.h"
#include "textures/FltTexture.h"
#include "toolkit/OpenFile.h"
#include "visual/FltReference.h"
#include "visual/FltVisualNode.h"
#include "visual/FltVisualOptions.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// Reads a database, and all files that it refers to, into a visual of what its modeller saw.
///
/// What is reported on the way goes to FltWarningMessageConsole; nothing is written to std::cout. The toolkit
/// needn't be started.
class FltVisualConversion
{
public:
    struct Options : FltVisualOptions {
        /// Is told how far a file is: reading is the first half of its bytes, what is made of it the second.
        /// @return whether the conversion goes on
        std::function<bool(std::string const& file, std::size_t done, std::size_t all)> progress;

        /// Opens an external file that is read, or named in the visual; without it any regular file is
        /// opened.
        /// @return nothing if it isn't to be read, which this function reports; a file that isn't open if it
        ///         can't be opened
        std::function<std::optional<OpenFile>(std::string const& file)> open;

        /// No file elsewhere is found by another case of letters than the stored one.
        FltReadableTree readable = FltReadableTree();
    };

    /// How a conversion ended.
    enum class Outcome {
        converted,
        cannotOpen,
        notOpenFlight, ///< The file doesn't begin with a header.
        oldRevision,   ///< The format's revision is older than FltRevision::oldest.
        cancelled,     ///< The progress function said so.
    };

    struct Result {
        Outcome outcome = Outcome::cannotOpen;
        std::shared_ptr<FltVisualNode> root; ///< Null unless it was converted.
        std::vector<std::string> files;      ///< That records of nodes come from, the database first.
        std::vector<FltTexture> textures;    ///< That meshes name. Nobody has looked for them yet.
        int revision = 0;                    ///< Of the format; 0 if the file has no header.
        double metresPerUnit = 1;            ///< Of the database.
        SbVec3d offset{0, 0, 0};   ///< Of the database from where it is stored, in the visual's unit.
        std::uint64_t records = 0; ///< In the file itself.
        std::uint64_t bytes = 0;   ///< The size of the file.

        /// The header record of the file; null if it has none.
        std::shared_ptr<FltRecordHeader const> header;

        /// What isn't shown, by kind, and how often.
        std::map<std::string, std::int64_t> leftOut;

        std::vector<FltReference> references; ///< In the order of the records.
    };

    /// Converts a file.
    /// @throw std::bad_alloc, or what a function of the options throws
    static Result convert(std::string const& fileName, Options const& options);

    /// The same for a file that is open already.
    static Result convert(std::string const& fileName, OpenFile file, Options const& options);
};
