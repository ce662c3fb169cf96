#include "convert/FileIdentity.h"

#include <filesystem>
#include <system_error>

std::string FileIdentity::of(std::string const& path)
{
    std::error_code problem;
    std::filesystem::path const result = std::filesystem::weakly_canonical(path, problem);
    return problem ? path : result.string();
}
