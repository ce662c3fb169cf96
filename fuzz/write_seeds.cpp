// Writes the databases that the fuzzer starts from into a folder.

#include "writer/EveryRecord.h"

#include <exception>
#include <filesystem>
#include <iostream>
#include <string>

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::cerr << "Usage: write_seeds FOLDER\n";
        return 2;
    }
    try {
        std::filesystem::path const folder = argv[1];
        std::filesystem::create_directories(folder);
        for (int const revision : {11, 13, 1420, 1510, 1540, 1570, 1580, 1600})
            everyRecordInBrief(revision).save(folder / (std::to_string(revision) + ".flt"));
        everyRecord(1570).save(folder / "1570_whole.flt");
    } catch (std::exception const& problem) {
        std::cerr << "write_seeds: " << problem.what() << '\n';
        return 1;
    }
    return 0;
}
