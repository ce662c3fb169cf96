#pragma once

#include "check/CheckedFile.h"

#include <nlohmann/json_fwd.hpp>
#include <vector>

/// Findings for programs.
namespace CheckJson
{

/// In a form of our own, under names that don't change.
nlohmann::ordered_json of(std::vector<CheckedFile> const& files);

/// In SARIF 2.1.0, which services for continuous integration read.
nlohmann::ordered_json sarifOf(std::vector<CheckedFile> const& files);

} // namespace CheckJson
