#include "dump/FltDump.h"

#include "dump/FltDumpLine.h"

#include <cstring>

namespace
{

template <class Value>
void labelled(std::ostream& os, std::string_view label, Value value)
{
    FltDumpLine line(os);
    line << label << value;
    line.end();
}

std::string_view upToZero(char const* text, void const* end)
{
    auto const room = static_cast<std::size_t>(static_cast<char const*>(end) - text);
    return {text, ::strnlen(text, room)};
}

std::int32_t printed(std::int32_t value)
{
    return value;
}
double printed(double value)
{
    return value;
}

template <class Value>
void listed(std::ostream& os, std::string_view label, Value const* values, int count,
            std::string_view separator, std::string_view closing)
{
    FltDumpLine line(os);
    line << label;
    for (int i = 0; i < count; ++i) {
        if (i > 0)
            line << separator;
        line << printed(values[i]);
    }
    line << closing;
    line.end();
}

template <class Value>
void rowed(std::ostream& os, Value const* values, int rowCount, int columnCount)
{
    for (int row = 0; row < rowCount; ++row) {
        FltDumpLine line(os);
        line << "|  ";
        for (int column = 0; column < columnCount; ++column)
            line << printed(values[row * columnCount + column]) << "  ";
        line << "  |";
        line.end();
    }
}

} // namespace

void FltDump::frame(std::ostream& os, std::string_view category, int opcode, unsigned int length)
{
    FltDumpLine first(os);
    first << "  (" << category << ")";
    first.end();
    FltDumpLine second(os);
    second << "-- Opcode: " << opcode << "  Length: " << length << " --";
    second.end();
}

void FltDump::line(std::ostream& os, std::string_view label)
{
    FltDumpLine line(os);
    line << label;
    line.end();
}

void FltDump::line(std::ostream& os, std::string_view label, std::int8_t value)
{
    labelled(os, label, static_cast<std::int32_t>(value));
}

void FltDump::line(std::ostream& os, std::string_view label, std::uint8_t value)
{
    labelled(os, label, static_cast<std::uint32_t>(value));
}

void FltDump::line(std::ostream& os, std::string_view label, std::int16_t value)
{
    labelled(os, label, static_cast<std::int32_t>(value));
}

void FltDump::line(std::ostream& os, std::string_view label, std::uint16_t value)
{
    labelled(os, label, static_cast<std::uint32_t>(value));
}

void FltDump::line(std::ostream& os, std::string_view label, std::int32_t value)
{
    labelled(os, label, value);
}
void FltDump::line(std::ostream& os, std::string_view label, std::uint32_t value)
{
    labelled(os, label, value);
}
void FltDump::line(std::ostream& os, std::string_view label, std::uint64_t value)
{
    labelled(os, label, value);
}
void FltDump::line(std::ostream& os, std::string_view label, float value)
{
    labelled(os, label, static_cast<double>(value));
}
void FltDump::line(std::ostream& os, std::string_view label, double value)
{
    labelled(os, label, value);
}
void FltDump::line(std::ostream& os, std::string_view label, std::string_view text)
{
    labelled(os, label, text);
}

void FltDump::line(std::ostream& os, std::string_view before, std::int32_t index, std::string_view behind)
{
    line(os, before, index, behind, std::string_view());
}

void FltDump::line(std::ostream& os, std::string_view before, std::int32_t index, std::string_view behind,
                   std::int32_t value)
{
    FltDumpLine line(os);
    line << before << index << behind << value;
    line.end();
}

void FltDump::line(std::ostream& os, std::string_view before, std::int32_t index, std::string_view behind,
                   std::string_view text)
{
    FltDumpLine line(os);
    line << before << index << behind << text;
    line.end();
}

void FltDump::character(std::ostream& os, std::string_view label, char value)
{
    labelled(os, label, value);
}

void FltDump::flag(std::ostream& os, std::string_view label, std::uint32_t word, int bit)
{
    labelled(os, label, (word >> bit & 1) != 0 ? '1' : '0');
}

void FltDump::bits(std::ostream& os, std::uint32_t word)
{
    FltDumpLine line(os);
    for (int bit = 31; bit >= 0; --bit)
        line << ((word >> bit & 1) != 0 ? '1' : '0');
    line.end();
}

void FltDump::pointer(std::ostream& os, std::string_view label, std::int32_t word)
{
    FltDumpLine line(os);
    line << label;
    line.pointer(word).end();
}

void FltDump::pointer(std::ostream& os, std::string_view label, void const* address)
{
    FltDumpLine line(os);
    line << label;
    line.pointer(address).end();
}

void FltDump::colorByte(std::ostream& os, std::string_view label, std::uint8_t value)
{
    labelled(os, label, static_cast<double>(static_cast<float>(value) / 255.0F));
}

void FltDump::text(std::ostream& os, std::string_view label, char const* text, void const* end)
{
    labelled(os, label, upToZero(text, end));
}

void FltDump::text(std::ostream& os, std::string_view label, char const* text)
{
    labelled(os, label, std::string_view(text != nullptr ? text : ""));
}

void FltDump::textWithoutEnd(std::ostream& os, std::string_view label, char const* text, void const* end)
{
    FltDumpLine line(os);
    line << label << upToZero(text, end);
    line.spill();
}

void FltDump::list(std::ostream& os, std::string_view label, std::int32_t const* values, int count,
                   std::string_view separator, std::string_view closing)
{
    listed(os, label, values, count, separator, closing);
}

void FltDump::list(std::ostream& os, std::string_view label, float const* values, int count,
                   std::string_view separator, std::string_view closing)
{
    listed(os, label, values, count, separator, closing);
}

void FltDump::list(std::ostream& os, std::string_view label, double const* values, int count,
                   std::string_view separator, std::string_view closing)
{
    listed(os, label, values, count, separator, closing);
}

void FltDump::rows(std::ostream& os, float const* values, int rowCount, int columnCount)
{
    rowed(os, values, rowCount, columnCount);
}

void FltDump::rows(std::ostream& os, double const* values, int rowCount, int columnCount)
{
    rowed(os, values, rowCount, columnCount);
}
