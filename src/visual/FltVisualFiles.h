#pragma once

#include "parser/FltFileInput.h"
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
    /// The visual of an external file, and the length of its unit. Without a node the file can't be read, or
    /// may not be.
    struct Converted {
        FltVisualPart visual;
        double metresPerUnit = 1;
        bool mayBeRead = true;
        int levelsAbove = 0;
        bool isWhole = true; ///< Whether no levels were left out, in it or in files that it refers to.
    };
    /// The identity of a file, and of the palettes that it takes over.
    using Key = std::tuple<std::string, std::vector<void const*>>;

    FltVisualPart refer(FltModel const& from, std::string const& path, std::uint32_t overrides);
    static FltVisualPart makeFileNode(FltModel const& from, std::string const& name);
    Converted const& convertExternal(std::string const& name, FltModel const& from, std::uint32_t overrides);
    Converted readExternal(std::string const& name, std::string const& identity, FltModel const& from,
                           std::uint32_t overrides);
    std::optional<OpenFile> open(std::string const& name) const;
    bool isBetterRepeated(Converted const& known) const;
    Key keyOf(std::string const& identity, FltModel const& from, std::uint32_t overrides);
    FltVisualPart build(FltModel& model, FltFileInput& input);
    bool mayReadAgain(FltFileInput const& input, std::string const& identity);
    void tellProgress(FltModel const& model, std::size_t done, std::size_t all) const;
    void readModel(FltModel& model, FltFileInput& input);
    double worldPerUnit(double metresPerUnit) const;
    static FltVisualPart scaled(FltVisualPart const& content, double scale);

    FltVisualConversion::Options const& options;
    FltVisualConversion::Result& result;
    FltVisualSetting setting;
    std::map<Key, Converted> files;
    std::vector<std::string> filesInWork;
    std::vector<std::shared_ptr<void const>> keptPalettes; ///< Keys hold their addresses.
    double rootMetresPerUnit = 1;
    int filesInParts = 0;             ///< Whose scenes were taken although they aren't whole.
    std::set<std::string> identities; ///< Of all files that were read.

    /// Bytes of files that may be read again with other palettes.
    std::int64_t repeatedBytesLeft = std::int64_t(1) << 26;
};
