#include "support/DatabaseFiles.h"

#include "support/FileEnding.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <system_error>

namespace
{

namespace fs = std::filesystem;

struct Folder {
    std::vector<std::string> databases; ///< By name.
    std::vector<fs::path> folders;      ///< By name.
    std::error_code problem;
};

bool isDatabase(fs::directory_entry const& file)
{
    std::error_code ignored;
    return FileEnding::of(file.path().string()) == ".flt" && !file.is_directory(ignored);
}

Folder read(fs::path const& path)
{
    Folder folder;
    fs::directory_iterator entry(path, folder.problem);
    for (; !folder.problem && entry != fs::directory_iterator(); entry.increment(folder.problem)) {
        std::error_code ignored;
        if (isDatabase(*entry))
            folder.databases.push_back(entry->path().string());
        else if (!entry->is_symlink(ignored) && entry->is_directory(ignored))
            folder.folders.push_back(entry->path());
    }
    std::sort(folder.databases.begin(), folder.databases.end());
    std::sort(folder.folders.begin(), folder.folders.end());
    return folder;
}

template <class List>
void append(List& list, List more)
{
    list.insert(list.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

} // namespace

DatabaseFiles DatabaseFiles::below(std::string const& directory)
{
    DatabaseFiles found;
    std::vector<fs::path> open{directory};
    while (!open.empty()) {
        fs::path const path = std::move(open.back());
        open.pop_back();
        Folder folder = read(path);
        if (folder.problem)
            found.problems.push_back(path.string() + ": cannot read: " + folder.problem.message() +
                                     ". Check its permissions.");
        append(found.files, std::move(folder.databases));
        open.insert(open.end(), folder.folders.rbegin(), folder.folders.rend());
    }
    if (found.files.empty() && found.problems.empty())
        found.problems.push_back(directory + ": holds no database. Their names end in .flt.");
    return found;
}

DatabaseFiles DatabaseFiles::named(std::vector<std::string> const& inputs)
{
    DatabaseFiles all;
    for (std::string const& input : inputs) {
        if (!isDirectory(input)) {
            all.files.push_back(input);
            continue;
        }
        DatabaseFiles found = below(input);
        append(all.files, std::move(found.files));
        append(all.problems, std::move(found.problems));
    }
    return all;
}

bool DatabaseFiles::isDirectory(std::string const& path)
{
    std::error_code ignored;
    return fs::is_directory(path, ignored);
}

bool DatabaseFiles::isOneFile(std::vector<std::string> const& inputs)
{
    return inputs.size() == 1 && !isDirectory(inputs.front());
}
