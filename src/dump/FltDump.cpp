#include "dump/FltDump.h"

#include "dump/FltDumpBuffer.h"

#include <atomic>
#include <charconv>
#include <locale>
#include <ostream>

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

bool hasClassicLocale(std::ostream& os)
{
    if (classicStream.load(std::memory_order_relaxed) == &os)
        return true;
    if (os.getloc() != std::locale::classic())
        return false;
    long& isWatched = os.iword(watchedSlot());
    if (isWatched == 0)
        os.register_callback(forgetStream, 0);
    isWatched = 1; // a copy of a stream's format brings it along, together with the callback
    classicStream.store(&os, std::memory_order_relaxed);
    return true;
}

} // namespace

FltDumpBuffer* FltDumpBuffer::current = nullptr;

/// Whether the stream would format numbers as FltNumberText does.
bool FltDump::formatsByDefault(std::ostream& os)
{
    return os.flags() == (std::ios_base::skipws | std::ios_base::dec) && os.precision() == 6 &&
           os.width() == 0 && hasClassicLocale(os);
}

FltDump::FltDump(std::ostream& os)
    : os(os), isDefaultState(formatsByDefault(os)), at(buffer),
      end(isDefaultState ? buffer + sizeof buffer : buffer)
{
    FltDumpBuffer* const dump = FltDumpBuffer::current;
    if (isDefaultState && dump != nullptr && os.rdbuf() == dump && os.good() && os.tie() == nullptr) {
        log = dump;
        at = dump->roomBegin();
        end = dump->roomEnd();
    }
}

char* FltDump::makeRoomFor(std::size_t size)
{
    if (!isDefaultState)
        return nullptr;
    handOver();
    if (log != nullptr) {
        log->write();
        at = log->roomBegin();
        end = log->roomEnd();
    }
    return static_cast<std::size_t>(end - at) >= size ? at : nullptr;
}

/// Gives the stream what was gathered.
void FltDump::handOver()
{
    if (log != nullptr)
        return log->taken(at);
    std::streamsize const size = at - buffer;
    at = buffer;
    if (size > 0 && os.good() && os.rdbuf()->sputn(buffer, size) != size)
        os.setstate(std::ios_base::badbit);
}

/// What the stream formats itself.
template <class Value>
FltDump& FltDump::putAnyway(Value value)
{
    os << value;
    return *this;
}
template FltDump& FltDump::putAnyway(std::int32_t);
template FltDump& FltDump::putAnyway(std::uint32_t);
template FltDump& FltDump::putAnyway(std::uint64_t);
template FltDump& FltDump::putAnyway(double);
template FltDump& FltDump::putAnyway(void const*);

/// Text for a stream that formats, or that no room can hold.
FltDump& FltDump::putTextAnyway(std::string_view text)
{
    if (!isDefaultState)
        os << text;
    else
        os.write(text.data(), static_cast<std::streamsize>(text.size()));
    if (log != nullptr) {
        at = log->roomBegin();
        end = log->roomEnd();
    }
    return *this;
}

void FltDump::flushLine()
{
    handOver();
    os.flush();
}

void FltDump::endLine()
{
    if (char* const to = roomFor(1))
        return endLineAt(to);
    os.put(os.widen('\n'));
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
    char* to = roomFor(longestNumber);
    if (to == nullptr)
        return putAnyway(address);
    auto const value = reinterpret_cast<std::uintptr_t>(address);
    if (value != 0)
        to = put(to, "0x");
    at = std::to_chars(to, to + longestNumber, value, 16).ptr;
    return *this;
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
    *this << label << text;
    endLine();
}
