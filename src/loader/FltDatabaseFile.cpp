#include "loader/FltDatabaseFile.h"

#include "records/FltRevision.h"
#include "toolkit/RegularFile.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

using Kind = FltLoadError::Kind;

/// The first bytes of a database: the header's opcode, length, name and revision.
struct Head {
    unsigned char bytes[16] = {};
    std::size_t size = 0;

    explicit Head(OpenFile const& file)
    {
        ssize_t const count = ::pread(file.descriptor(), bytes, sizeof bytes, 0);
        size = count > 0 ? static_cast<std::size_t>(count) : 0;
    }

    int word(std::size_t at) const { return bytes[at] << 8 | bytes[at + 1]; }
    int opcode() const { return word(0); }
    int length() const { return word(2); }
    std::int32_t revision() const
    {
        return static_cast<std::int32_t>(static_cast<std::uint32_t>(word(12)) << 16 |
                                         static_cast<std::uint32_t>(word(14)));
    }
};

/// Whether a file begins like a database of a revision that is converted.
bool beginsAsDatabase(OpenFile const& file)
{
    Head const head(file);
    return head.size == sizeof head.bytes && head.opcode() == 1 && head.length() != 0 &&
           head.revision() >= FltRevision::oldest;
}

} // namespace

std::string FltDatabaseFile::withDirectory(std::string const& path)
{
    return path.find('/') == std::string::npos ? "./" + path : path;
}

FltDatabaseFile::FltDatabaseFile(std::string const& path, std::uint64_t largestFile) : path(path)
{
    if (path.empty())
        throw FltLoadError(Kind::cannotOpen, path,
                           "the name is empty. Give the name of an OpenFlight file (*.flt).", -1, ENOENT);
    if (path.find('\0') != std::string::npos)
        throw FltLoadError(Kind::cannotOpen, path.substr(0, path.find('\0')),
                           "the name goes on after a null byte. Check the name.");
    struct stat status = {};
    bool const isThere = ::stat(path.c_str(), &status) == 0;
    if (isThere && S_ISDIR(status.st_mode))
        throw FltLoadError(Kind::cannotOpen, path,
                           "this is a directory. Give the name of an OpenFlight file (*.flt).", -1, EISDIR);
    if (isThere && !S_ISREG(status.st_mode))
        throw FltLoadError(Kind::cannotOpen, path,
                           "not a regular file. Save the database into a file first.");
    file = RegularFile::open(path.c_str());
    if (!file.isOpen()) {
        int const reason = errno;
        throw FltLoadError(Kind::cannotOpen, path,
                           std::string("cannot open: ") + std::strerror(reason) +
                               ". Check the name and its permissions.",
                           -1, reason);
    }
    if (path.find('\\') != std::string::npos)
        throw FltLoadError(
            Kind::cannotOpen, path,
            "cannot be read. A backslash in a name is taken as a slash: give it another name.");
    if (file.size() > largestFile)
        throw FltLoadError(Kind::refused, path,
                           "the file has " + std::to_string(file.size()) + " bytes, and no more than " +
                               std::to_string(largestFile) +
                               " are allowed. Allow more, or divide the database.");
}

FltLoadError FltDatabaseFile::whyNotConverted() const
{
    Head const head(file);
    if (head.size == 0)
        return {Kind::notOpenFlight, path, "the file is empty. Fetch or export it again.", 0};
    if (head.size >= 2 && head.opcode() != 1)
        return {
            Kind::notOpenFlight, path,
            "not an OpenFlight database: it doesn't begin with a header record. Check that this is the right "
            "file.",
            0};
    if (head.size < sizeof head.bytes)
        return {Kind::damaged, path, "the file breaks off within its header. Fetch or export it again.",
                static_cast<std::int64_t>(head.size)};
    if (head.length() == 0)
        return {Kind::damaged, path,
                "the header record is damaged: its length is zero. Fetch or export the file again.", 2};
    if (head.revision() < FltRevision::oldest)
        return {Kind::revision, path,
                "OpenFlight revision " + std::to_string(head.revision()) +
                    " isn't supported. Export the database at revision 11 or newer (1570 is a good choice).",
                12};
    return {Kind::damaged, path, "the header record is damaged. Fetch or export the file again.", 0};
}

FltLoadError FltDatabaseFile::outOfMemory(std::string const& path)
{
    return {Kind::outOfMemory, path,
            "the memory doesn't suffice. The database is damaged, or too large for this machine."};
}

bool FltDatabaseFile::canConvert() const
{
    return beginsAsDatabase(file);
}

bool FltDatabaseFile::canConvert(std::string const& path)
{
    OpenFile const file = RegularFile::open(path.c_str());
    return file.isOpen() && beginsAsDatabase(file);
}
