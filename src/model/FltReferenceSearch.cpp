#include "model/FltReferenceSearch.h"

#include "model/FltReferencedFile.h"

#include <filesystem>
#include <system_error>

std::string FltReferenceSearch::find(std::string const& database, std::string const& reference)
{
    std::string path = FltReferencedFile::pathOf(database, reference);
    std::error_code problem;
    if (std::filesystem::exists(path, problem))
        return path;
    std::string const name = FltReferencedFile::pathOf("", reference);
    std::string const directory = path.substr(0, path.size() - name.size());
    bool const isFromRoot = !name.empty() && name.front() == '/';
    FltKnownDirectories::Parts const parts = FltKnownDirectories::partsOf(name);
    if (parts.empty())
        return path;
    FltKnownDirectories::Visited visited;
    std::string const place = isFromRoot ? "/" : directory.empty() ? "./" : directory;
    std::string found = known.find({true, false}, place, parts.begin(), parts.end(), visited,
                                   [](std::string const&, OpenFile const&) { return true; });
    return found.empty() ? path : found;
}
