#include "robustness/StructuralDatabase.h"

#include "robustness/BrokenDatabases.h"
#include "robustness/StructuralDamage.h"
#include "robustness/StructuralFile.h"

#include <fstream>

namespace
{

/// More than the files that are followed from one to the next.
constexpr unsigned longestChain = 40;

std::string nameOf(unsigned file)
{
    return "file" + std::to_string(file) + ".flt";
}

/// Names by which a file of a database may refer to others.
std::vector<std::string> referencesOf(unsigned file, unsigned files, RandomValues& random)
{
    std::vector<std::string> names = {nameOf(file + 1), nameOf(file + 1), nameOf(random.below(files))};
    static constexpr char const* const around[] = {"", "./", "../", "sub\\..\\", "/", "nowhere/"};
    std::string const before = random.oneOf(around);
    names.push_back(before + nameOf(random.below(files)));
    names.push_back(names.back() + "<" + random.name(20) + ">");
    names.push_back(random.name(199));
    return names;
}

} // namespace

StructuralDatabase::StructuralDatabase(unsigned number) : wasDamaged(number % 3 == 0)
{
    RandomValues random(number);
    bool const isChain = random.oneIn(40);
    // Deep ones are rare: what they become takes time in the square of the levels, for the indentation alone.
    unsigned const deepest = random.oneIn(8) ? 1500 : 150;
    unsigned const files = isChain ? 2 + random.below(longestChain) : 1 + random.below(4);
    for (unsigned file = 0; file < files; ++file) {
        StructuralFile::Extent extent;
        extent.nodes = isChain ? 3 : 5 + random.below(60);
        extent.levels = 2 + random.below(20);
        if (isChain || random.oneIn(40))
            extent.nest = random.below(isChain ? deepest / 5 : deepest);
        if (isChain)
            extent.next = nameOf(file + 1);
        // Two references to the next file would double what it holds, from file to file.
        std::vector<std::string> const references =
            isChain ? std::vector<std::string>{"missing.flt"} : referencesOf(file, files, random);
        int const revision = random.oneOf(changingRevisions);
        allFiles.push_back({nameOf(file), StructuralFile(random, revision, references, extent).write()});
    }
    if (wasDamaged) {
        File& file = allFiles[random.below(files)];
        file.bytes = StructuralDamage::damaged(file.bytes, random);
    }
}

std::string StructuralDatabase::save(std::filesystem::path const& folder) const
{
    for (File const& file : allFiles)
        std::ofstream(folder / file.name, std::ios::binary) << file.bytes;
    return (folder / allFiles.front().name).string();
}
