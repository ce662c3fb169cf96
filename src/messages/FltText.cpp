#include "messages/FltText.h"

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

/// Whether a byte may be the second of a character. Some that follow any other first byte would make an overlong form,
/// half of a surrogate pair, or what lies beyond the last character.
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

/// Of one byte, or of the two that the controls 0x80 to 0x9f have in UTF-8.
bool isControl(std::string_view character)
{
    unsigned char const first = byteAt(character, 0);
    return first < 0x20 || first == 0x7f || (first == 0xc2 && byteAt(character, 1) < 0xa0);
}

void appendHex(std::string& text, std::string_view bytes)
{
    constexpr char digits[] = "0123456789abcdef";
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        text += "\\x";
        text += digits[byteAt(bytes, i) >> 4];
        text += digits[byteAt(bytes, i) & 15];
    }
}

} // namespace

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
        if (size == 0 || (isControl(character) && !staysLine))
            appendHex(result, character);
        else
            result += character;
        at += character.size();
    }
    return result;
}
