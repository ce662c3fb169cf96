#pragma once

#include <string>
#include <string_view>

/// Writes bytes as letters.
namespace FltBase64
{

/// Appends bytes in base64, with "=" at the end where it takes any.
void append(std::string& text, std::string_view bytes);

} // namespace FltBase64
