#include "convert/FileList.h"

#include "support/ToolError.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <utility>

namespace
{

struct Closer {
    void operator()(FILE* file) const
    {
        if (file != stdin)
            static_cast<void>(std::fclose(file));
    }
};

} // namespace

std::vector<std::string> FileList::namesIn(std::string const& text)
{
    char const end = text.find('\0') != std::string::npos ? '\0' : '\n';
    std::vector<std::string> names;
    for (std::size_t begin = 0; begin < text.size();) {
        std::size_t const stop = std::min(text.find(end, begin), text.size());
        std::string name = text.substr(begin, stop - begin);
        if (end == '\n' && !name.empty() && name.back() == '\r')
            name.pop_back(); // a list from another system
        if (!name.empty())
            names.push_back(std::move(name));
        begin = stop + 1;
    }
    return names;
}

std::vector<std::string> FileList::read(std::string const& file)
{
    auto const fail = [&file](int reason) {
        throw ToolError("--files-from " + file + ": cannot read: " + std::strerror(reason) +
                        ". Check that the list is there.");
    };
    std::unique_ptr<FILE, Closer> const stream(file == "-" ? stdin : std::fopen(file.c_str(), "rbe"));
    if (stream == nullptr)
        fail(errno);
    std::string text;
    std::array<char, 65536> buffer{};
    for (std::size_t count = 0; (count = std::fread(buffer.data(), 1, buffer.size(), stream.get())) > 0;)
        text.append(buffer.data(), count);
    if (std::ferror(stream.get()) != 0)
        fail(errno != 0 ? errno : EIO);
    return namesIn(text);
}
