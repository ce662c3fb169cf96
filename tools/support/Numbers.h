#pragma once

#include <cstdint>
#include <string>

/// Numbers as people read them.
namespace Numbers
{

/// "12,345,678"
std::string grouped(std::uint64_t number);

/// "3.4 MB"
std::string bytes(std::uint64_t number);

/// At most six significant digits: "12.5".
std::string plain(double number);

/// "1 face", "12 faces"
std::string counted(std::uint64_t number, std::string const& one, std::string const& several);

} // namespace Numbers
