#include "visual/FltVisualFiles.h"

#include "messages/FltLimits.h"
#include "messages/FltWarningMessageConsole.h"
#include "model/FltModelReader.h"
#include "model/FltReferencedFile.h"
#include "records/FltRevision.h"
#include "toolkit/RegularFile.h"
#include "visual/FltMirrors.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

namespace
{

/// How often all files together may be read again with other palettes.
constexpr std::int64_t repetitions = 16;

std::string identityOf(std::string const& name)
{
    std::error_code error;
    std::filesystem::path const path = std::filesystem::canonical(name, error);
    return error ? std::string() : path.string();
}

bool isOpenFlight(FltFileInput& input)
{
    return input.getSize() >= 4 && FltUtils::word16At(input.getBuffer()) == FltOpcode::header &&
           FltUtils::word16At(input.getBuffer() + 2) != 0;
}

} // namespace

FltVisualFiles::FltVisualFiles(FltVisualConversion::Options const& options,
                               FltVisualConversion::Result& result)
    : options(options), result(result)
{
    setting.levelsOfDetail = options.levelsOfDetail;
    if (options.progress)
        setting.progress = [this](FltModel const& model, std::size_t offset) {
            tellProgress(model, model.size / 2 + offset / 2, model.size);
        };
    setting.refer = [this](FltModel const& from, std::string const& path, std::uint32_t overrides) {
        return refer(from, path, overrides);
    };
}

void FltVisualFiles::convert(FltFileInput& input)
{
    if (!input.isInFlowCreated())
        return;
    if (!isOpenFlight(input)) {
        result.outcome = FltVisualConversion::Outcome::notOpenFlight;
        return;
    }
    FltModel model(input.getFileName(), input.getBuffer(), static_cast<std::size_t>(input.getSize()),
                   options.salvage);
    readModel(model, input);
    result.revision = model.revision;
    result.metresPerUnit = model.metresPerUnit;
    result.records = model.records;
    result.bytes = model.size;
    result.header = model.header;
    if (model.revision < FltRevision::oldest) {
        result.outcome = FltVisualConversion::Outcome::oldRevision;
        return;
    }
    rootMetresPerUnit = model.metresPerUnit;
    filesInWork.push_back(identityOf(model.fileName));
    FltVisualPart const visual = build(model, input);
    result.root = scaled(visual, worldPerUnit(model.metresPerUnit)).node;
    FltMirrors::find(*result.root);
    result.outcome = FltVisualConversion::Outcome::converted;
    result.files = std::move(setting.files);
    result.textures = std::move(setting.textures);
    result.leftOut = std::move(setting.leftOut);
}

void FltVisualFiles::readModel(FltModel& model, FltFileInput& input)
{
    FltWarningMessageConsole::beginFile(input.getFileName());
    setting.visitsLeft += input.getSize() * FltLimits::sceneNodes.perByte;
    setting.copiesLeft += input.getSize() / FltLimits::bytesForACopy;
    FltModelReader::read(model, setting.leftOut,
                         [&](std::size_t done) { tellProgress(model, done / 2, model.size); });
}

void FltVisualFiles::tellProgress(FltModel const& model, std::size_t done, std::size_t all) const
{
    if (options.progress && !options.progress(model.fileName, done, all))
        throw Cancelled();
}

FltVisualPart FltVisualFiles::build(FltModel& model, FltFileInput& input)
{
    FltVisualBuilder builder(model, setting, worldPerUnit(model.metresPerUnit));
    FltVisualPart part = builder.build();
    tellProgress(model, model.size, model.size);
    FltWarningMessageConsole::beginFile(input.getFileName());
    return part;
}

double FltVisualFiles::worldPerUnit(double metresPerUnit) const
{
    return options.units == FltVisualOptions::Units::metres ? metresPerUnit
                                                            : metresPerUnit / rootMetresPerUnit;
}

/// A part in another scale.
FltVisualPart FltVisualFiles::scaled(FltVisualPart const& content, double scale)
{
    if (scale == 1 || !std::isfinite(scale))
        return content;
    FltNodeBuilder node;
    node->become<FltVisualScale>({scale});
    node->record = content.node->record;
    SbMatrix matrix;
    matrix.setScale(static_cast<float>(scale));
    node.stackMatrix(matrix);
    node.add(content);
    return node.finish();
}

FltVisualPart FltVisualFiles::refer(FltModel const& from, std::string const& path, std::uint32_t overrides)
{
    using References = FltVisualOptions::References;
    std::string const name = FltReferencedFile::pathOf(from.fileName, path);
    bool const isThere = !identityOf(name).empty();
    result.references.push_back({path, from.fileName, isThere ? name : std::string(), false});
    std::size_t const entry = result.references.size() - 1;
    if (options.references == References::skip) {
        ++setting.leftOut["external reference"];
        return {};
    }
    char const* const forbidden = "external reference that may not be read";
    if (options.references == References::asFile && isThere) {
        if (open(name))
            return makeFileNode(from, name);
        ++setting.leftOut[forbidden];
        return {};
    }
    Converted const& converted = convertExternal(name, from, overrides);
    FltWarningMessageConsole::beginFile(from.fileName.c_str());
    if (converted.visual.node == nullptr) {
        ++setting.leftOut[converted.mayBeRead ? "external reference that can't be read" : forbidden];
        return {};
    }
    result.references[entry].isLoaded = true;
    if (!converted.isWhole)
        ++filesInParts;
    return scaled(converted.visual, converted.metresPerUnit / from.metresPerUnit);
}

