#include "convert/ConversionPlan.h"

#include "convert/FileIdentity.h"
#include "support/DatabaseFiles.h"
#include "support/Program.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace
{

namespace fs = std::filesystem;

std::string withEnding(fs::path file, std::string const& ending)
{
    return file.replace_extension(ending).string();
}

/// A path with as few words as it takes, for names of files that needn't be there.
std::string plain(fs::path const& path)
{
    return path.lexically_normal().string();
}

/// Whether a path that counts from a directory leaves it.
bool leaves(fs::path const& relative)
{
    return relative.empty() || relative.is_absolute() || *relative.begin() == "..";
}

} // namespace

ConversionPlan::ConversionPlan(std::string ending) : ending(std::move(ending)) {}

void ConversionPlan::add(Entry entry)
{
    std::error_code problem;
    std::uintmax_t const bytes = fs::file_size(entry.input, problem);
    entry.bytes = problem ? 0 : bytes;
    entry.identity = FileIdentity::of(entry.input);
    positions.try_emplace(entry.identity, list.size());
    bool const isNew = outputs.try_emplace(plain(entry.output), list.size()).second;
    if (isNew || list[outputs[plain(entry.output)]].identity != entry.identity)
        list.push_back(std::move(entry)); // a file that was named twice is converted once
}

void ConversionPlan::addFile(std::string const& input, std::string const& output)
{
    add({input, "", output, 0, fs::path(input).parent_path().string(),
         fs::path(output).parent_path().string()});
}

void ConversionPlan::addInput(std::string const& input, std::string const& outputDirectory)
{
    if (DatabaseFiles::isDirectory(input))
        addDirectory(input, outputDirectory);
    else
        addFile(input, (fs::path(outputDirectory) / withEnding(fs::path(input).filename(), ending)).string());
}

void ConversionPlan::addDirectory(std::string const& directory, std::string const& outputDirectory)
{
    DatabaseFiles const found = DatabaseFiles::below(directory);
    for (std::string const& database : found.files) {
        fs::path const place = fs::path(outputDirectory) / fs::path(database).lexically_relative(directory);
        add({database, "", withEnding(place, ending), 0, directory, outputDirectory});
    }
    allProblems.insert(allProblems.end(), found.problems.begin(), found.problems.end());
}

/// A name that no other input goes to.
std::string ConversionPlan::freeOutput(std::string const& directory, std::string const& name)
{
    fs::path const wish = fs::path(directory) / withEnding(name, ending);
    std::string output = wish.string();
    int& number = repetitions.try_emplace(plain(wish), 1).first->second;
    while (outputs.count(plain(output)) != 0)
        output = (wish.parent_path() / wish.stem()).string() + "-" + std::to_string(++number) + ending;
    return output;
}

void ConversionPlan::addReference(std::string const& path, std::string const& identity, std::size_t referring)
{
    if (positions.count(identity) != 0)
        return;
    std::string const inputDirectory = list[referring].inputDirectory;
    std::string const outputDirectory = list[referring].outputDirectory;
    fs::path const base = FileIdentity::of(inputDirectory.empty() ? "." : inputDirectory);
    fs::path const relative = fs::path(identity).lexically_relative(base);
    std::string const name = leaves(relative) ? fs::path(path).filename().string() : relative.string();
    add({path, "", freeOutput(outputDirectory, name), 0, inputDirectory, outputDirectory});
}

void ConversionPlan::check() const
{
    std::unordered_map<std::string, std::string> inputOf;
    for (Entry const& entry : list) {
        auto const [other, isNew] = inputOf.try_emplace(FileIdentity::of(entry.output), entry.input);
        if (!isNew && FileIdentity::of(other->second) != entry.identity)
            throw UsageError(entry.input + " and " + other->second + " would both become " + entry.output +
                             ": give them directories of their own");
    }
    for (Entry const& entry : list)
        if (positions.count(FileIdentity::of(entry.output)) != 0)
            throw UsageError(entry.output + ": the output for " + entry.input + " would replace an input");
}

std::string const& ConversionPlan::outputOf(std::string const& identity) const
{
    return list[positions.at(identity)].output;
}
