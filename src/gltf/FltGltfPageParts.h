#pragma once

#include <string_view>

/// The files of web/page that a page is put together from, as they are in the sources. What ends in Sum is
/// the SHA-256 of one, in hexadecimal digits.
namespace FltGltfPageParts
{

extern std::string_view const page;      ///< The page, with a word between two @ in each gap.
extern std::string_view const style;     ///< How it looks.
extern std::string_view const styleSum;  ///< See above.
extern std::string_view const script;    ///< What it does: the viewer as it is built.
extern std::string_view const scriptSum; ///< See above.

} // namespace FltGltfPageParts
