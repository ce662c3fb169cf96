#pragma once

class SoNode;

/// Has a scene carry its pictures, so that a file of it needs no others.
namespace TextureEmbedding
{

/// Has every texture that was found be written with its pixels instead of its name. One that wasn't found
/// keeps its name.
void embed(SoNode* root);

} // namespace TextureEmbedding
