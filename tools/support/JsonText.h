#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

/// Prints JSON.
namespace JsonText
{

/// In lines, safe on a terminal. What isn't UTF-8 is replaced.
std::string of(nlohmann::ordered_json const& json);

} // namespace JsonText
