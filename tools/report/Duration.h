#pragma once

#include <string>

/// Times as people read them.
namespace Duration
{

/// "12 ms", "3.4 s", "5 min 6 s", "7 h 8 min"
std::string text(double seconds);

} // namespace Duration
