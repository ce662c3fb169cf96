#include "parser/FltFileInput.h"

#include <algorithm>
#include <cstring>
#include <fcntl.h>
#include <iostream>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

std::unique_ptr<char[]> copyOf(std::string_view text)
{
    std::unique_ptr<char[]> copy(new char[text.size() + 1]);
    *std::copy(text.begin(), text.end(), copy.get()) = '\0';
    return copy;
}

/// Opens a regular file for reading; null for anything else. A pipe without a writer must not make us wait.
FILE* openRegularFile(char const* fileName)
{
    int const descriptor = ::open(fileName, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return nullptr;
    struct stat status;
    FILE* const file =
        ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) ? ::fdopen(descriptor, "rb") : nullptr;
    if (file == nullptr)
        ::close(descriptor);
    return file;
}

} // namespace

FltFileInput::FltFileInput(char const* name) : fileName(copyOf(name != nullptr ? name : ""))
{
    char* const begin = fileName.get();
    std::replace(begin, begin + std::strlen(begin), '\\', '/');
    if (char const* const slash = std::strrchr(begin, '/'))
        dirName = copyOf({begin, static_cast<std::size_t>(slash + 1 - begin)});
    file.reset(openRegularFile(begin));
    flowCreated = file != nullptr;
    tellOpening(begin, flowCreated);
    if (!flowCreated)
        return;
    calculFileSize();
    fileToBuffer();
}

void FltFileInput::tellOpening(char const* fileName, bool isOpen)
{
    if (isOpen)
        std::cout << std::endl << "Success in opening file: " << fileName << std::endl;
    else
        std::cerr << "Error in opening file: " << fileName << std::endl;
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
    size = static_cast<long>(std::fread(buffer.get(), 1, room, file.get()));
    file.reset();
}

void FltFileInput::showBuffer()
{
    for (long i = 0; i < size; ++i)
        std::cout << static_cast<unsigned>(static_cast<unsigned char>(buffer[static_cast<std::size_t>(i)]))
                  << ' ';
}
