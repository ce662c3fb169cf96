#include "iv/TextureEmbedding.h"

#include "support/SceneNodes.h"

#include "toolkit/SoSilentField.h"

#include <Inventor/nodes/SoTexture2.h>

namespace
{

void embedOne(SoTexture2& texture)
{
    SbVec2s size(0, 0);
    int components = 0;
    if (texture.image.getValue(size, components) == nullptr || size[0] <= 0 || size[1] <= 0)
        return;
    texture.image.setDefault(FALSE);
    SoSilentField::set(texture.filename, "");
    texture.filename.setDefault(TRUE);
}

} // namespace

void TextureEmbedding::embed(SoNode* root)
{
    SceneNodes::forEach(root, [](SoNode& node) {
        if (node.isOfType(SoTexture2::getClassTypeId()))
            embedOne(static_cast<SoTexture2&>(node));
    });
}
