// Writes the databases that the fuzzers start from into a folder: databases, and pictures by their formats.

#include "support/MadePictures.h"
#include "writer/EveryRecord.h"

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

namespace
{

void writePictures(std::filesystem::path const& folder, std::vector<MadePicture> const& pictures)
{
    std::filesystem::create_directories(folder);
    for (MadePicture const& picture : pictures)
        std::ofstream(folder / picture.name, std::ios::binary) << picture.bytes;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "Usage: write_seeds FOLDER\n";
        return 2;
    }
    try {
        std::filesystem::path const folder = argv[1];
        std::filesystem::path const databases = folder / "databases";
        std::filesystem::create_directories(databases);
        for (int const revision : {11, 13, 1420, 1510, 1540, 1570, 1580, 1600})
            everyRecordInBrief(revision).save(databases / (std::to_string(revision) + ".flt"));
        everyRecord(1570).save(databases / "1570_whole.flt");
        constexpr std::pair<char const*, std::vector<MadePicture> (*)()> formats[] = {
            {"png", MadePictures::png}, {"jpeg", MadePictures::jpeg}, {"tiff", MadePictures::tiff},
            {"gif", MadePictures::gif}, {"sgi", MadePictures::sgi},   {"tga", MadePictures::tga}};
        for (auto const& [format, make] : formats)
            writePictures(folder / format, make());
    } catch (std::exception const& problem) {
        std::cerr << "write_seeds: " << problem.what() << '\n';
        return 1;
    }
    return 0;
}
