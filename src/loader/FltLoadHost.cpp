#include "loader/FltLoadHost.h"

#include "convert/FltExternalFiles.h"
#include "loader/FltDatabaseFile.h"
#include "loader/FltOmissionKinds.h"
#include "messages/FltText.h"
#include "parser/FltInput.h"
#include "records/FltRecordHeader.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <set>
#include <sys/stat.h>
#include <utility>

namespace
{

using Kind = FltLoadError::Kind;

template <std::size_t size>
std::string textOf(char const (&text)[size])
{
    return {text, ::strnlen(text, size)};
}

FltDatabaseInfo::Unit unitOf(int number)
{
    using Unit = FltDatabaseInfo::Unit;
    for (Unit const unit : {Unit::kilometres, Unit::feet, Unit::inches, Unit::nauticalMiles})
        if (static_cast<int>(unit) == number)
            return unit;
    return Unit::metres;
}

void fill(FltDatabaseInfo& info, FltRecordHeader const& header)
{
    info.name = textOf(header.id);
    info.revision = header.formatRevisionLevel;
    info.unit = unitOf(header.vertexCoordinateUnits);
    info.unitMultiplier = header.multiplierDiviserUnit;
    info.lastChange = FltText::withoutEnd(textOf(header.lastRevisionDateTime));
    info.projection = header.projectionType;
    info.ellipsoid = header.earthEllipsoidModel;
    info.utmZone = header.utmZone;
    info.earthMajorAxis = header.earthMajorAxis;
    info.earthMinorAxis = header.earthMinorAxis;
    info.delta[0] = header.XdeltaToPlaceDatabase;
    info.delta[1] = header.YdeltaToPlaceDatabase;
    info.originLatitude = header.originLatitude;
    info.originLongitude = header.originLongitude;
    info.southWestLatitude = header.southWestCornerLatitude;
    info.southWestLongitude = header.southWestCornerLongitude;
    info.northEastLatitude = header.northEastCornerLatitude;
    info.northEastLongitude = header.northEastCornerLongitude;
}

std::uint64_t sizeOf(FltInput const& file)
{
    return static_cast<std::uint64_t>(std::max(file.getSize(), 0L));
}

} // namespace

FltLoadHost::FltLoadHost(FltLoader const& options, std::string const& path, FltLoadReport& told,
                         FltMessageCollector& messages)
    : options(options), path(path), told(told), messages(messages), readable(options.onlyBelow),
      textureFiles(FltDatabaseFile::withDirectory(path), options.texturePath, options.textureNamesFrom,
                   readable, options.largestFile),
      textureNodes(textureFiles)
{
}

void FltLoadHost::report(std::string const& file, std::uint64_t bytesDone, std::uint64_t bytesInAll) const
{
    if (!options.progress)
        return;
    bool goesOn = false;
    try {
        goesOn = options.progress(file, bytesDone, bytesInAll);
    } catch (...) {
        throw CallbackFailure{std::current_exception()};
    }
    if (!goesOn)
        throw FltLoadError(Kind::cancelled, path, "the load was cancelled.");
}

void FltLoadHost::reportNowAndThen(FltInput const& file, std::uint64_t bytesDone)
{
    if (&file == reportedFile && bytesDone < nextReport)
        return;
    constexpr std::uint64_t reportsOfAFile = 256;
    constexpr std::uint64_t fewestBytes = 16384;
    std::uint64_t const size = sizeOf(file);
    reportedFile = &file;
    nextReport = bytesDone + std::max(size / reportsOfAFile, fewestBytes);
    report(file.getFileName(), std::min(bytesDone, size), size);
}

void FltLoadHost::beginFile(FltInput const& file)
{
    if (database == nullptr) {
        database = &file;
        told.info.bytes = sizeOf(file);
    }
    messages.setFile(file.getFileName());
    reportedFile = nullptr;
    reportNowAndThen(file, 0);
}

void FltLoadHost::takeRecord(FltInput const& file, FltRecord const& record, std::size_t offset)
{
    ++records[record.getOpcode()];
    if (&file == database) {
        if (told.info.records++ == 0)
            if (auto const* const header = dynamic_cast<FltRecordHeader const*>(&record))
                fill(told.info, *header);
    }
    if (options.progress)
        reportNowAndThen(file, offset / 2);
}

void FltLoadHost::takeConverted(FltInput const& file, std::size_t converted, std::size_t inAll)
{
    if (!options.progress)
        return;
    double const done = inAll > 0 ? static_cast<double>(converted) / static_cast<double>(inAll) : 1;
    double const bytes = static_cast<double>(sizeOf(file)) * (1 + done) / 2;
    reportNowAndThen(file, static_cast<std::uint64_t>(bytes));
}

void FltLoadHost::endFile(FltInput const& file)
{
    reportedFile = nullptr;
    report(file.getFileName(), sizeOf(file), sizeOf(file));
}

SoNodeRef<SoTexture2> FltLoadHost::makeTexture(FltInput const& file, std::string const& name)
{
    return textureNodes.make(name, file.getFileName());
}

