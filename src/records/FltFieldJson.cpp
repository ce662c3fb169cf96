#include "records/FltFieldJson.h"

#include <cstring>

namespace
{

bool beginsWith(std::string_view text, std::string_view beginning)
{
    return text.substr(0, beginning.size()) == beginning;
}

bool holdsFlags(std::string_view name)
{
    return name == "flags" || name == "Flags";
}

} // namespace

void FltFieldJson::begin(char const* name)
{
    json.key(name);
    if (holdsFlags(name))
        flags = {json.size(), 0, false};
}

void FltFieldJson::end(char const* name)
{
    if (holdsFlags(name))
        flags.end = json.size();
}

/// Flags may be named when further fields are there already: their value stays where it is, and becomes an
/// object.
void FltFieldJson::flag(char const* name, std::uint32_t word, int bit, char const* /*label*/)
{
    if (!flags.areNamed) {
        constexpr std::string_view head = "{\"word\":";
        json.insert(flags.end, "}");
        json.insert(flags.begin, head);
        flags = {flags.begin, flags.end + head.size() + 1, true};
    }
    std::string named = ",\"";
    named += name;
    named += (word >> bit & 1) != 0 ? "\":true" : "\":false";
    json.insert(flags.end - 1, named);
    flags.end += named.size();
}

void FltFieldJson::open(char const* name)
{
    json.key(name);
    json.open('{');
    levels += '}';
}

/// Blocks of one name that follow one another are elements of one array.
void FltFieldJson::openElement(char const* name)
{
    if (elementEnd == json.size() && lastElement == name) {
        json.reopen();
    } else {
        json.key(name);
        json.open('[');
    }
    json.open('{');
    lastElement = name;
    levels += ']';
}

void FltFieldJson::close()
{
    json.close('}');
    if (levels.back() == ']') {
        json.close(']');
        elementEnd = json.size();
    }
    levels.pop_back();
}

void FltFieldJson::characters(char const* name, char const* characters, int size)
{
    if (beginsWith(name, "reserved") || beginsWith(name, "spare"))
        bytes(name, characters, static_cast<unsigned int>(size));
    else
        text(name, characters, size);
}

void FltFieldJson::rest(char const* name, std::unique_ptr<char[]> const& characters, unsigned int length)
{
    if (characters != nullptr)
        text(name, characters.get(), length > 4 ? static_cast<int>(length - 4) : 0);
}

void FltFieldJson::text(char const* name, char const* characters, int count)
{
    if (characters != nullptr)
        text(name, std::string_view(characters, ::strnlen(characters, static_cast<std::size_t>(count))));
}

void FltFieldJson::text(char const* name, std::string_view characters)
{
    json.key(name);
    json.value(characters);
}

void FltFieldJson::bytes(char const* name, char const* characters, unsigned int count)
{
    if (characters == nullptr)
        return;
    json.key(name);
    json.hexadecimal({characters, count});
}
