#include "toolkit/ImageFile.h"

#include <algorithm>
#include <utility>

ImageFile::ImageFile(std::string path)
    : name(std::move(path)), file(name, std::ios::binary | std::ios::ate), length(file.tellg())
{
}

ImageFile::Bytes ImageFile::read(std::uint64_t at, std::uint64_t most)
{
    std::uint64_t const count = at < size() ? std::min(most, size() - at) : 0;
    std::vector<char> bytes(static_cast<std::size_t>(count));
    file.clear();
    file.seekg(static_cast<std::streamoff>(at));
    file.read(bytes.data(), static_cast<std::streamsize>(count));
    bytes.resize(static_cast<std::size_t>(std::max<std::streamsize>(file.gcount(), 0)));
    return Bytes(std::move(bytes));
}
