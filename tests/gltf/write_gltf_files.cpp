// Writes glTF files of many databases into a folder: of each record of the format at each revision at which
// it changes, of each feature, and of those that are named.
//
//     write_gltf_files FOLDER FILE.flt...

#include "gltf/FltGltf.h"
#include "loader/FltLoader.h"
#include "pictures/PictureDatabases.h"
#include "robustness/BrokenDatabases.h"
#include "support/ScratchFolder.h"

#include <filesystem>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

namespace
{

namespace fs = std::filesystem;

/// Each option by itself, and how its files are called.
std::vector<std::pair<std::string, FltGltfOptions>> everyOption()
{
    std::vector<std::pair<std::string, FltGltfOptions>> all(7);
    all[0].first = "plain";
    all[1].first = "hidden";
    all[1].second.keepsHidden = true;
    all[2].first = "levels";
    all[2].second.keepsLevels = true;
    all[3].first = "bare";
    all[3].second.hasExtras = false;
    all[3].second.lifts = false;
    all[4].first = "quantized";
    all[4].second.quantizes = true;
    all[5].first = "compressed";
    all[5].second.compresses = true;
    all[6].first = "instanced";
    all[6].second.usesInstancing = true;
    return all;
}

void write(std::string const& database, fs::path const& to)
{
    FltLoader loader;
    FltVisual const visual = loader.loadVisual(database);
    for (auto const& [name, options] : everyOption())
        FltGltf::write(visual, to.string() + '-' + name + ".glb", options);
    FltGltf::write(visual, to.string() + ".gltf");
}

void writeAll(fs::path const& folder)
{
    ScratchFolder const scratch;
    for (int const revision : changingRevisions)
        for (FltTopic const& topic : everyTopicInBrief(revision))
            write(scratch.write("seed.flt", topic.bytes),
                  folder / (topic.name + '-' + std::to_string(revision)));
    for (PictureDatabase const& feature : pictureDatabases()) {
        ScratchFolder const own;
        feature.write(own);
        write(own / "model.flt", folder / feature.name);
    }
}

} // namespace

int main(int argc, char** argv)
{
    try {
        std::vector<std::string> const words(argv + 1, argv + argc);
        fs::path const folder = words.at(0);
        fs::remove_all(folder);
        fs::create_directories(folder);
        writeAll(folder);
        for (std::size_t i = 1; i < words.size(); ++i)
            write(words[i], folder / fs::path(words[i]).stem());
        return 0;
    } catch (std::exception const& problem) {
        std::cerr << problem.what() << '\n';
        return 1;
    }
}
