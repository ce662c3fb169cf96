#include "support/LoaderOptions.h"

#include <algorithm>

namespace
{

using Kind = FltLoaderOption::Kind;

/// What --log without a name stands for: no file has this name.
constexpr char besideDatabase[] = "/";

} // namespace

void LoaderOptions::leaveOut(std::vector<std::string_view> const& names)
{
    leftOut = names;
}

void LoaderOptions::add(Program& program, Programs programs)
{
    for (FltLoaderOption const& option : FltLoaderOption::table())
        if (option.programs == programs &&
            std::find(leftOut.begin(), leftOut.end(), option.name) == leftOut.end()) {
            givenOptions.push_back({option, false, {}, {}});
            add(program, givenOptions.back());
        }
}

void LoaderOptions::add(Program& program, Given& given)
{
    FltLoaderOption const& option = given.option;
    std::string const flag(option.flag);
    std::string const placeholder(option.placeholder);
    std::string const help(option.help);
    switch (option.kind) {
    case Kind::flag:
        program.flag(flag, given.isSet, help);
        break;
    case Kind::word: {
        std::vector<std::string> words;
        for (FltLoaderOption::Word const& word : option.words)
            words.emplace_back(word.inPrograms);
        given.value = option.defaultWord().inPrograms;
        program.choice(flag, given.value, words, placeholder, help);
        break;
    }
    case Kind::directories:
        program.values(flag, given.values, placeholder, help + " May be given several times.", "/");
        break;
    case Kind::log:
        program.optionalValue(
            flag, given.value, besideDatabase, placeholder, [](std::string const&) { return false; }, help);
        break;
    case Kind::number:
    case Kind::directory:
        program.value(flag, given.value, placeholder, help, option.kind == Kind::directory ? "/" : "");
        break;
    }
}

void LoaderOptions::set(Given const& given, FltLoader& loader)
{
    FltLoaderOption const& option = given.option;
    for (std::string const& value : given.values)
        option.set(loader, value);
    if (given.isSet)
        option.set(loader, option.defaultNumber() == 0 ? "1" : "0");
    if (!given.value.empty())
        option.set(loader, option.kind == Kind::log && given.value == besideDatabase
                               ? FltLoader::besideDatabase
                               : given.value);
}

FltLoader LoaderOptions::makeLoader() const
{
    FltLoader loader;
    for (Given const& given : givenOptions)
        set(given, loader);
    return loader;
}

FltLoader LoaderOptions::makeCentringLoader() const
{
    FltLoader loader = makeLoader();
    if (!loader.exact) // which has no choice of it
        loader.origin = FltLoader::Origin::centre;
    return loader;
}

bool LoaderOptions::hasNamedLog() const
{
    FltLoader const loader = makeLoader();
    return loader.log && *loader.log != FltLoader::besideDatabase;
}

std::string LoaderOptions::logOf(std::string const& database) const
{
    FltLoader const loader = makeLoader();
    return !loader.log ? "" : hasNamedLog() ? *loader.log : database + ".log";
}

std::vector<KeptFile> LoaderOptions::keptFiles(std::string const& database,
                                               std::vector<FltReference> const& references,
                                               std::vector<FltTexture> const& textures) const
{
    std::vector<KeptFile> kept = {{database, "the input"}};
    if (std::string const log = logOf(database); !log.empty())
        kept.push_back({log, "the log"});
    for (FltReference const& reference : references)
        kept.push_back({reference.path, "a file that the database refers to"});
    for (FltTexture const& texture : textures)
        kept.push_back({texture.path, "a texture of the database"});
    return kept;
}