void FltLoadHost::takeHeader(FltRecordHeader const& header)
{
    fill(told.info, header);
}

bool FltLoadHost::beginReference(FltInput const& file, std::string const& name, std::string const& target,
                                 bool isThere)
{
    openReferences.push_back({told.references.size(), messages.getFile(), {}});
    told.references.push_back({name, file.getFileName(), isThere ? target : "", false});
    if (!isThere || options.references == FltLoader::References::skip)
        return false;
    std::optional<OpenFile> opened = openReferenced(FltExternalFiles::nameOf(target));
    if (opened)
        openReferences.back().opened = std::move(*opened);
    return opened.has_value();
}

OpenFile FltLoadHost::takeReferencedFile()
{
    return std::move(openReferences.back().opened);
}

void FltLoadHost::endReference(bool isLoaded)
{
    told.references[openReferences.back().position].isLoaded = isLoaded;
    messages.setFile(openReferences.back().file);
    openReferences.pop_back();
}

std::optional<OpenFile> FltLoadHost::openReferenced(std::string const& target)
{
    OpenFile file = readable.open(target);
    if (!file.isOpen() && errno == EXDEV) {
        reportLeftOut("An external file is left out, because it isn't below " + *options.onlyBelow, target);
        return std::nullopt;
    }
    if (file.size() <= options.largestFile)
        return file;
    reportLeftOut("An external file has " + std::to_string(file.size()) +
                      " bytes, more than are allowed, and is left out",
                  target);
    return std::nullopt;
}

void FltLoadHost::reportLeftOut(std::string const& why, std::string const& target)
{
    messages.add({FltMessage::Level::warning, why + ": " + target, messages.getFile()});
}

void FltLoadHost::reportPicture(std::string const& picture) const
{
    struct stat status = {};
    bool const isThere = ::stat(picture.c_str(), &status) == 0;
    report(picture, 0, isThere ? static_cast<std::uint64_t>(status.st_size) : 0);
}

void FltLoadHost::finishScene()
{
    auto const onPicture = [this](std::string const& picture) { reportPicture(picture); };
    for (FltTexture const& texture : textureNodes.resolve(onPicture))
        addTexture(texture);
    told.omissions = FltOmissionKinds::ofExactConversion(records);
}

void FltLoadHost::findTextures(std::vector<FltTexture>& textures)
{
    std::set<std::pair<std::string, std::string>> listed;
    auto const onPicture = [this](std::string const& picture) { reportPicture(picture); };
    for (FltTexture& texture : textures) {
        if (texture.name.empty())
            continue;
        texture = textureFiles.resolve(texture.name, texture.database, onPicture);
        if (listed.emplace(texture.name, texture.database).second)
            addTexture(texture);
    }
    addOmissionsOfTextures();
}

/// What the toolkit can't do with textures that their attributes ask for.
void FltLoadHost::addOmissionsOfTextures()
{
    using Attributes = FltTextureAttributes;
    auto const add = [this](char const* kind, auto isLost) {
        auto const count =
            std::count_if(told.textures.begin(), told.textures.end(),
                          [&](FltTexture const& texture) { return isLost(texture.attributes); });
        if (count > 0)
            told.omissions.push_back({kind, static_cast<std::uint64_t>(count)});
    };
    add("mirrored texture", [](Attributes const& attributes) {
        return attributes.wrapU == Attributes::Wrap::mirror || attributes.wrapV == Attributes::Wrap::mirror;
    });
    add("texture whose colours are added",
        [](Attributes const& attributes) { return attributes.environment == Attributes::Environment::add; });
}

void FltLoadHost::addTexture(FltTexture const& texture)
{
    if (texture.path.empty() || !texture.damage.empty())
        reportTexture(texture);
    told.textures.push_back(texture);
}

/// Says once what is wrong with a texture: for the first of the files that name it, and how many they are.
void FltLoadHost::reportTexture(FltTexture const& texture)
{
    std::string text = "Texture " + texture.name;
    std::string place;
    if (!texture.damage.empty()) {
        place = texture.path;
        text += " is shown in part: " + place + " " + texture.damage + ". " + texture.advice;
    } else if (!texture.unreadable.empty()) {
        place = texture.unreadable;
        text += " isn't shown: " + place + " " + texture.problem + ". " + texture.advice;
    } else {
        std::string const others =
            texture.otherDirectories == 0 ? "anywhere else"
            : texture.otherDirectories == 1
                ? "in another directory"
                : "in " + std::to_string(texture.otherDirectories) + " other directories";
        place = texture.tried.empty() ? texture.name : texture.tried.front();
        text += " isn't shown: it is neither " + place + " nor " + others +
                ". Add its directory to the texture path.";
    }
    std::string const key = std::filesystem::path(place).lexically_normal().string() + '\n' + texture.name;
    auto const [first, isNew] = reportedTextures.try_emplace(key, FltMessage());
    if (isNew)
        first->second = {FltMessage::Level::warning, text, texture.database};
    messages.add(first->second);
}
