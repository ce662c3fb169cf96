#include "visual/FltVisualFiles.h"

#include "messages/FltLimits.h"
#include "messages/FltWarningMessageConsole.h"
#include "model/FltModelReader.h"
#include "model/FltReferencedFile.h"
#include "records/FltRevision.h"
#include "toolkit/RegularFile.h"
#include "visual/FltLocalOrigin.h"
#include "visual/FltMirrors.h"
#include "visual/FltNodeMatrix.h"

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
    : options(options), result(result), search(options.readable)
{
    setting.levelsOfDetail = options.levelsOfDetail;
    setting.time = options.time;
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
    result.offset = moveToOrigin(visual) * worldPerUnit(model.metresPerUnit);
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
    builder.dropBytesOf(input);
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

/// Moves the database as a whole, if that is asked for and it lies far away.
/// @return by how much, in the unit of the file
SbVec3d FltVisualFiles::moveToOrigin(FltVisualPart const& database) const
{
    if (options.origin == FltVisualOptions::Origin::stored)
        return {0, 0, 0};
    SbVec3d const offset = FltLocalOrigin::of(database.box, rootMetresPerUnit);
    if (offset == SbVec3d(0, 0, 0))
        return offset;
    std::vector<SbDPMatrix>& transform = database.node->transform;
    transform.insert(transform.begin(), FltNodeMatrix::by(-offset));
    return offset;
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
    node.stackMatrix(SbDPMatrix(matrix));
    node.add(content);
    return node.finish();
}

FltVisualPart FltVisualFiles::refer(FltModel const& from, std::string const& path, std::uint32_t overrides)
{
    using References = FltVisualOptions::References;
    std::string const name = search.find(from.fileName, path);
    std::string const node = FltReferencedFile::nodeOf(path);
    bool const isThere = !identityOf(name).empty();
    result.references.push_back({path, from.fileName, isThere ? name : std::string(), false});
    std::size_t const entry = result.references.size() - 1;
    if (options.references == References::skip) {
        ++setting.leftOut["external reference"];
        return {};
    }
    if (options.references == References::asFile && isThere && node.empty()) {
        if (open(name))
            return makeFileNode(from, name);
        ++setting.leftOut[forbidden];
        return {};
    }
    Converted const& converted = convertExternal(name, node, from, overrides);
    FltWarningMessageConsole::beginFile(from.fileName.c_str());
    if (converted.visual.node == nullptr) {
        ++setting.leftOut[converted.absence];
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
FltVisualFiles::Key FltVisualFiles::keyOf(std::string const& identity, std::string const& node,
                                          FltModel const& from, std::uint32_t overrides)
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
    note(own.lineWidths, palettes.lineWidths);
    return {identity, overridden, node};
}

FltVisualFiles::Converted const& FltVisualFiles::convertExternal(std::string const& name,
                                                                 std::string const& node,
                                                                 FltModel const& from,
                                                                 std::uint32_t overrides)
{
    static Converted const nothing;
    std::string const found = identityOf(name);
    std::string const& identity = found.empty() ? name : found;
    if (std::find(filesInWork.begin(), filesInWork.end(), identity) != filesInWork.end()) {
        FltWarningMessageConsole::notifyGuard("An external reference leads back to a file that refers to it",
                                              " (" + name + ")");
        return nothing;
    }
    Key const key = keyOf(identity, node, from, overrides);
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
    Converted converted =
        node.empty() ? convertWhole(name, key, from, overrides) : convertNode(name, key, from, overrides);
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
    return mayRepeat(input.getSize(), "External files take over too many palettes: some are left out");
}

/// Whether bytes of files that were read may become a part of the visual once more.
/// @param excess what is reported otherwise
bool FltVisualFiles::mayRepeat(std::int64_t bytes, char const* excess)
{
    repeatedBytesLeft -= bytes;
    if (repeatedBytesLeft < 0)
        FltWarningMessageConsole::notifyGuard(excess);
    return repeatedBytesLeft >= 0;
}

std::optional<OpenFile> FltVisualFiles::open(std::string const& name) const
{
    return options.open ? options.open(name) : RegularFile::open(name.c_str());
}

FltVisualFiles::ExternalModel FltVisualFiles::readExternal(std::string const& name,
                                                           std::string const& identity, FltModel const& from,
                                                           std::uint32_t overrides)
{
    std::optional<OpenFile> file = open(name);
    if (!file)
        return {nullptr, nullptr, forbidden};
    ExternalModel read;
    read.input = std::make_unique<FltFileInput>(name.c_str(), std::move(*file));
    FltFileInput& input = *read.input;
    if (!input.isInFlowCreated() || !isOpenFlight(input) || !mayReadAgain(input, identity))
        return {};
    read.model = std::make_unique<FltModel>(input.getFileName(), input.getBuffer(),
                                            static_cast<std::size_t>(input.getSize()), options.salvage,
                                            setting.levels);
    read.model->palettes.overrideBy(from.palettes, overrides & FltPaletteSet::knownOverrides);
    readModel(*read.model, input);
    return read;
}

FltVisualFiles::Converted FltVisualFiles::convertWhole(std::string const& name, Key const& key,
                                                       FltModel const& from, std::uint32_t overrides)
{
    std::string const& identity = std::get<0>(key);
    ExternalModel const file = readExternal(name, identity, from, overrides);
    Converted converted;
    converted.absence = file.absence;
    if (file.model == nullptr)
        return converted;
    converted.metresPerUnit = file.model->metresPerUnit;
    converted.levelsAbove = setting.levels;
    int const partsBefore = filesInParts;
    filesInWork.push_back(identity);
    converted.visual = build(*file.model, *file.input);
    filesInWork.pop_back();
    converted.isWhole = file.model->tree.isWhole() && filesInParts == partsBefore;
    return converted;
}

/// The file of the node stays in memory, since others of its nodes may be asked for; not if levels of it were
/// left out, which may have room elsewhere.
FltVisualFiles::Converted FltVisualFiles::convertNode(std::string const& name, Key const& key,
                                                      FltModel const& from, std::uint32_t overrides)
{
    auto const& [identity, palettes, node] = key;
    Key const fileKey(identity, palettes, "");
    std::unique_ptr<FltNamedParts>& parts = namedParts[fileKey];
    Converted converted;
    if (parts == nullptr) {
        ExternalModel file = readExternal(name, identity, from, overrides);
        converted.absence = file.absence;
        if (file.model == nullptr)
            return converted;
        double const unit = worldPerUnit(file.model->metresPerUnit);
        parts = std::make_unique<FltNamedParts>(std::move(file.input), std::move(file.model), setting, unit);
    }
    FltModel const& model = parts->getModel();
    FltNamedParts::Number const number = parts->find(node);
    if (number == FltModelTree::none) {
        FltWarningMessageConsole::notifyGuard("An external reference names a node that isn't there",
                                              ": " + node + " in " + name);
        converted.absence = withoutNode;
        return converted;
    }
    if (!mayRepeat(parts->bytesOf(number), "Too many parts of external files: some are left out"))
        return converted;
    converted.metresPerUnit = model.metresPerUnit;
    converted.levelsAbove = setting.levels;
    int const partsBefore = filesInParts;
    FltWarningMessageConsole::beginFile(model.fileName.c_str());
    filesInWork.push_back(identity);
    converted.visual = parts->build(number);
    filesInWork.pop_back();
    converted.isWhole = model.tree.isWhole() && filesInParts == partsBefore;
    if (!model.tree.isWhole())
        parts.reset();
    return converted;
}
