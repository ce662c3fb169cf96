#pragma once

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

/// The file of a picture, of which single stretches are read.
class ImageFile
{
public:
    /// Some bytes of the file, and the numbers in them.
    class Bytes
    {
    public:
        explicit Bytes(std::vector<char> bytes) : bytes(std::move(bytes)) {}

        std::size_t size() const { return bytes.size(); }
        unsigned byte(std::size_t at) const { return static_cast<unsigned char>(bytes[at]); }
        std::uint32_t big16(std::size_t at) const { return byte(at) << 8 | byte(at + 1); }
        std::uint32_t big32(std::size_t at) const { return big16(at) << 16 | big16(at + 2); }
        std::uint32_t little16(std::size_t at) const { return byte(at + 1) << 8 | byte(at); }
        bool begins(std::string_view magic) const
        {
            return std::string_view(bytes.data(), bytes.size()).substr(0, magic.size()) == magic;
        }

    private:
        std::vector<char> bytes;
    };

    explicit ImageFile(std::string path);

    std::string const& path() const { return name; }

    bool isOpen() const { return length >= 0; }

    /// In bytes.
    std::uint64_t size() const { return static_cast<std::uint64_t>(length); }

    /// As many of the bytes from a place on as there are.
    Bytes read(std::uint64_t at, std::uint64_t most);

private:
    std::string name;
    std::ifstream file;
    std::streamoff length;
};
