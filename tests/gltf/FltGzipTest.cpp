#include "gltf/FltGzip.h"

#include <gtest/gtest.h>
#include <zlib.h>

namespace
{

std::string unpacked(std::string const& file, std::size_t size)
{
    z_stream stream{};
    EXPECT_EQ(inflateInit2(&stream, MAX_WBITS + 16), Z_OK);
    std::string bytes(size + 1, '\0');
    std::string input = file;
    stream.next_in = reinterpret_cast<Bytef*>(input.data());
    stream.avail_in = static_cast<uInt>(input.size());
    stream.next_out = reinterpret_cast<Bytef*>(bytes.data());
    stream.avail_out = static_cast<uInt>(bytes.size());
    EXPECT_EQ(inflate(&stream, Z_FINISH), Z_STREAM_END);
    EXPECT_EQ(stream.avail_in, 0U);
    bytes.resize(bytes.size() - stream.avail_out);
    inflateEnd(&stream);
    return bytes;
}

/// Bytes that don't get shorter.
std::string noise(std::size_t size)
{
    std::string bytes;
    unsigned state = 1;
    for (std::size_t i = 0; i < size; ++i) {
        state = state * 1664525U + 1013904223U;
        bytes += static_cast<char>(state >> 24U);
    }
    return bytes;
}

} // namespace

TEST(FltGzip, givesTheSameBytesBack)
{
    for (std::string const& bytes :
         {std::string(), std::string("x"), std::string(3'000'000, 'a'), noise(3'000'000)})
        EXPECT_EQ(unpacked(FltGzip::packed(bytes), bytes.size()), bytes);
}

TEST(FltGzip, namesNoTimeAndNoFile)
{
    std::string const file = FltGzip::packed("some bytes");
    EXPECT_EQ(file.substr(0, 3), "\x1f\x8b\x08");
    EXPECT_EQ(file.substr(3, 5), std::string(5, '\0'));
}
