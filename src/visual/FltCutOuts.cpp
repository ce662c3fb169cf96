#include "visual/FltCutOuts.h"

#include "textures/PictureAlpha.h"

#include <algorithm>
#include <map>
#include <unordered_set>

namespace
{

/// What the alpha of each texture is. One without a picture may be anything.
std::vector<PictureAlpha> alphasOf(std::vector<FltTexture> const& textures)
{
    std::map<PicturePixels const*, PictureAlpha> known = {{nullptr, PictureAlpha::graded}};
    std::vector<PictureAlpha> alphas;
    alphas.reserve(textures.size());
    for (FltTexture const& texture : textures) {
        auto const [place, isNew] = known.emplace(texture.pixels.get(), PictureAlpha::none);
        if (isNew)
            place->second = alphaOf(*texture.pixels);
        alphas.push_back(place->second);
    }
    return alphas;
}

bool isCutOut(FltMesh const& mesh, std::vector<PictureAlpha> const& alphas)
{
    auto const alphaAt = [&](std::int32_t texture) { return alphas[static_cast<std::size_t>(texture)]; };
    return mesh.isBlended && mesh.texture != FltMesh::none && alphaAt(mesh.texture) == PictureAlpha::cutOut &&
           std::all_of(mesh.colors.begin(), mesh.colors.end(),
                       [](std::uint32_t color) { return (color & 0xff) == 0xff; }) &&
           std::all_of(mesh.layers.begin(), mesh.layers.end(), [&](FltMesh::Layer const& layer) {
               return alphaAt(layer.texture) != PictureAlpha::graded;
           });
}

void markMeshes(FltVisualNode& node, std::vector<PictureAlpha> const& alphas)
{
    for (FltMesh& mesh : node.meshes)
        if (isCutOut(mesh, alphas)) {
            mesh.isCutOut = true;
            mesh.isBlended = false;
        }
}

} // namespace

void FltCutOuts::mark(std::shared_ptr<FltVisualNode> const& root, std::vector<FltTexture> const& textures)
{
    std::vector<PictureAlpha> const alphas = alphasOf(textures);
    if (std::find(alphas.begin(), alphas.end(), PictureAlpha::cutOut) == alphas.end())
        return;
    std::vector<FltVisualNode*> open = {root.get()};
    std::unordered_set<FltVisualNode const*> sharedOnes;
    while (!open.empty()) {
        FltVisualNode& node = *open.back();
        open.pop_back();
        markMeshes(node, alphas);
        for (std::shared_ptr<FltVisualNode> const& child : node.children)
            if (child != nullptr && (child.use_count() == 1 || sharedOnes.insert(child.get()).second))
                open.push_back(child.get());
    }
}
