#include "iv/DatabaseScan.h"

#include "iv/FileIdentity.h"
#include "support/TextureFinder.h"

#include "inspect/FltDependencies.h"
#include "loader/FltLoader.h"

#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <unordered_map>

namespace
{

constexpr char textureMark[] = "texture";

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

/// References as a load finds them, also after a damaged place.
void addReferencesOfLoad(std::string const& database, ReferenceCount& references)
{
    FltLoader loader;
    loader.references = FltLoader::References::skip;
    try {
        FltScene const scene = loader.load(database);
        for (FltReference const& reference : scene.references())
            references.add(reference.path);
    } catch (FltLoadError const&) {
        return; // its conversion reports it
    }
}

} // namespace

DatabaseScan DatabaseScan::of(std::string const& database, std::vector<std::string> const& texturePath,
                              bool wantsTextures)
try {
    DatabaseScan scan;
    FltInventory const inventory(database);
    ReferenceCount references(scan.references);
    if (inventory.fault() != FltFraming::Fault::none)
        addReferencesOfLoad(database, references);
    else
        for (FltInventory::Reference const& reference : inventory.references)
            if (!reference.path.empty())
                references.add(FltDependencies::pathOf(database, reference.path));
    if (!wantsTextures || inventory.textures.empty())
        return scan;
    TextureFinder const find(database, texturePath);
    for (auto const& [index, texture] : inventory.textures) {
        std::string const path = find(texture.name, database);
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
    for (std::string const& texture : textures) {
        list.emplace_back(textureMark);
        list.push_back(texture);
        list.emplace_back();
    }
    return list;
}

DatabaseScan DatabaseScan::fromFields(std::vector<std::string> const& fields)
{
    DatabaseScan scan;
    for (std::size_t i = 0; i + 2 < fields.size(); i += 3)
        if (fields[i] == textureMark)
            scan.textures.push_back(fields[i + 1]);
        else
            scan.references.push_back({fields[i + 1], fields[i + 2], std::stoull(fields[i])});
    return scan;
}
