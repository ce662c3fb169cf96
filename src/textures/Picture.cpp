#include "textures/Picture.h"

#include "textures/PictureBytes.h"
#include "textures/PictureFormats.h"
#include "toolkit/RegularFile.h"

#include <algorithm>
#include <cerrno>
#include <limits>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace
{

using namespace std::string_view_literals;

struct Format {
    std::string_view begin; ///< The first bytes of its files.
    DecodedPicture (*decode)(PictureBytes const& file);
};

constexpr Format formats[] = {
    {"\x89PNG\r\n\x1a\n"sv, PictureFormats::decodePng},
    {"\xff\xd8\xff"sv, PictureFormats::decodeJpeg},
    {"\x01\xda"sv, PictureFormats::decodeSgi},
    {"II*\0"sv, PictureFormats::decodeTiff},
    {"MM\0*"sv, PictureFormats::decodeTiff},
    {"GIF87a"sv, PictureFormats::decodeGif},
    {"GIF89a"sv, PictureFormats::decodeGif},
};

constexpr Format tga = {"", PictureFormats::decodeTga};

/// What people give for textures, and what isn't read, so that the message can name it.
constexpr std::pair<std::string_view, char const*> unread[] = {
    {"DDS "sv, "DDS"},
    {"BM"sv, "BMP"},
    {"\x19\x91"sv, "PIC"},
    {"\xabKTX "sv, "KTX"},
    {"\0\0\0\x0cjP  "sv, "JPEG 2000"},
    {"\x76\x2f\x31\x01"sv, "OpenEXR"},
};

constexpr char const* notPlain = "isn't a plain file";

/// How many bytes of a file tell its format.
constexpr std::size_t sizeOfHead = 32;

Format const& formatOf(PictureBytes const& head, std::string const& name)
{
    for (Format const& format : formats)
        if (head.begins(format.begin))
            return format;
    for (auto const& [begin, format] : unread)
        if (head.begins(begin))
            throw PictureProblem(std::string("is a ") + format + " picture, which isn't read");
    if (PictureFormats::isNamedTga(name))
        return tga;
    throw PictureProblem(head.size() == 0 ? "is empty" : "is no picture of a kind that is read");
}

/// The bytes of a file. It may change meanwhile, and then these are as many as could be read.
std::vector<unsigned char> bytesOf(int descriptor, std::size_t size)
{
    std::vector<unsigned char> bytes(size);
    std::size_t done = 0;
    while (done < size) {
        ssize_t const count = ::pread(descriptor, bytes.data() + done, size - done, static_cast<off_t>(done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            throw PictureProblem("can't be read: " + std::generic_category().message(errno));
        if (count == 0)
            break;
        done += static_cast<std::size_t>(count);
    }
    bytes.resize(done);
    return bytes;
}

std::size_t sizeOf(int descriptor)
{
    constexpr off_t most = std::numeric_limits<int>::max(); // bytes of a picture
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0 || !S_ISREG(status.st_mode))
        throw PictureProblem(notPlain);
    if (status.st_size > most)
        throw PictureProblem("is larger than any picture");
    return static_cast<std::size_t>(status.st_size);
}

Picture asPicture(DecodedPicture&& decoded)
{
    Picture picture;
    picture.pixels = std::make_shared<PicturePixels const>(std::move(decoded.pixels));
    picture.isSafeForToolkit = decoded.isSafeForToolkit;
    picture.damage = std::move(decoded.damage);
    return picture;
}

Picture withProblem(std::string problem)
{
    Picture picture;
    picture.problem = std::move(problem);
    return picture;
}

} // namespace

Picture Picture::read(int descriptor, std::string const& name)
{
    try {
        std::size_t const size = sizeOf(descriptor);
        std::vector<unsigned char> const head = bytesOf(descriptor, std::min(size, sizeOfHead));
        formatOf(PictureBytes(head), name); // so that nothing else is read whole
        std::vector<unsigned char> const bytes = bytesOf(descriptor, size);
        return decode(PictureBytes(bytes), name);
    } catch (PictureProblem const& problem) {
        return withProblem(problem.what());
    }
}

Picture Picture::read(std::string const& path)
{
    OpenFile const file = RegularFile::open(path.c_str());
    if (!file.isOpen())
        return withProblem(errno == EINVAL ? notPlain
                                           : "can't be opened: " + std::generic_category().message(errno));
    return read(file.descriptor(), path);
}

Picture Picture::decode(PictureBytes const& bytes, std::string const& name)
{
    try {
        return asPicture(formatOf(bytes, name).decode(bytes));
    } catch (PictureProblem const& problem) {
        return withProblem(problem.what());
    }
}
