#pragma once

#include "model/FltReferenceSearch.h"
#include "parser/FltFileInput.h"
#include "visual/FltNamedParts.h"
#include "visual/FltVisualBuilder.h"
#include "visual/FltVisualConversion.h"

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <tuple>
#include <vector>

/// Converts a file and all external files that it leads to, each once.
class FltVisualFiles
{
public:
    FltVisualFiles(FltVisualConversion::Options const& options, FltVisualConversion::Result& result);

    /// Converts the file that all others are reached from.
    void convert(FltFileInput& input);

    /// Ends a conversion that is not wanted any more.
    struct Cancelled {
    };

private:
    /// How a reference that shows nothing is counted.
    using Absence = char const*;
    static constexpr Absence unreadable = "external reference that can't be read";
    static constexpr Absence forbidden = "external reference that may not be read";
    static constexpr Absence withoutNode = "external reference to a node that isn't there";

    /// The visual of an external file or of a node in it, and the length of its unit.
    struct Converted {
        FltVisualPart visual; ///< Without a node there is nothing to be seen.
        double metresPerUnit = 1;
        Absence absence = unreadable; ///< Why, then.
        int levelsAbove = 0;
        bool isWhole = true; ///< Whether no levels were left out, in it or in files that it refers to.
    };

    /// An external file that was read; without a model it wasn't.
    struct ExternalModel {
        std::unique_ptr<FltFileInput> input;
        std::unique_ptr<FltModel> model;
        Absence absence = unreadable;
    };

    /// The identity of a file, that of the palettes that it takes over, and the name of the node that is
    /// shown of it: empty for the whole file.
    using Key = std::tuple<std::string, std::vector<void const*>, std::string>;

    FltVisualPart refer(FltModel const& from, std::string const& path, std::uint32_t overrides);
    static FltVisualPart makeFileNode(FltModel const& from, std::string const& name);
    Converted const& convertExternal(std::string const& name, std::string const& node, FltModel const& from,
                                     std::uint32_t overrides);
    Converted convertWhole(std::string const& name, Key const& key, FltModel const& from,
                           std::uint32_t overrides);
    Converted convertNode(std::string const& name, Key const& key, FltModel const& from,
                          std::uint32_t overrides);
    ExternalModel readExternal(std::string const& name, std::string const& identity, FltModel const& from,
                               std::uint32_t overrides);
    std::optional<OpenFile> open(std::string const& name) const;
    bool isBetterRepeated(Converted const& known) const;
    Key keyOf(std::string const& identity, std::string const& node, FltModel const& from,
              std::uint32_t overrides);
    FltVisualPart build(FltModel& model, FltFileInput& input);
    bool mayReadAgain(FltFileInput const& input, std::string const& identity);
    bool mayRepeat(std::int64_t bytes, char const* excess);
    void tellProgress(FltModel const& model, std::size_t done, std::size_t all) const;
    void readModel(FltModel& model, FltFileInput& input);
    double worldPerUnit(double metresPerUnit) const;
    SbVec3d moveToOrigin(FltVisualPart const& database) const;
    static FltVisualPart scaled(FltVisualPart const& content, double scale);

    FltVisualConversion::Options const& options;
    FltVisualConversion::Result& result;
    FltVisualSetting setting;
    FltReferenceSearch search;
    std::map<Key, Converted> files;
    std::map<Key, std::unique_ptr<FltNamedParts>> namedParts; ///< Of files that are read by nodes.
    std::vector<std::string> filesInWork;
    std::vector<std::shared_ptr<void const>> keptPalettes; ///< Keys hold their addresses.
    double rootMetresPerUnit = 1;
    int filesInParts = 0;             ///< Whose scenes were taken although they aren't whole.
    std::set<std::string> identities; ///< Of all files that were read.

    /// Bytes of files that may be read again with other palettes, or be shown by the names of nodes.
    std::int64_t repeatedBytesLeft = std::int64_t(1) << 26;
};
