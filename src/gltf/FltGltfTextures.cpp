#include "gltf/FltGltfTextures.h"

#include "textures/PictureAlpha.h"

namespace
{

using Filter = FltTextureAttributes::Filter;
using Wrap = FltTextureAttributes::Wrap;

/// As the format numbers them.
constexpr int nearest = 9728, linear = 9729, nearestOfNearest = 9984, linearOfNearest = 9985,
              nearestOfLinear = 9986, linearOfLinear = 9987;
constexpr int clampToEdge = 33071, mirroredRepeat = 33648, repeat = 10497;

int minification(Filter filter)
{
    switch (filter) {
    case Filter::point:
        return nearest;
    case Filter::bilinear:
        return linear;
    case Filter::mipmapPoint:
        return nearestOfNearest;
    case Filter::mipmapLinear:
        return nearestOfLinear;
    case Filter::mipmapBilinear:
        return linearOfNearest;
    case Filter::mipmapTrilinear:
        break;
    }
    return linearOfLinear;
}

int magnification(Filter filter)
{
    return filter == Filter::point || filter == Filter::mipmapPoint ? nearest : linear;
}

int wrapping(Wrap wrap)
{
    switch (wrap) {
    case Wrap::clamp:
        return clampToEdge;
    case Wrap::mirror:
        return mirroredRepeat;
    case Wrap::repeat:
        break;
    }
    return repeat;
}

} // namespace

int FltGltfTextures::numberOf(std::int32_t texture, bool isOpaque)
{
    FltTexture const& used = (*this)[texture];
    int const image = used.pixels != nullptr ? imageOf(used, isOpaque) : none;
    if (image == none) {
        if (!used.name.empty())
            missingNames[used.name] = true;
        return none;
    }
    int const sampler = samplerOf(used.attributes);
    auto const [known, isNew] = numbers.try_emplace({image, sampler});
    if (isNew)
        known->second = document.add(GltfDocument::List::textures, {{"sampler", sampler}, {"source", image}});
    return known->second;
}

int FltGltfTextures::imageOf(FltTexture const& texture, bool isOpaque)
{
    auto const [known, isNew] =
        images.try_emplace({texture.pixels.get(), isOpaque && hasAlpha(*texture.pixels)}, none);
    if (!isNew)
        return known->second;
    GltfPicture picture(texture, isOpaque, source);
    if (picture.bytes.empty())
        return none;
    std::string const name = GltfValues::lastPart(texture.name);
    std::string const address = place(picture, name);
    GltfJson image = {{"name", name}};
    if (!address.empty()) {
        image["uri"] = address;
    } else {
        int const view = document.binary.add(GltfBinary::Content::anything);
        document.binary.bytes(view) = std::move(picture.bytes);
        image["bufferView"] = view;
        image["mimeType"] = picture.mimeType();
    }
    return known->second = document.add(GltfDocument::List::images, image);
}

int FltGltfTextures::samplerOf(FltTextureAttributes const& attributes)
{
    GltfJson const sampler = {{"magFilter", magnification(attributes.magnification)},
                              {"minFilter", minification(attributes.minification)},
                              {"wrapS", wrapping(attributes.wrapU)},
                              {"wrapT", wrapping(attributes.wrapV)}};
    auto const [known, isNew] = samplers.try_emplace(sampler.dump());
    if (isNew)
        known->second = document.add(GltfDocument::List::samplers, sampler);
    return known->second;
}

std::vector<std::string> FltGltfTextures::missing() const
{
    std::vector<std::string> names;
    names.reserve(missingNames.size());
    for (auto const& [name, isMissing] : missingNames)
        names.push_back(name);
    return names;
}
