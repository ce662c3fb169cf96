#include "parser/FltFileInput.h"

#include "dump/FltDumpOutput.h"
#include "messages/FltWarningMessageConsole.h"
#include "parser/FltFraming.h"
#include "toolkit/LargePages.h"
#include "toolkit/RegularFile.h"

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <iostream>
#include <string>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>
#include <utility>

namespace
{

std::unique_ptr<char[]> copyOf(std::string_view text)
{
    std::unique_ptr<char[]> copy(new char[text.size() + 1]);
    *std::copy(text.begin(), text.end(), copy.get()) = '\0';
    return copy;
}

std::unique_ptr<char[]> nameWithSlashes(char const* name)
{
    std::unique_ptr<char[]> copy = copyOf(name != nullptr ? name : "");
    std::replace(copy.get(), copy.get() + std::strlen(copy.get()), '\\', '/');
    return copy;
}

/// With its closing slash; null if the name has none.
std::unique_ptr<char[]> directoryOf(char const* name)
{
    char const* const slash = std::strrchr(name, '/');
    return slash != nullptr ? copyOf({name, static_cast<std::size_t>(slash + 1 - name)}) : nullptr;
}

/// Reads until the room is full, the file ends or reading fails. A read that a signal interrupts is tried
/// again.
/// @param reason set to the error number if reading fails, and to 0 if the file ends early
/// @return bytes that were read
std::size_t readWhole(int file, char* to, std::size_t room, int& reason)
{
    std::size_t there = 0;
    while (there < room) {
        ssize_t const count = ::pread(file, to + there, room - there, static_cast<off_t>(there));
        if (count > 0) {
            there += static_cast<std::size_t>(count);
        } else if (count == 0 || errno != EINTR) {
            reason = count < 0 ? errno : 0;
            break;
        }
    }
    return there;
}

void reportMissing(char const* fileName, std::size_t there, std::size_t size, int reason)
{
    std::string const why = reason != 0 ? std::strerror(reason) : "another program made it shorter meanwhile";
    FltWarningMessageConsole::notifyGuard("A file can't be read to its end",
                                          " (" + why + "): " + FltFraming::restFrom(there, size) +
                                              ", is left out (" + fileName + ")");
}

} // namespace

FltFileInput::FltFileInput(char const* name)
    : fileName(nameWithSlashes(name)), dirName(directoryOf(fileName.get()))
{
    take(RegularFile::open(fileName.get()));
}

FltFileInput::FltFileInput(char const* name, OpenFile file)
    : fileName(nameWithSlashes(name)), dirName(directoryOf(fileName.get()))
{
    take(std::move(file));
}

void FltFileInput::take(OpenFile opened)
{
    file.reset(opened.intoStream("rb"));
    flowCreated = file != nullptr;
    reportOpening(fileName.get(), flowCreated);
    if (!flowCreated)
        return;
    calculFileSize();
    fileToBuffer();
}

void FltFileInput::reportOpening(char const* fileName, bool isOpen)
{
    if (isOpen) {
        FltDumpOutput::line("");
        FltDumpOutput::line(std::string("Success in opening file: ") + fileName);
    } else {
        FltWarningMessageConsole::notifyUnopened(fileName);
    }
}

void FltFileInput::calculFileSize()
{
    if (!file)
        return;
    std::fseek(file.get(), 0, SEEK_END);
    size = std::max(std::ftell(file.get()), 0L);
    std::rewind(file.get());
}

void FltFileInput::fileToBuffer()
{
    if (!file)
        return;
    auto const room = static_cast<std::size_t>(size);
    buffer.reset(new char[room]);
    LargePages::useIn(buffer.get(), buffer.get() + room);
    int reason = 0;
    std::size_t const there = readWhole(::fileno(file.get()), buffer.get(), room, reason);
    size = static_cast<long>(there);
    file.reset();
    if (there < room)
        reportMissing(fileName.get(), there, room, reason);
}

void FltFileInput::dropBytesWhenParsed()
{
    dropBytesFrom(0);
}

void FltFileInput::dropBytesFrom(std::size_t first)
{
    dropsBytes = true;
    dropped = LargePages::firstFrom(buffer.get() + first);
}

void FltFileInput::dropMore()
{
    char* const begin = dropped;
    dropped += droppedAtOnce;
    ::madvise(begin, droppedAtOnce, MADV_DONTNEED); // if it fails, nothing is lost but memory
}

void FltFileInput::dropBytes()
{
    if (dropsBytes)
        buffer.reset();
}

void FltFileInput::showBuffer()
{
    for (long i = 0; buffer != nullptr && i < size; ++i)
        std::cout << static_cast<unsigned>(static_cast<unsigned char>(buffer[static_cast<std::size_t>(i)]))
                  << ' ';
}
