#include "support/FileEnding.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

std::string FileEnding::of(std::string const& path)
{
    std::string ending = std::filesystem::path(path).extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return ending;
}
