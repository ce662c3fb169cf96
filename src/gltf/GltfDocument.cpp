#include "gltf/GltfDocument.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace
{

using List = GltfDocument::List;

/// Names in the file. Lights stand in an extension.
constexpr std::array<std::pair<List, std::string_view>, 7> names = {{{List::nodes, "nodes"},
                                                                     {List::meshes, "meshes"},
                                                                     {List::accessors, "accessors"},
                                                                     {List::materials, "materials"},
                                                                     {List::textures, "textures"},
                                                                     {List::images, "images"},
                                                                     {List::samplers, "samplers"}}};

std::string dumped(GltfJson const& json)
{
    return json.dump(-1, ' ', false, GltfJson::error_handler_t::replace);
}

void addOnce(std::vector<std::string>& list, std::string_view word)
{
    if (std::find(list.begin(), list.end(), word) == list.end())
        list.emplace_back(word);
}

std::string member(std::string_view name, std::string_view value)
{
    return ",\"" + std::string(name) + "\":" + std::string(value);
}

/// Four bytes, the lowest first.
std::string word(std::size_t number)
{
    std::string bytes;
    for (unsigned shift = 0; shift < 32; shift += 8)
        bytes += static_cast<char>(number >> shift & 0xff);
    return bytes;
}

} // namespace

int GltfDocument::add(List list, GltfJson const& value)
{
    Entries& entries = lists[static_cast<std::size_t>(list)];
    entries.text += entries.count == 0 ? "" : ",";
    entries.text += dumped(value);
    return static_cast<int>(entries.count++);
}

void GltfDocument::use(std::string_view extension, bool isRequired)
{
    addOnce(used, extension);
    if (isRequired)
        addOnce(required, extension);
}

std::string GltfDocument::text(int root, std::string const& bufferUri) const
{
    std::string text = R"({"asset":{"version":"2.0","generator":"VelloReader"})";
    if (!used.empty())
        text += member("extensionsUsed", dumped(used));
    if (!required.empty())
        text += member("extensionsRequired", dumped(required));
    text += member("scene", "0") + member("scenes", "[{\"nodes\":[" + std::to_string(root) + "]}]");
    for (auto const& [list, name] : names)
        if (Entries const& entries = lists[static_cast<std::size_t>(list)]; entries.count != 0) {
            text += member(name, "[");
            text += entries.text;
            text += ']';
        }
    if (count(List::lights) != 0)
        text += member("extensions", R"({"KHR_lights_punctual":{"lights":[)" +
                                         lists[static_cast<std::size_t>(List::lights)].text + "]}}");
    if (std::size_t const size = binary.size(); size != 0) {
        GltfJson buffer = {{"byteLength", size}};
        if (!bufferUri.empty())
            buffer["uri"] = bufferUri;
        GltfJson buffers = GltfJson::array({std::move(buffer)});
        if (std::size_t const sizeWithout = binary.sizeWithout(); sizeWithout != 0) // which is nowhere
            buffers.push_back({{"byteLength", sizeWithout},
                               {"extensions", {{"EXT_meshopt_compression", {{"fallback", true}}}}}});
        text += member("buffers", dumped(buffers));
        text += member("bufferViews", dumped(binary.list()));
    }
    return text + '}';
}

bool GltfDocument::writeGlb(std::string const& text,
                            std::function<void(std::string_view piece)> const& take) const
{
    constexpr std::size_t headSize = 12, chunkHeadSize = 8;
    std::size_t const gap = GltfBinary::gapAfter(text.size());
    std::size_t const binarySize = binary.size();
    std::size_t const binaryChunk = binarySize == 0 ? 0 : chunkHeadSize + binarySize;
    std::size_t const all = headSize + chunkHeadSize + text.size() + gap + binaryChunk;
    if (all > std::numeric_limits<std::uint32_t>::max())
        return false;
    take("glTF" + word(2) + word(all));
    take(word(text.size() + gap) + "JSON");
    take(text);
    take(std::string(gap, ' '));
    if (binarySize == 0)
        return true;
    take(word(binarySize) + std::string("BIN\0", 4));
    binary.forEachPiece(take);
    return true;
}
