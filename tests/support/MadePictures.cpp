#include "support/MadePictures.h"

#include <algorithm>
#include <ostream>
#include <utility>

void PrintTo(MadePicture const& picture, std::ostream* out)
{
    *out << picture.name;
}

std::vector<MadePicture> MadePictures::all()
{
    std::vector<MadePicture> pictures;
    for (auto* const some : {png, jpeg, tiff, gif, sgi, tga})
        for (MadePicture& picture : some())
            pictures.push_back(std::move(picture));
    return pictures;
}

std::string MadePictures::nameOfTest(MadePicture const& picture)
{
    std::string name = picture.name;
    std::replace(name.begin(), name.end(), '.', '_');
    return name;
}

int MadePictures::sample(int x, int y, int channel)
{
    return (29 * x + 17 * y + 71 * channel + 13) & 0xff;
}

int MadePictures::sample(int x, int y, int channel, int bits)
{
    return sample(x, y, channel) >> (8 - bits);
}

std::string MadePictures::fromTop(int channels, Value const& value)
{
    std::string bytes;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            for (int channel = 0; channel < channels; ++channel)
                bytes += byteOf(value(x, y, channel));
    return bytes;
}

std::string MadePictures::fromBottom(int channels, Value const& value)
{
    return fromTop(channels, [&](int x, int y, int channel) { return value(x, height - 1 - y, channel); });
}

int MadePictures::spread(int value, int bits)
{
    return value * 255 / ((1 << bits) - 1);
}

char MadePictures::byteOf(int number)
{
    return static_cast<char>(number);
}

std::string MadePictures::big16(int number)
{
    return {byteOf(number >> 8), byteOf(number)};
}

std::string MadePictures::big32(std::size_t number)
{
    return big16(static_cast<int>(number >> 16)) + big16(static_cast<int>(number & 0xffff));
}

std::string MadePictures::little16(int number)
{
    return {byteOf(number), byteOf(number >> 8)};
}
