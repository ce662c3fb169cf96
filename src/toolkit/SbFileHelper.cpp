#include "toolkit/SbFileHelper.h"

#include "toolkit/RegularFile.h"

#include <cstring>

SbString SbFileHelper::getExtension(SbString const& name)
{
    char const* const text = name.getString();
    char const* const slash = std::strrchr(text, '/');
    char const* const dot = std::strrchr(slash != nullptr ? slash : text, '.');
    return {dot != nullptr ? dot + 1 : ""};
}

FILE* SbFileHelper::open(SbString const& name, char const* mode)
{
    return RegularFile::open(name.getString()).intoStream(mode);
}

void SbFileHelper::close(FILE* file)
{
    if (file != nullptr)
        std::fclose(file);
}
