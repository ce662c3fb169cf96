#include "vrml/FltVrmlPictures.h"

#include "textures/PictureAlpha.h"

#include <algorithm>
#include <cstddef>
#include <unordered_set>

namespace
{

/// Calls a function with each mesh of a visual once.
template <class Function>
void forEachMesh(FltVisualNode const& root, Function function)
{
    std::unordered_set<FltVisualNode const*> known{&root};
    std::vector<FltVisualNode const*> waiting{&root};
    while (!waiting.empty()) {
        FltVisualNode const& node = *waiting.back();
        waiting.pop_back();
        for (FltMesh const& mesh : node.meshes)
            function(mesh);
        for (auto child = node.children.rbegin(); child != node.children.rend(); ++child)
            if (*child != nullptr && (child->use_count() == 1 || known.insert(child->get()).second))
                waiting.push_back(child->get());
    }
}

void writeWraps(VrmlText& text, FltTextureAttributes const& attributes)
{
    using Wrap = FltTextureAttributes::Wrap;
    if (attributes.wrapU == Wrap::clamp)
        text.flag("repeatS", false);
    if (attributes.wrapV == Wrap::clamp)
        text.flag("repeatT", false);
}

} // namespace

std::shared_ptr<PicturePixels const> FltVrmlPicture::pixels() const
{
    if (!isOpaque)
        return texture->pixels;
    return std::make_shared<PicturePixels const>(withoutAlpha(*texture->pixels));
}

FltVrmlPictures::FltVrmlPictures(FltVisualNode const& root, std::vector<FltTexture> const& textures)
    : textures(textures)
{
    forEachMesh(root, [this](FltMesh const& mesh) {
        if (mesh.texture != FltMesh::none)
            add(mesh);
    });
}

FltTexture const& FltVrmlPictures::textureOf(FltMesh const& mesh) const
{
    return textures[static_cast<std::size_t>(mesh.texture)];
}

bool FltVrmlPictures::isOpaque(FltMesh const& mesh) const
{
    FltTexture const& texture = textureOf(mesh);
    return mesh.ignoresTextureAlpha && texture.pixels != nullptr && hasAlpha(*texture.pixels);
}

void FltVrmlPictures::add(FltMesh const& mesh)
{
    FltTexture const& texture = textureOf(mesh);
    bool const opaque = isOpaque(mesh);
    auto const [known, isNew] = numbers.try_emplace({texture.written, opaque}, list.size());
    if (isNew)
        list.push_back({&texture, opaque, texture.pixels != nullptr ? "" : texture.written});
}

int FltVrmlPictures::componentsOf(FltMesh const& mesh) const
{
    if (mesh.texture == FltMesh::none || textureOf(mesh).pixels == nullptr)
        return 0;
    return textureOf(mesh).pixels->components - (isOpaque(mesh) ? 1 : 0);
}

void FltVrmlPictures::write(VrmlText& text, VrmlNames& names, FltMesh const& mesh)
{
    std::size_t const number = numbers.at({textureOf(mesh).written, isOpaque(mesh)});
    FltVrmlPicture const& picture = list[number];
    if (!picture.url.empty()) {
        text.begin("texture ImageTexture");
        text.texts("url", {picture.url});
        writeWraps(text, picture.texture->attributes);
        text.end();
        return;
    }
    if (picture.texture->pixels == nullptr)
        return;
    std::string& name = embedded[number];
    if (!name.empty()) {
        text.field("texture", "USE " + name);
        return;
    }
    name = names.take("picture");
    text.begin("texture PixelTexture", name);
    text.image("image", *picture.pixels());
    writeWraps(text, picture.texture->attributes);
    text.end();
}

void FltVrmlPictures::writeOpacity(VrmlText& text, unsigned opacity)
{
    text.begin("texture PixelTexture");
    text.image("image", {1, 1, 2, {255, static_cast<unsigned char>(opacity)}});
    text.end();
}
