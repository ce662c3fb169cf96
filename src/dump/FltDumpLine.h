#pragma once

#include <cstdint>
#include <ostream>
#include <string_view>

/// One line of a dump while it is put together: the workshop behind FltDump, for lines of a shape of their
/// own.
///
/// The pieces gather in a buffer on the frame and go to the stream in one piece with end(). A line that
/// outgrows the buffer goes in several.
class FltDumpLine
{
public:
    explicit FltDumpLine(std::ostream& os) : os(os), isDefaultState(formatsByDefault(os)) {}

    FltDumpLine(FltDumpLine const&) = delete;
    FltDumpLine& operator=(FltDumpLine const&) = delete;

    FltDumpLine& operator<<(std::string_view text)
    {
        if (!isDefaultState || text.size() > sizeof buffer - static_cast<std::size_t>(used))
            return putAnyway(text);
        text.copy(buffer + used, text.size());
        used += static_cast<int>(text.size());
        return *this;
    }
    FltDumpLine& operator<<(char character) { return *this << std::string_view(&character, 1); }
    FltDumpLine& operator<<(std::int32_t value);
    FltDumpLine& operator<<(std::uint32_t value);
    FltDumpLine& operator<<(std::uint64_t value);
    FltDumpLine& operator<<(double value);
    FltDumpLine& pointer(void const* address);
    FltDumpLine& pointer(std::int32_t word);  ///< Sign-extended to an address.
    FltDumpLine& pointer(std::uint32_t word); ///< Zero-extended.

    /// Hands the line over with an end of line and a flush.
    void end();

    /// Hands over what stands in the buffer, with neither.
    void spill();

private:
    /// The state of a stream's locale as it is kept with the stream.
    enum LocaleState : long { unseen, classicLocale, otherLocale, changedLocale };

    static bool formatsByDefault(std::ostream& os);
    static bool hasClassicLocale(std::ostream& os);
    static LocaleState lookAtLocale(std::ostream& os, LocaleState before);
    static void noteEvent(std::ios_base::event event, std::ios_base& stream, int slot);
    static int const localeSlot;

    FltDumpLine& putAnyway(std::string_view text);

    template <class Number>
    FltDumpLine& number(Number value);

    /// The longest formatted number, with room to spare.
    static constexpr int longestNumber = 40;

    std::ostream& os;
    bool const isDefaultState;
    int used = 0;
    char buffer[512];
};
