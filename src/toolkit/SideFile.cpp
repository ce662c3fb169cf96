#include "toolkit/SideFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace
{

/// Whether a file is a plain one with a single name, and isn't the database.
bool isOwn(int file, char const* database)
{
    struct stat status;
    if (::fstat(file, &status) != 0 || !S_ISREG(status.st_mode) || status.st_nlink != 1)
        return false;
    struct stat input;
    return database == nullptr || ::stat(database, &input) != 0 || input.st_dev != status.st_dev ||
           input.st_ino != status.st_ino;
}

/// Whether a name leads to a link, a pipe, a device or a socket. Only to open these can have effects.
bool isOfAnotherKind(char const* path)
{
    struct stat status = {};
    return ::lstat(path, &status) == 0 && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode);
}

/// A file that is empty already stays as it is: what is written into one that was cut to nothing, ext4 writes
/// out when it is closed, and the caller waits for it.
bool empty(int file)
{
    struct stat status;
    return ::fstat(file, &status) == 0 && (status.st_size == 0 || ::ftruncate(file, 0) == 0);
}

} // namespace

SideFile::SideFile(char const* path, char const* database, Content content) : outcome(Outcome::failed)
{
    if (isOfAnotherKind(path)) {
        outcome = Outcome::refused;
        return;
    }
    // The file is examined before it is emptied, and through its descriptor, so that it can't be exchanged in
    // between.
    int const file = ::open(path, O_WRONLY | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC, 0666);
    if (file < 0)
        return;
    if (!isOwn(file, database)) {
        outcome = Outcome::refused;
        ::close(file);
        return;
    }
    int const flags = content == Content::appendedTo ? O_APPEND : 0;
    bool const ready = ::fcntl(file, F_SETFL, flags) == 0 && (content == Content::appendedTo || empty(file));
    if (!ready) {
        ::close(file);
        return;
    }
    outcome = Outcome::opened;
    descriptor = file;
}

SideFile::~SideFile()
{
    if (descriptor >= 0)
        ::close(descriptor);
}

int SideFile::release()
{
    return std::exchange(descriptor, -1);
}
