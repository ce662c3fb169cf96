#include "gltf/FltGltfFiles.h"

#include "gltf/FltGltfError.h"
#include "gltf/GltfJson.h"
#include "toolkit/WholeFile.h"

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

namespace
{

namespace fs = std::filesystem;

constexpr char const* advice = ". Check the directory, its permissions and the space on the disk.";

[[noreturn]] void fail(std::string const& path, int reason)
{
    throw FltGltfError(path, std::string("cannot write: ") + std::strerror(reason) + advice, reason);
}

/// Tells contents apart (FNV-1a, 64 bits).
std::string hashOf(std::string_view bytes)
{
    constexpr std::uint64_t begin = 14695981039346656037U, prime = 1099511628211U;
    constexpr char digits[] = "0123456789abcdef";
    std::uint64_t hash = begin;
    for (char const byte : bytes)
        hash = (hash ^ static_cast<unsigned char>(byte)) * prime;
    std::string text;
    for (int shift = 60; shift >= 0; shift -= 4)
        text += digits[hash >> shift & 0xf];
    return text;
}

bool holds(std::string const& path, std::string_view bytes)
{
    std::error_code problem;
    if (fs::file_size(path, problem) != bytes.size() || problem)
        return false;
    std::ifstream stream(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), {}) == bytes;
}

/// A name for a file: of letters, digits and a few signs, since file systems and readers differ in the rest.
std::string plainName(std::string const& name)
{
    constexpr std::string_view known = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-_";
    std::string plain;
    for (char const character : fs::path(name).stem().string())
        plain += known.find(character) != std::string_view::npos ? character : '_';
    constexpr std::size_t longest = 100;
    return plain.empty() ? "texture" : plain.substr(0, longest);
}

} // namespace

FltGltfFiles::FltGltfFiles(FltVisual const& visual, std::string path, std::string textureDirectory)
    : visual(visual), path(std::move(path)), folder(std::move(textureDirectory)), isShared(!folder.empty())
{
    if (!isShared)
        folder = fs::path(this->path).replace_extension().string() + "_textures";
    folder += '/';
}

FltGltfFiles::~FltGltfFiles() = default;

std::string FltGltfFiles::binaryPath() const
{
    return fs::path(path).replace_extension(".bin").string();
}

std::string FltGltfFiles::add(GltfPicture const& picture, std::string const& name)
{
    std::string const file = folder + (isShared ? sharedName(picture) : freeName(picture, name));
    std::error_code problem;
    fs::create_directories(folder, problem);
    if (problem)
        throw FltGltfError(folder, "cannot make this directory for textures: " + problem.message() + advice,
                           problem.value());
    if (isShared && holds(file, picture.bytes))
        present.push_back(file);
    else if (!isShared || names.insert(file).second)
        add(file, [&](auto const& take) { take(picture.bytes); });
    fs::path const base = fs::absolute(path).parent_path();
    return fs::absolute(file).lexically_normal().lexically_relative(base).generic_string();
}

/// A name that is like the texture's own.
std::string FltGltfFiles::freeName(GltfPicture const& picture, std::string const& name)
{
    std::string const plain = plainName(name);
    std::string free = plain + picture.ending();
    for (std::size_t number = 2; !names.insert(free).second; ++number)
        free = plain + '-' + std::to_string(number) + picture.ending();
    return free;
}

/// A name by the content, so that files with the same picture share it.
std::string FltGltfFiles::sharedName(GltfPicture const& picture) const
{
    return hashOf(picture.bytes) + picture.ending();
}

void FltGltfFiles::add(std::string const& file, Pieces const& pieces)
{
    checkIsNotOfDatabase(file);
    auto whole = std::make_unique<WholeFile>(file);
    if (whole->stream() == nullptr)
        fail(file, whole->problem());
    pieces([&whole](std::string_view piece) { std::fwrite(piece.data(), 1, piece.size(), whole->stream()); });
    if (int const reason = whole->close(); reason != 0)
        fail(file, reason);
    files.emplace_back(file, std::move(whole));
}

void FltGltfFiles::checkIsNotOfDatabase(std::string const& file) const
{
    auto const check = [&](std::string const& other, char const* what) {
        if (!other.empty() && WholeFile::areOne(file, other))
            throw FltGltfError(file, std::string("this is ") + what +
                                         ", and stays as it is. Choose another name for the output.");
    };
    for (std::string const& database : visual.files)
        check(database, "the database, or a file that it refers to");
    for (FltTexture const& texture : visual.textures)
        check(texture.path, "a texture of the database");
}

std::vector<std::string> FltGltfFiles::commit()
{
    std::vector<std::string> written = present;
    for (auto const& [file, whole] : files) {
        if (int const reason = whole->commit(); reason != 0)
            fail(file, reason);
        written.push_back(file);
    }
    return written;
}

std::string FltGltfFiles::addressOf(std::string_view path)
{
    constexpr std::string_view plain = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~/";
    constexpr char digits[] = "0123456789ABCDEF";
    std::string address;
    for (char const character : path) {
        if (plain.find(character) != std::string_view::npos) {
            address += character;
            continue;
        }
        auto const byte = static_cast<unsigned char>(character);
        address += {'%', digits[byte >> 4], digits[byte & 0xf]};
    }
    return address;
}
