#include "convert/ReferenceNames.h"

#include "convert/FileIdentity.h"

#include <filesystem>
#include <utility>

ReferenceNames::ReferenceNames(std::unordered_map<std::string, std::string> targets, std::string directory)
    : targets(std::move(targets)), directory(std::move(directory))
{
}

std::optional<std::string> ReferenceNames::nameOf(std::string const& database) const
{
    auto const target = targets.find(FileIdentity::of(database));
    if (target == targets.end())
        return std::nullopt;
    std::filesystem::path const from = directory.empty() ? "." : directory;
    return std::filesystem::path(target->second).lexically_proximate(from).string();
}
