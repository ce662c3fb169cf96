#include "dump/FltDump.h"

#include <algorithm>
#include <atomic>
#include <charconv>
#include <cstdint>
#include <locale>
#include <ostream>
#include <utility>

namespace
{

/// The stream that was last seen to have the classic locale: a look at the locale costs as much as a line.
std::atomic<std::ios_base*> classicStream{nullptr};

int watchedSlot()
{
    static int const slot = std::ios_base::xalloc();
    return slot;
}

/// Comes when a stream gets another locale or another stream's format, and when it ends.
void forgetStream(std::ios_base::event /*event*/, std::ios_base& stream, int /*slot*/)
{
    std::ios_base* seen = &stream;
    classicStream.compare_exchange_strong(seen, nullptr, std::memory_order_relaxed);
}

[[gnu::noinline]] bool seesClassicLocale(std::ostream& os)
{
    if (os.getloc() != std::locale::classic())
        return false;
    long& isWatched = os.iword(watchedSlot());
    if (isWatched == 0)
        os.register_callback(forgetStream, 0);
    isWatched = 1; // a copy of a stream's format brings it along, together with the callback
    classicStream.store(&os, std::memory_order_relaxed);
    return true;
}

bool hasClassicLocale(std::ostream& os)
{
    return classicStream.load(std::memory_order_relaxed) == &os || seesClassicLocale(os);
}

/// What a value takes at the most.
/// @{
std::size_t mostOf(std::string_view text)
{
    return text.size();
}
template <class Number>
std::size_t mostOf(Number /*number*/)
{
    return FltNumberText::longest;
}
/// @}

/// @return its end
/// @{
char* putValue(char* to, std::string_view text)
{
    return std::copy(text.begin(), text.end(), to);
}
template <class Number>
char* putValue(char* to, Number number)
{
    return FltNumberText::write(to, number);
}
template <class Value>
[[gnu::noinline]] char* putLine(char* to, std::string_view label, std::string_view separator, Value value)
{
    to = putValue(putValue(putValue(to, label), separator), value);
    *to = '\n';
    return to + 1;
}
/// @}

} // namespace

FltDumpBuffer* FltDumpBuffer::current = nullptr;

/// Whether the stream would format numbers as FltNumberText does.
bool FltDump::formatsByDefault(std::ostream& os)
{
    return os.flags() == (std::ios_base::skipws | std::ios_base::dec) && os.precision() == 6 &&
           os.width() == 0 && hasClassicLocale(os);
}

FltDump::FltDump(std::ostream& os) : os(os), isDefaultState(formatsByDefault(os))
{
    FltDumpBuffer* const dump = FltDumpBuffer::current;
    if (isDefaultState && dump != nullptr && os.rdbuf() == dump && os.good() && os.tie() == nullptr) {
        log = dump;
        takeBlock();
    }
}

void FltDump::takeBlock()
{
    at = log->roomBegin();
    end = log->roomEnd();
    lastLine = static_cast<std::size_t>(end - at) > longestLine ? end - longestLine : at;
}

/// Gives the stream what was gathered.
void FltDump::handOver()
{
    auto const size = static_cast<std::streamsize>(std::exchange(gathered, 0));
    if (size > 0 && os.good() && os.rdbuf()->sputn(buffer, size) != size)
        os.setstate(std::ios_base::badbit);
}

template <class Value>
void FltDump::lineInPieces(std::string_view label, std::string_view separator, Value value)
{
    std::size_t const most = label.size() + separator.size() + mostOf(value) + 1;
    if (log != nullptr || !isDefaultState || most > sizeof buffer - gathered)
        return separator.empty() ? lineOf(label, value) : lineOf(label, separator, value);
    gathered = static_cast<std::size_t>(putLine(buffer + gathered, label, separator, value) - buffer);
    handOver();
    os.flush();
}
template void FltDump::lineInPieces(std::string_view, std::string_view, std::int32_t);
template void FltDump::lineInPieces(std::string_view, std::string_view, std::uint32_t);
template void FltDump::lineInPieces(std::string_view, std::string_view, std::uint64_t);
template void FltDump::lineInPieces(std::string_view, std::string_view, double);
template void FltDump::lineInPieces(std::string_view, std::string_view, std::string_view);

template <class Value>
FltDump& FltDump::putAnyway(Value value)
{
    if (!isDefaultState) {
        os << value;
        return *this;
    }
    char text[longestNumber];
    return putTextAnyway({text, static_cast<std::size_t>(put(text, value) - text)});
}
template FltDump& FltDump::putAnyway(std::int32_t);
template FltDump& FltDump::putAnyway(std::uint32_t);
template FltDump& FltDump::putAnyway(std::uint64_t);
template FltDump& FltDump::putAnyway(double);

FltDump& FltDump::putTextAnyway(std::string_view text)
{
    if (log != nullptr) {
        log->taken(at);
        os.write(text.data(), static_cast<std::streamsize>(text.size()));
        takeBlock();
    } else if (isDefaultState) {
        gather(text);
    } else {
        os << text;
    }
    return *this;
}

[[gnu::noinline]] void FltDump::gather(std::string_view text)
{
    if (text.size() > sizeof buffer - gathered)
        handOver();
    if (text.size() > sizeof buffer) {
        os.write(text.data(), static_cast<std::streamsize>(text.size()));
        return;
    }
    std::memcpy(buffer + gathered, text.data(), text.size());
    gathered += text.size();
}

void FltDump::endLineAnyway()
{
    if (isDefaultState)
        putTextAnyway("\n");
    else
        os.put(os.widen('\n'));
    if (log != nullptr)
        return;
    handOver();
    os.flush();
}

void FltDump::bits(std::uint32_t word)
{
    char digits[32];
    for (char& digit : digits) {
        digit = (word & 0x80000000U) != 0 ? '1' : '0';
        word <<= 1;
    }
    for (char const digit : digits)
        *this << digit;
    endLine();
}

FltDump& FltDump::pointer(void const* address)
{
    if (!isDefaultState) {
        os << address;
        return *this;
    }
    char text[longestNumber];
    auto const value = reinterpret_cast<std::uintptr_t>(address);
    char* const digits = value != 0 ? put(text, "0x") : text;
    char const* const after = std::to_chars(digits, text + longestNumber, value, 16).ptr;
    return *this << std::string_view(text, static_cast<std::size_t>(after - text));
}

// A word that prints as a pointer is no address of anything.
// NOLINTBEGIN(performance-no-int-to-ptr)
FltDump& FltDump::pointer(std::int32_t word)
{
    return pointer(reinterpret_cast<void const*>(static_cast<std::intptr_t>(word)));
}

FltDump& FltDump::pointer(std::uint32_t word)
{
    return pointer(reinterpret_cast<void const*>(static_cast<std::uintptr_t>(word)));
}
// NOLINTEND(performance-no-int-to-ptr)

std::string_view FltDump::upToZero(char const* text, void const* end)
{
    auto const room = static_cast<std::size_t>(static_cast<char const*>(end) - text);
    return {text, ::strnlen(text, room)};
}

void FltDump::text(std::string_view label, char const* text, void const* end)
{
    FltDump::text(label, upToZero(text, end));
}

void FltDump::text(std::string_view label, char const* text)
{
    FltDump::text(label, std::string_view(text != nullptr ? text : ""));
}

void FltDump::text(std::string_view label, std::string_view text)
{
    std::size_t const most = label.size() + text.size() + 1;
    if (log == nullptr || most > static_cast<std::size_t>(end - at))
        return lineInPieces(label, "", text);
    endLineAt(put(put(at, label), text));
}
