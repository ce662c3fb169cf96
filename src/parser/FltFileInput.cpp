#include "parser/FltFileInput.h"

#include "toolkit/SbFileHelper.h"

#include <algorithm>
#include <cstring>
#include <iostream>
#include <string_view>

namespace
{

std::unique_ptr<char[]> copyOf(std::string_view text)
{
    std::unique_ptr<char[]> copy(new char[text.size() + 1]);
    *std::copy(text.begin(), text.end(), copy.get()) = '\0';
    return copy;
}

} // namespace

FltFileInput::FltFileInput(char const* name) : fileName(copyOf(name != nullptr ? name : ""))
{
    char* const begin = fileName.get();
    std::replace(begin, begin + std::strlen(begin), '\\', '/');
    if (char const* const slash = std::strrchr(begin, '/'))
        dirName = copyOf({begin, static_cast<std::size_t>(slash + 1 - begin)});
    file.reset(SbFileHelper::open(begin, "rb"));
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
