#include "toolkit/SbFileHelper.h"

#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
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
    // Without O_NONBLOCK a pipe that nobody writes to would block here.
    int const descriptor = ::open(name.getString(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (descriptor < 0)
        return nullptr;
    struct stat status;
    FILE* const file =
        ::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) ? ::fdopen(descriptor, mode) : nullptr;
    if (file == nullptr)
        ::close(descriptor);
    return file;
}

void SbFileHelper::close(FILE* file)
{
    if (file != nullptr)
        std::fclose(file);
}
