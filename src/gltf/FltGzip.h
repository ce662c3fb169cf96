#pragma once

#include <string>
#include <string_view>

/// Packs bytes.
namespace FltGzip
{

/// The bytes as a file of gzip, without a name and a time: the same bytes give the same file.
std::string packed(std::string_view bytes);

} // namespace FltGzip