/// What is read by its name is in metres.
FltVisualPart FltVisualFiles::makeFileNode(FltModel const& from, std::string const& name)
{
    FltNodeBuilder node;
    node->become<FltVisualFile>({name});
    return scaled(node.finish(), 1 / from.metresPerUnit);
}

/// A file counts as another one with other palettes, since they change what it looks like.
FltVisualFiles::Key FltVisualFiles::keyOf(std::string const& identity, FltModel const& from,
                                          std::uint32_t overrides)
{
    FltPaletteSet const own(identity);
    FltPaletteSet palettes = own;
    palettes.overrideBy(from.palettes, overrides);
    std::vector<void const*> overridden;
    auto const note = [&](auto const& before, auto const& after) {
        overridden.push_back(before == after ? nullptr : after.get());
        if (before != after)
            keptPalettes.push_back(after);
    };
    note(own.colors, palettes.colors);
    note(own.materials, palettes.materials);
    note(own.textures, palettes.textures);
    note(own.lights, palettes.lights);
    note(own.lightPoints, palettes.lightPoints);
    return {identity, overridden};
}

FltVisualFiles::Converted const&
FltVisualFiles::convertExternal(std::string const& name, FltModel const& from, std::uint32_t overrides)
{
    static Converted const nothing;
    std::string const found = identityOf(name);
    std::string const& identity = found.empty() ? name : found;
    if (std::find(filesInWork.begin(), filesInWork.end(), identity) != filesInWork.end()) {
        FltWarningMessageConsole::notifyGuard("An external reference leads back to a file that refers to it",
                                              " (" + name + ")");
        return nothing;
    }
    Key const key = keyOf(identity, from, overrides);
    auto const known = files.find(key);
    bool const isFull = filesInWork.size() > FltLimits::externalReferenceDepth ||
                        files.size() >= FltLimits::externalReferences;
    if (known != files.end() && (isFull || !isBetterRepeated(known->second)))
        return known->second;
    if (isFull) {
        FltWarningMessageConsole::notifyGuard("Too many external files: some are left out",
                                              " (" + name + ")");
        return nothing;
    }
    Converted converted = readExternal(name, identity, from, overrides);
    if (known != files.end() && converted.visual.node == nullptr)
        return known->second;
    return files[key] = std::move(converted);
}

/// Whether a file that ended for its levels may have more of them here. Only half as many above it count, so
/// that no file is read for each place where it stands.
bool FltVisualFiles::isBetterRepeated(Converted const& known) const
{
    return !known.isWhole && setting.levels <= known.levelsAbove / 2;
}

/// Whether an external file isn't read too often with other palettes.
bool FltVisualFiles::mayReadAgain(FltFileInput const& input, std::string const& identity)
{
    if (identities.insert(identity).second) {
        repeatedBytesLeft += repetitions * input.getSize();
        return true;
    }
    repeatedBytesLeft -= input.getSize();
    if (repeatedBytesLeft < 0)
        FltWarningMessageConsole::notifyGuard(
            "External files take over too many palettes: some are left out");
    return repeatedBytesLeft >= 0;
}

std::optional<OpenFile> FltVisualFiles::open(std::string const& name) const
{
    return options.open ? options.open(name) : RegularFile::open(name.c_str());
}

FltVisualFiles::Converted FltVisualFiles::readExternal(std::string const& name, std::string const& identity,
                                                       FltModel const& from, std::uint32_t overrides)
{
    std::optional<OpenFile> file = open(name);
    if (!file)
        return {{}, 1, false};
    FltFileInput input(name.c_str(), std::move(*file));
    if (!input.isInFlowCreated() || !isOpenFlight(input) || !mayReadAgain(input, identity))
        return {};
    FltModel model(input.getFileName(), input.getBuffer(), static_cast<std::size_t>(input.getSize()),
                   options.salvage, setting.levels);
    model.palettes.overrideBy(from.palettes, overrides & FltPaletteSet::knownOverrides);
    filesInWork.push_back(identity);
    readModel(model, input);
    int const partsBefore = filesInParts;
    Converted converted;
    converted.metresPerUnit = model.metresPerUnit;
    converted.levelsAbove = setting.levels;
    converted.visual = build(model, input);
    converted.isWhole = model.tree.isWhole() && filesInParts == partsBefore;
    filesInWork.pop_back();
    return converted;
}
