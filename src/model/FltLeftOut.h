#pragma once

#include <cstdint>
#include <map>
#include <string>

/// What of a database isn't shown, by kind, and how often.
using FltLeftOut = std::map<std::string, std::int64_t>;
