#include "support/MadePictures.h"

using namespace MadePictures;

namespace
{

constexpr std::size_t sizeOfHead = 512;

std::string head(bool isPacked, int bytesOfValue, int channels)
{
    std::string bytes = big16(0x01da) + byteOf(isPacked ? 1 : 0) + byteOf(bytesOfValue) +
                        big16(channels > 1 ? 3 : 2) + big16(width) + big16(height) + big16(channels) +
                        big32(0) + big32(255);
    bytes.resize(sizeOfHead);
    return bytes;
}

/// Two bytes have the sample in the first.
std::string value(int number, int bytesOfValue)
{
    return bytesOfValue == 2 ? big16(number << 8 | 0x5a) : std::string(1, byteOf(number));
}

/// What a packed picture shows: each row ends in a run.
int packedSample(int x, int y, int channel)
{
    return sample(x < 5 ? x : 5, y, channel);
}

std::string packedRow(int y, int channel, int bytesOfValue)
{
    constexpr int copied = 5;
    auto const count = [&](int number) {
        return bytesOfValue == 2 ? big16(number) : std::string(1, byteOf(number));
    };
    std::string bytes = count(0x80 | copied);
    for (int x = 0; x < copied; ++x)
        bytes += value(packedSample(x, y, channel), bytesOfValue);
    return bytes + count(width - copied) + value(packedSample(copied, y, channel), bytesOfValue) + count(0);
}

std::string plainFile(int channels, int bytesOfValue)
{
    std::string bytes = head(false, bytesOfValue, channels);
    for (int channel = 0; channel < channels; ++channel)
        for (int y = height - 1; y >= 0; --y)
            for (int x = 0; x < width; ++x)
                bytes += value(sample(x, y, channel), bytesOfValue);
    return bytes;
}

std::string packedFile(int channels, int bytesOfValue)
{
    auto const rows = static_cast<std::size_t>(channels) * height;
    std::string starts;
    std::string sizes;
    std::string packets;
    for (int channel = 0; channel < channels; ++channel)
        for (int y = height - 1; y >= 0; --y) {
            std::string const row = packedRow(y, channel, bytesOfValue);
            starts += big32(sizeOfHead + 8 * rows + packets.size());
            sizes += big32(row.size());
            packets += row;
        }
    return head(true, bytesOfValue, channels) + starts + sizes + packets;
}

} // namespace

std::vector<MadePicture> MadePictures::sgi()
{
    using Toolkit = MadePicture::Toolkit;
    std::vector<MadePicture> pictures;
    char const* const names[] = {"plain%.bw", "plain%.inta", "plain%.rgb", "plain%.rgba"};
    for (int const bytesOfValue : {1, 2})
        for (int channels = 1; channels <= 4; ++channels) {
            std::string name = names[channels - 1];
            name.replace(5, 1, std::to_string(8 * bytesOfValue));
            Toolkit const toolkit = bytesOfValue == 1 ? Toolkit::agrees : Toolkit::differs;
            pictures.push_back({name, plainFile(channels, bytesOfValue), width, height, channels,
                                fromBottom(channels, [](int x, int y, int c) { return sample(x, y, c); }),
                                toolkit});
            pictures.push_back({name.replace(0, 5, "packed"), packedFile(channels, bytesOfValue), width,
                                height, channels, fromBottom(channels, packedSample), toolkit});
        }
    return pictures;
}
