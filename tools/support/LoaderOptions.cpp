#include "support/LoaderOptions.h"

namespace
{

/// What --log without a name stands for: no file has this name.
constexpr char besideDatabase[] = "/";

} // namespace

LoaderOptions::LoaderOptions(CLI::App& app)
{
    app.add_option("--texture-path", texturePath,
                   "A directory in which textures are looked for, besides that of the database; repeatable")
        ->type_name("DIR")
        ->allow_extra_args(false);
    app.add_flag("--log{/}", log, "Write a listing of every record into PATH, or into IN.flt.log")
        ->type_name("[=PATH]");
    app.add_flag("--exact", exact,
                 "Convert by the rules of the plug-in, rather than show as much as possible");
    app.set_version_flag("--version", "VelloReader " VELLOREADER_VERSION);
}

FltLoader LoaderOptions::makeLoader() const
{
    FltLoader loader;
    loader.texturePath = texturePath;
    if (!log.empty())
        loader.log = log == besideDatabase ? FltLoader::besideDatabase : log;
    loader.exact = exact;
    return loader;
}

std::vector<KeptFile> LoaderOptions::keptFiles(std::string const& database, FltScene const& scene) const
{
    std::vector<KeptFile> kept = {{database, "the input"}};
    if (!log.empty())
        kept.push_back({log == besideDatabase ? database + ".log" : log, "the log"});
    for (FltReference const& reference : scene.references())
        kept.push_back({reference.path, "a file that the database refers to"});
    for (FltTexture const& texture : scene.textures())
        kept.push_back({texture.path, "a texture of the database"});
    return kept;
}
