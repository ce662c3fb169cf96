#include "textures/FltTextureAttributeFile.h"

#include "textures/PictureBytes.h"
#include "textures/PicturePixels.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <cstddef>
#include <optional>
#include <unistd.h>

namespace
{

using Attributes = FltTextureAttributes;
using Wrap = Attributes::Wrap;
using Environment = Attributes::Environment;
using Filter = Attributes::Filter;

constexpr char ending[] = ".attr";

/// Where a number stands in the file, each four bytes long, and the name of what it says.
struct Field {
    std::size_t at;
    char const* name;
};
constexpr Field kindOfFile{24, "kind of file"};
constexpr Field minification{28, "filter for drawing it smaller"};
constexpr Field magnification{32, "filter for drawing it larger"};
constexpr Field wrap{36, "wrap"};
constexpr Field wrapU{40, "wrap in u"};
constexpr Field wrapV{44, "wrap in v"};
constexpr Field environment{60, "environment"};

constexpr std::size_t wordSize = 4;
constexpr std::size_t sizeInUse = environment.at + wordSize;

/// What a number in the file means.
template <class Value>
struct Meaning {
    std::int32_t number;
    Value value;
};
constexpr Meaning<Wrap> wraps[] = {{0, Wrap::repeat}, {1, Wrap::clamp}, {4, Wrap::mirror}};
constexpr std::int32_t asWrap = 3;
constexpr Meaning<Environment> environments[] = {{0, Environment::modulate},
                                                 {1, Environment::blend},
                                                 {2, Environment::decal},
                                                 {3, Environment::replace},
                                                 {4, Environment::add}};
constexpr Meaning<Filter> minifications[] = {{0, Filter::point},          {1, Filter::bilinear},
                                             {3, Filter::mipmapPoint},    {4, Filter::mipmapLinear},
                                             {5, Filter::mipmapBilinear}, {6, Filter::mipmapTrilinear}};
constexpr Meaning<Filter> magnifications[] = {{0, Filter::point}, {1, Filter::bilinear}};

/// Kinds of files whose pictures have so many channels.
constexpr Meaning<int> channels[] = {{2, 1}, {3, 2}, {4, 3}, {5, 4}};

template <class Value, std::size_t count>
std::optional<Value> meaningOf(Meaning<Value> const (&meanings)[count], std::int32_t number)
{
    auto const* const found =
        std::find_if(std::begin(meanings), std::end(meanings),
                     [&](Meaning<Value> const& meaning) { return meaning.number == number; });
    return found != std::end(meanings) ? std::optional(found->value) : std::nullopt;
}

/// Reads the numbers of a file, and notes those that mean nothing.
class Reader
{
public:
    Reader(PictureBytes const& bytes, Attributes& attributes) : bytes(bytes), attributes(attributes) {}

    /// Nothing beyond the end of the file.
    std::optional<std::int32_t> number(Field field) const
    {
        if (!bytes.holds(field.at, wordSize))
            return std::nullopt;
        return static_cast<std::int32_t>(bytes.big32(field.at));
    }

    template <class Value, std::size_t count>
    void read(Field field, Meaning<Value> const (&meanings)[count], Value& value) const
    {
        std::optional<std::int32_t> const stored = number(field);
        if (!stored)
            return;
        if (std::optional<Value> const meant = meaningOf(meanings, *stored))
            value = *meant;
        else
            attributes.problems.push_back(std::string("its ") + field.name + " is " +
                                          std::to_string(*stored));
    }

    /// One direction may be as both are.
    void readWrap(Field field, Wrap& value) const
    {
        if (number(field) != asWrap)
            read(field, wraps, value);
    }

private:
    PictureBytes const& bytes;
    Attributes& attributes;
};

bool endsAsAttributes(std::string const& path)
{
    constexpr std::size_t size = sizeof ending - 1;
    auto const isSame = [](unsigned char one, char other) { return std::tolower(one) == other; };
    return path.size() > size &&
           std::equal(path.end() - static_cast<std::ptrdiff_t>(size), path.end(), ending, isSame);
}

std::string directoryOf(std::string const& file)
{
    return file.substr(0, file.rfind('/') + 1);
}

std::string lastPartOf(std::string const& name)
{
    std::string const slashed = FltKnownDirectories::withSlashes(name);
    return slashed.substr(directoryOf(slashed).size());
}

/// The first bytes of a file; fewer if there aren't as many.
std::optional<std::size_t> readInto(std::array<unsigned char, sizeInUse>& bytes, OpenFile const& file)
{
    std::size_t done = 0;
    while (done < bytes.size()) {
        ssize_t const count =
            ::pread(file.descriptor(), bytes.data() + done, bytes.size() - done, static_cast<off_t>(done));
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return std::nullopt;
        if (count == 0)
            break;
        done += static_cast<std::size_t>(count);
    }
    return done;
}

} // namespace

FltTextureAttributes FltTextureAttributeFile::decode(PictureBytes const& bytes)
{
    Attributes attributes;
    if (!bytes.holds(0, sizeInUse))
        attributes.problems.push_back("it ends after " + std::to_string(bytes.size()) + " bytes of " +
                                      std::to_string(sizeInUse));
    Reader const reader(bytes, attributes);
    attributes.kindOfFile = reader.number(kindOfFile).value_or(Attributes::unknownKind);
    reader.read(minification, minifications, attributes.minification);
    reader.read(magnification, magnifications, attributes.magnification);
    reader.read(wrap, wraps, attributes.wrapU);
    attributes.wrapV = attributes.wrapU;
    reader.readWrap(wrapU, attributes.wrapU);
    reader.readWrap(wrapV, attributes.wrapV);
    reader.read(environment, environments, attributes.environment);
    return attributes;
}

FltTextureAttributes FltTextureAttributeFile::find(FltTextureSearch& search, std::string const& name,
                                                   std::string const& picture,
                                                   std::vector<std::string> const& ownDirectories)
{
    Attributes attributes;
    auto const isRead = [&attributes](std::string const& path, OpenFile const& file) {
        std::array<unsigned char, sizeInUse> bytes;
        std::optional<std::size_t> const size = endsAsAttributes(path) ? readInto(bytes, file) : std::nullopt;
        if (!size)
            return false;
        attributes = decode(PictureBytes(bytes.data(), *size));
        attributes.path = path;
        return true;
    };
    if (!picture.empty())
        for (std::string const& one : {name, picture})
            if (attributes.path.empty())
                search.find(lastPartOf(one) + ending, {directoryOf(picture)}, isRead);
    if (attributes.path.empty())
        search.find(name + ending, ownDirectories, isRead);
    return attributes;
}

std::string FltTextureAttributeFile::contradiction(FltTextureAttributes const& attributes,
                                                   PicturePixels const& picture)
{
    std::optional<int> const said = meaningOf(channels, attributes.kindOfFile);
    if (!said || *said == picture.components)
        return {};
    return "it speaks of a picture of " + std::to_string(*said) + (*said == 1 ? " channel" : " channels") +
           ", which has " + std::to_string(picture.components);
}
