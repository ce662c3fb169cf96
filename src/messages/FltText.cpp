#include "messages/FltText.h"

#include <algorithm>

namespace
{

unsigned char byteAt(std::string_view text, std::size_t at)
{
    return static_cast<unsigned char>(text[at]);
}

/// Bytes that follow the first one of a character in UTF-8; -1 for a byte that begins none.
int followersOf(unsigned char first)
{
    if (first < 0x80)
        return 0;
    if (first >= 0xc2 && first < 0xe0)
        return 1;
    if (first >= 0xe0 && first < 0xf0)
        return 2;
    return first >= 0xf0 && first < 0xf5 ? 3 : -1;
}

/// Whether a byte may be the second of a character. After some first bytes, a part of the following bytes
/// would make an overlong form, half of a surrogate pair, or a number above the last character.
bool isSecond(unsigned char first, unsigned char second)
{
    unsigned const lowest = first == 0xe0 ? 0xa0 : first == 0xf0 ? 0x90 : 0x80;
    unsigned const highest = first == 0xed ? 0x9f : first == 0xf4 ? 0x8f : 0xbf;
    return second >= lowest && second <= highest;
}

/// Bytes of the character that begins at @p at; 0 if those aren't UTF-8.
std::size_t characterSize(std::string_view text, std::size_t at)
{
    int const followers = followersOf(byteAt(text, at));
    if (followers < 0 || text.size() - at <= static_cast<std::size_t>(followers))
        return 0;
    if (followers > 0 && !isSecond(byteAt(text, at), byteAt(text, at + 1)))
        return 0;
    for (int i = 2; i <= followers; ++i)
        if ((byteAt(text, at + static_cast<std::size_t>(i)) & 0xc0) != 0x80)
            return 0;
    return static_cast<std::size_t>(followers) + 1;
}

bool isUtf8(std::string_view text)
{
    std::size_t size = 1;
    for (std::size_t at = 0; at < text.size() && size != 0; at += size)
        size = characterSize(text, at);
    return size != 0;
}

/// The number of a character in UTF-8.
unsigned codeOf(std::string_view character)
{
    if (character.size() == 1)
        return byteAt(character, 0);
    unsigned code = byteAt(character, 0) & (0x7fU >> character.size());
    for (std::size_t i = 1; i < character.size(); ++i)
        code = code << 6 | (byteAt(character, i) & 0x3fU);
    return code;
}

/// Whether a character changes how others are shown: the controls of terminals; ends of lines and paragraphs;
/// what turns the direction of the text around it, so that a name reads as another one; and the mark of the
/// order of bytes, which isn't seen at all. Marks that say the direction of a single letter, and joiners,
/// stand in honest names.
bool isControl(unsigned code)
{
    return code < 0x20 || (code >= 0x7f && code < 0xa0) || (code >= 0x2028 && code <= 0x202e) ||
           (code >= 0x2066 && code <= 0x2069) || code == 0xfeff;
}

/// The lowest digits of a number, in hexadecimal.
void appendHex(std::string& text, unsigned number, int digits)
{
    while (--digits >= 0)
        text += "0123456789abcdef"[number >> 4 * digits & 15];
}

} // namespace

std::string FltText::withoutEnd(std::string text)
{
    text.erase(text.find_last_not_of(" \t\r\n") + 1);
    return text;
}

std::string FltText::utf8(std::string_view text)
{
    if (isUtf8(text))
        return std::string(text);
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        unsigned char const byte = byteAt(text, i);
        if (byte < 0x80) {
            result += text[i];
        } else {
            result += static_cast<char>(0xc0 | byte >> 6);
            result += static_cast<char>(0x80 | (byte & 0x3f));
        }
    }
    return result;
}

std::string FltText::printable(std::string_view text, bool keepsLines)
{
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t const size = characterSize(text, at);
        std::string_view const character = text.substr(at, size == 0 ? 1 : size);
        bool const staysLine = keepsLines && character == "\n";
        if (size == 0 || (isControl(codeOf(character)) && !staysLine))
            for (char const byte : character) {
                result += "\\x";
                appendHex(result, static_cast<unsigned char>(byte), 2);
            }
        else
            result += character;
        at += character.size();
    }
    return result;
}

std::string FltText::printableJson(std::string_view json)
{
    std::string result;
    result.reserve(json.size());
    for (std::size_t at = 0; at < json.size();) {
        std::size_t const size = std::max<std::size_t>(characterSize(json, at), 1);
        std::string_view const character = json.substr(at, size);
        if (unsigned const code = codeOf(character); code > ' ' && isControl(code)) {
            result += "\\u";
            appendHex(result, code, 4);
        } else {
            result += character;
        }
        at += size;
    }
    return result;
}
