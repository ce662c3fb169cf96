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

ConversionPlan::ConversionPlan(std::string ending, TreePart part)
    : ending(std::move(ending)), part(part), bound(part.count > 1)
{
}

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

/// Takes down what another part converts.
void ConversionPlan::note(std::string const& input, std::string const& output)
{
    others.insert(plain(input));
    auto const [other, isNew] = otherInputs.try_emplace(plain(output), input);
    if (!isNew && FileIdentity::of(other->second) != FileIdentity::of(input))
        clashes.emplace_back(input, other->second);
}

void ConversionPlan::addFile(std::string const& input, std::string const& output)
{
    tree = false;
    add({input, "", output, 0, fs::path(input).filename().string(), fs::path(input).parent_path().string(),
         fs::path(output).parent_path().string()});
}

/// Plans a database with a place, if it belongs to this part.
void ConversionPlan::addPlace(std::string const& input, std::string const& place,
                              std::string const& inputDirectory, std::string const& outputDirectory)
{
    std::string const output = (fs::path(outputDirectory) / withEnding(place, ending)).string();
    if (part.holds(place))
        add({input, "", output, 0, place, inputDirectory, outputDirectory});
    else
        note(input, output);
}

void ConversionPlan::addInput(std::string const& input, std::string const& outputDirectory)
{
    if (!DatabaseFiles::isDirectory(input)) {
        tree = false;
        std::string const directory = fs::path(input).parent_path().string();
        roots.emplace(directory, outputDirectory);
        addPlace(input, fs::path(input).filename().string(), directory, outputDirectory);
        return;
    }
    roots.emplace(input, outputDirectory);
    DatabaseFiles const found = DatabaseFiles::below(input);
    for (std::string const& database : found.files)
        addPlace(database, fs::path(database).lexically_relative(input).generic_string(), input,
                 outputDirectory);
    allProblems.insert(allProblems.end(), found.problems.begin(), found.problems.end());
}

void ConversionPlan::addBelow(std::string const& root, std::string const& input,
                              std::string const& outputDirectory)
{
    bound = true;
    roots.emplace(root, outputDirectory);
    DatabaseFiles const found = DatabaseFiles::named({input});
    fs::path const base = fs::absolute(root).lexically_normal();
    for (std::string const& database : found.files) {
        fs::path const place = fs::absolute(database).lexically_normal().lexically_relative(base);
        if (leaves(place))
            allProblems.push_back(
                std::string(database)
                    .append(": lies outside of ")
                    .append(root)
                    .append(", so it has no place below the output. Give --root a directory above it."));
        else
            addPlace(database, place.generic_string(), root, outputDirectory);
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
    add({path, "", freeOutput(outputDirectory, name), 0, name, inputDirectory, outputDirectory});
}

void ConversionPlan::check() const
{
    auto const refuse = [](std::string const& input, std::string const& other, std::string const& output) {
        throw UsageError(input + " and " + other + " would both become " + output +
                         ": give them directories of their own");
    };
    std::unordered_map<std::string, std::string> inputOf;
    for (Entry const& entry : list) {
        auto const [other, isNew] = inputOf.try_emplace(FileIdentity::of(entry.output), entry.input);
        if (!isNew && FileIdentity::of(other->second) != entry.identity)
            refuse(entry.input, other->second, entry.output);
        auto const elsewhere = otherInputs.find(plain(entry.output));
        if (elsewhere != otherInputs.end() && FileIdentity::of(elsewhere->second) != entry.identity)
            refuse(entry.input, elsewhere->second, entry.output);
    }
    for (auto const& [input, other] : clashes)
        refuse(input, other, "one file");
    for (Entry const& entry : list)
        if (positions.count(FileIdentity::of(entry.output)) != 0 || others.count(plain(entry.output)) != 0)
            throw UsageError(entry.output + ": the output for " + entry.input + " would replace an input");
}

std::optional<std::string> ConversionPlan::outputOf(std::string const& identity) const
{
    if (auto const own = positions.find(identity); own != positions.end())
        return list[own->second].output;
    for (auto const& [root, outputDirectory] : roots) {
        fs::path const place =
            fs::path(identity).lexically_relative(FileIdentity::of(root.empty() ? "." : root));
        if (leaves(place))
            continue;
        std::string const output = (fs::path(outputDirectory) / withEnding(place, ending)).string();
        auto const other = otherInputs.find(plain(output));
        if (other != otherInputs.end() && FileIdentity::of(other->second) == identity)
            return output;
    }
    return std::nullopt;
}
