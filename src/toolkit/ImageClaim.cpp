#include "toolkit/ImageClaim.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <string_view>
#include <vector>

namespace
{

/// Decoded, in bytes. The best compression that there is, of one colour all over, stays below.
constexpr std::uint64_t mostPerByte = 1200;
constexpr std::uint64_t alwaysGranted = 64U << 20;

/// Enough for the formats whose size has a fixed place.
constexpr std::size_t shortHead = 32;

/// What stands in front of the size in a JPEG file is rarely longer; beyond it the size isn't looked for.
constexpr std::size_t headOfJpeg = 256U << 10;

class Head
{
public:
    explicit Head(std::ifstream& file)
    {
        read(file, shortHead);
        if (begins("\xff\xd8"))
            read(file, headOfJpeg - shortHead);
    }

    std::size_t size() const { return bytes.size(); }
    std::uint64_t byte(std::size_t at) const { return static_cast<unsigned char>(bytes[at]); }
    std::uint64_t big16(std::size_t at) const { return byte(at) << 8 | byte(at + 1); }
    std::uint64_t big32(std::size_t at) const { return big16(at) << 16 | big16(at + 2); }
    bool begins(std::string_view magic) const
    {
        return bytes.size() >= magic.size() && std::equal(magic.begin(), magic.end(), bytes.begin());
    }

private:
    void read(std::ifstream& file, std::size_t most)
    {
        std::size_t const before = bytes.size();
        bytes.resize(before + most);
        file.read(bytes.data() + before, static_cast<std::streamsize>(most));
        bytes.resize(before + static_cast<std::size_t>(file.gcount()));
    }

    std::vector<char> bytes;
};

std::uint64_t pngPixels(Head const& head)
{
    return head.size() >= 24 ? head.big32(16) * head.big32(20) : 0;
}

std::uint64_t sgiPixels(Head const& head)
{
    return head.size() >= 12 ? head.big16(6) * head.big16(8) : 0;
}

/// The size stands in a frame's segment, behind others.
std::uint64_t jpegPixels(Head const& head)
{
    for (std::size_t at = 2; at + 9 <= head.size() && head.byte(at) == 0xff;) {
        std::uint64_t const marker = head.byte(at + 1);
        bool const isFrame =
            marker >= 0xc0 && marker <= 0xcf && marker != 0xc4 && marker != 0xc8 && marker != 0xcc;
        if (isFrame)
            return head.big16(at + 5) * head.big16(at + 7);
        at += 2 + head.big16(at + 2);
    }
    return 0;
}

/// What the picture claims; 0 if its format isn't known.
std::uint64_t pixelsOf(Head const& head)
{
    using namespace std::string_view_literals;
    return head.begins("\x89PNG")      ? pngPixels(head)
           : head.begins("\x01\xda"sv) ? sgiPixels(head)
           : head.begins("\xff\xd8"sv) ? jpegPixels(head)
                                       : 0;
}

} // namespace

bool ImageClaim::isCredible(std::string const& path)
{
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    std::streamoff const size = file.tellg();
    if (size < 0)
        return true; // the library says why it can't be opened
    file.seekg(0);
    constexpr std::uint64_t bytesPerPixel = 4;
    std::uint64_t const granted = alwaysGranted + static_cast<std::uint64_t>(size) * mostPerByte;
    return pixelsOf(Head(file)) <= granted / bytesPerPixel;
}
