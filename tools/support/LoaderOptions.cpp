#include "support/LoaderOptions.h"

namespace
{

/// What --log without a name stands for: no file has this name.
constexpr char besideDatabase[] = "/";

} // namespace

LoaderOptions::LoaderOptions(Program& program)
{
    program.values("--texture-path", texturePath, "DIR",
                   "Look for textures in this directory too. May be given several times.", "/");
    program.choice("--lod", levelsOfDetail, {"all", "highest", "lowest"}, "WHICH",
                   "Levels of detail: all of them, one of which shows at each distance, or the finest or the "
                   "coarsest alone.");
    program.flag("--exact", isExact,
                 "Convert by the rules of the plug-in, rather than show as much as possible.");
    program.optionalValue(
        "--log", log, besideDatabase, "PATH", [](std::string const&) { return false; },
        "Write a listing of every record into PATH, or beside the database.");
}

FltLoader LoaderOptions::makeLoader() const
{
    FltLoader loader;
    loader.texturePath = texturePath;
    if (!log.empty())
        loader.log = log == besideDatabase ? FltLoader::besideDatabase : log;
    if (levelsOfDetail != "all")
        loader.levelsOfDetail = levelsOfDetail == "highest" ? FltLoader::LevelsOfDetail::highest
                                                            : FltLoader::LevelsOfDetail::lowest;
    loader.exact = isExact;
    return loader;
}

bool LoaderOptions::hasNamedLog() const
{
    return !log.empty() && log != besideDatabase;
}

std::string LoaderOptions::logOf(std::string const& database) const
{
    return log == besideDatabase ? database + ".log" : log;
}

std::vector<KeptFile> LoaderOptions::keptFiles(std::string const& database, FltScene const& scene) const
{
    std::vector<KeptFile> kept = {{database, "the input"}};
    if (!log.empty())
        kept.push_back({logOf(database), "the log"});
    for (FltReference const& reference : scene.references())
        kept.push_back({reference.path, "a file that the database refers to"});
    for (FltTexture const& texture : scene.textures())
        kept.push_back({texture.path, "a texture of the database"});
    return kept;
}
