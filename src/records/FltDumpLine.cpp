#include "records/FltDumpLine.h"

#include <charconv>
#include <locale>

namespace
{

/// Whether the stream would format numbers as std::to_chars does.
bool formatsByDefault(std::ostream& os)
{
    return os.flags() == (std::ios_base::skipws | std::ios_base::dec) && os.precision() == 6 &&
           os.width() == 0 && os.getloc() == std::locale::classic();
}

std::to_chars_result format(char* first, char* last, double value)
{
    return std::to_chars(first, last, value, std::chars_format::general, 6);
}

template <class Integer>
std::to_chars_result format(char* first, char* last, Integer value)
{
    return std::to_chars(first, last, value);
}

} // namespace

FltDumpLine::FltDumpLine(std::ostream& os) : os(os), isDefaultState(formatsByDefault(os)) {}

FltDumpLine& FltDumpLine::operator<<(std::string_view text)
{
    if (!isDefaultState) {
        os << text;
        return *this;
    }
    if (text.size() > sizeof buffer - used) {
        spill();
        if (text.size() > sizeof buffer) {
            os.write(text.data(), static_cast<std::streamsize>(text.size()));
            return *this;
        }
    }
    text.copy(buffer + used, text.size());
    used += static_cast<int>(text.size());
    return *this;
}

FltDumpLine& FltDumpLine::operator<<(char character)
{
    return *this << std::string_view(&character, 1);
}

template <class Number>
FltDumpLine& FltDumpLine::number(Number value)
{
    if (!isDefaultState) {
        os << value;
        return *this;
    }
    if (static_cast<int>(sizeof buffer) - used < longestNumber)
        spill();
    used = static_cast<int>(format(buffer + used, buffer + sizeof buffer, value).ptr - buffer);
    return *this;
}

FltDumpLine& FltDumpLine::operator<<(std::int32_t value)
{
    return number(value);
}
FltDumpLine& FltDumpLine::operator<<(std::uint32_t value)
{
    return number(value);
}
FltDumpLine& FltDumpLine::operator<<(std::uint64_t value)
{
    return number(value);
}
FltDumpLine& FltDumpLine::operator<<(double value)
{
    return number(value);
}

FltDumpLine& FltDumpLine::pointer(void const* address)
{
    if (!isDefaultState) {
        os << address;
        return *this;
    }
    auto const value = reinterpret_cast<std::uintptr_t>(address);
    if (value == 0)
        return *this << '0';
    *this << "0x";
    if (static_cast<int>(sizeof buffer) - used < longestNumber)
        spill();
    used = static_cast<int>(std::to_chars(buffer + used, buffer + sizeof buffer, value, 16).ptr - buffer);
    return *this;
}

// A word that prints as a pointer is no address of anything.
// NOLINTBEGIN(performance-no-int-to-ptr)
FltDumpLine& FltDumpLine::pointer(std::int32_t word)
{
    return pointer(reinterpret_cast<void const*>(static_cast<std::intptr_t>(word)));
}

FltDumpLine& FltDumpLine::pointer(std::uint32_t word)
{
    return pointer(reinterpret_cast<void const*>(static_cast<std::uintptr_t>(word)));
}
// NOLINTEND(performance-no-int-to-ptr)

void FltDumpLine::end()
{
    if (isDefaultState)
        *this << '\n';
    else
        os.put(os.widen('\n'));
    spill();
    os.flush();
}

void FltDumpLine::spill()
{
    if (used > 0 && os.good() && os.rdbuf()->sputn(buffer, used) != used)
        os.setstate(std::ios_base::badbit);
    used = 0;
}
