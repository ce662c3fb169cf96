#include "toolkit/SbFileHelper.h"

#include "toolkit/RegularFile.h"

#include <cstring>
#include <unistd.h>

SbString SbFileHelper::getExtension(SbString const& name)
{
    char const* const text = name.getString();
    char const* const slash = std::strrchr(text, '/');
    char const* const dot = std::strrchr(slash != nullptr ? slash : text, '.');
    return {dot != nullptr ? dot + 1 : ""};
}

FILE* SbFileHelper::open(SbString const& name, char const* mode)
{
    int const descriptor = RegularFile::open(name.getString());
    FILE* const file = descriptor >= 0 ? ::fdopen(descriptor, mode) : nullptr;
    if (descriptor >= 0 && file == nullptr)
        ::close(descriptor);
    return file;
}

void SbFileHelper::close(FILE* file)
{
    if (file != nullptr)
        std::fclose(file);
}
