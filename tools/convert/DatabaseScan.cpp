#include "convert/DatabaseScan.h"

#include "convert/FileIdentity.h"
#include "support/TextureFinder.h"

#include "inspect/FltDependencies.h"
#include "loader/FltLoader.h"
#include "parser/FltRecordScan.h"
#include "records/FltOpcode.h"

#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace
{

constexpr char textureMark[] = "texture";
constexpr char nameMark[] = "name";

/// Counts references to each file.
class ReferenceCount
{
public:
    explicit ReferenceCount(std::vector<DatabaseScan::Reference>& list) : list(list) {}

    void add(std::string const& path)
    {
        std::error_code ignored;
        if (!std::filesystem::is_regular_file(path, ignored))
            return;
        std::string const file = FileIdentity::of(path);
        auto const [position, isNew] = positions.try_emplace(file, list.size());
        if (isNew)
            list.push_back({path, file, 0});
        ++list[position->second].count;
    }

private:
    std::vector<DatabaseScan::Reference>& list;
    std::unordered_map<std::string, std::size_t> positions;
};

/// The names of textures, each once.
class TextureNames
{
public:
    explicit TextureNames(std::vector<std::string>& list) : list(list) {}

    void add(std::string const& name)
    {
        if (!name.empty() && known.insert(name).second)
            list.push_back(name);
    }

private:
    std::vector<std::string>& list;
    std::unordered_set<std::string> known;
};

/// What a load finds, also after a damaged place.
void addFilesOfLoad(std::string const& database, ReferenceCount& references, TextureNames& textures)
{
    FltLoader loader;
    loader.references = FltLoader::References::skip;
    try {
        FltScene const scene = loader.load(database);
        for (FltReference const& reference : scene.references())
            references.add(reference.path);
        for (FltTexture const& texture : scene.textures())
            textures.add(texture.name);
    } catch (FltLoadError const&) {
        return; // its conversion reports it
    }
}

void addFilesOfReferences(std::vector<std::string> const& stored, std::string const& database,
                          ReferenceCount& references)
{
    FltDependencies::FindReference search;
    for (std::string const& reference : stored)
        if (!reference.empty())
            references.add(search.find(database, reference));
}

} // namespace

DatabaseScan DatabaseScan::of(std::string const& database, std::vector<std::string> const& texturePath,
                              bool wantsTextures)
try {
    DatabaseScan scan;
    ReferenceCount references(scan.references);
    TextureNames textures(scan.textureNames);
    std::vector<std::string> stored;
    FltRecordScan records(database);
    while (records.next())
        if (records.opcode() == FltOpcode::texturePattern)
            textures.add(FltDependencies::nameIn(records));
        else if (records.opcode() == FltOpcode::externalReference)
            stored.push_back(FltDependencies::nameIn(records));
    if (records.fault() != FltFraming::Fault::none)
        addFilesOfLoad(database, references, textures);
    else
        addFilesOfReferences(stored, database, references);
    if (!wantsTextures || scan.textureNames.empty())
        return scan;
    TextureFinder const find(database, texturePath);
    for (std::string const& name : scan.textureNames) {
        std::string const path = find(name, database);
        if (!path.empty())
            scan.textures.push_back(path);
    }
    return scan;
} catch (std::runtime_error const&) {
    return {};
}

std::vector<std::string> DatabaseScan::fields() const
{
    std::vector<std::string> list;
    for (Reference const& reference : references) {
        list.push_back(std::to_string(reference.count));
        list.push_back(reference.path);
        list.push_back(reference.identity);
    }
    for (auto const& [mark, texts] : {std::pair(nameMark, &textureNames), std::pair(textureMark, &textures)})
        for (std::string const& text : *texts) {
            list.emplace_back(mark);
            list.push_back(text);
            list.emplace_back();
        }
    return list;
}

DatabaseScan DatabaseScan::fromFields(std::vector<std::string> const& fields)
{
    DatabaseScan scan;
    for (std::size_t i = 0; i + 2 < fields.size(); i += 3)
        if (fields[i] == nameMark)
            scan.textureNames.push_back(fields[i + 1]);
        else if (fields[i] == textureMark)
            scan.textures.push_back(fields[i + 1]);
        else
            scan.references.push_back({fields[i + 1], fields[i + 2], std::stoull(fields[i])});
    return scan;
}
