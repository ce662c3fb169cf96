#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

/// The bytes of a picture's file, and the numbers in them. What lies beyond the end is 0.
class PictureBytes
{
public:
    /// The bytes stay with the caller.
    PictureBytes(unsigned char const* bytes, std::size_t size) : bytes(bytes), length(size) {}
    explicit PictureBytes(std::vector<unsigned char> const& bytes) : PictureBytes(bytes.data(), bytes.size())
    {
    }

    unsigned char const* data() const { return bytes; }
    std::size_t size() const { return length; }

    /// How many of the bytes from a place on there are, up to a number.
    std::size_t countAt(std::size_t at, std::size_t most) const
    {
        std::size_t const left = at < length ? length - at : 0;
        return left < most ? left : most;
    }
    bool holds(std::size_t at, std::size_t count) const { return countAt(at, count) == count; }

    unsigned byte(std::size_t at) const { return at < length ? bytes[at] : 0U; }
    std::uint32_t big16(std::size_t at) const { return byte(at) << 8 | byte(at + 1); }
    std::uint32_t big32(std::size_t at) const { return big16(at) << 16 | big16(at + 2); }
    std::uint32_t little16(std::size_t at) const { return byte(at + 1) << 8 | byte(at); }

    bool begins(std::string_view magic) const
    {
        return holds(0, magic.size()) &&
               std::string_view(reinterpret_cast<char const*>(bytes), magic.size()) == magic;
    }

private:
    unsigned char const* bytes;
    std::size_t length;
};
