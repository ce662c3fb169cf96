#include "dump/FltDumpLine.h"

#include "dump/FltDumpBuffer.h"
#include "dump/FltNumberText.h"

#include <charconv>
#include <locale>

namespace
{

char* format(char* first, char* /*last*/, double value)
{
    return FltNumberText::write(first, value);
}

template <class Integer>
char* format(char* first, char* last, Integer value)
{
    return std::to_chars(first, last, value).ptr;
}

} // namespace

FltDumpBuffer* FltDumpBuffer::current = nullptr;

int const FltDumpLine::localeSlot = std::ios_base::xalloc();

/// Whether the stream would format numbers as std::to_chars does.
bool FltDumpLine::formatsByDefault(std::ostream& os)
{
    return os.flags() == (std::ios_base::skipws | std::ios_base::dec) && os.precision() == 6 &&
           os.width() == 0 && hasClassicLocale(os);
}

/// A look at a stream's locale costs as much as a line, so its outcome is kept with the stream until the
/// stream gets another locale.
bool FltDumpLine::hasClassicLocale(std::ostream& os)
{
    auto state = static_cast<LocaleState>(os.iword(localeSlot));
    if (state == unseen || state == changedLocale)
        state = lookAtLocale(os, state);
    return state == classicLocale;
}

FltDumpLine::LocaleState FltDumpLine::lookAtLocale(std::ostream& os, LocaleState before)
{
    if (before == unseen)
        os.register_callback(noteEvent, localeSlot);
    LocaleState const state = os.getloc() == std::locale::classic() ? classicLocale : otherLocale;
    os.iword(localeSlot) = state;
    return state;
}

/// A copy of a stream's format brings locale, state and this callback along, all three.
void FltDumpLine::noteEvent(std::ios_base::event event, std::ios_base& stream, int slot)
{
    if (event == std::ios_base::imbue_event)
        stream.iword(slot) = changedLocale;
}

/// Text that the stream writes itself, or that the buffer has no room for.
FltDumpLine& FltDumpLine::putAnyway(std::string_view text)
{
    if (!isDefaultState) {
        os << text;
        return *this;
    }
    spill();
    if (text.size() <= sizeof buffer)
        return *this << text;
    os.write(text.data(), static_cast<std::streamsize>(text.size()));
    return *this;
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
    used = static_cast<int>(format(buffer + used, buffer + sizeof buffer, value) - buffer);
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
    if (!isDefaultState) {
        os.put(os.widen('\n'));
        os.flush();
        return;
    }
    *this << '\n';
    FltDumpBuffer* const dump = FltDumpBuffer::current;
    if (dump != nullptr && os.rdbuf() == dump && os.good() && os.tie() == nullptr &&
        dump->take(buffer, used)) {
        used = 0;
        return;
    }
    spill();
    os.flush();
}

void FltDumpLine::spill()
{
    if (used > 0 && os.good() && os.rdbuf()->sputn(buffer, used) != used)
        os.setstate(std::ios_base::badbit);
    used = 0;
}
