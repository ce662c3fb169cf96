#pragma once

#include <Inventor/nodes/SoTexture2.h>
#include <memory>
#include <string>
#include <utility>

/// Keeps the pixels of a node for as long as the toolkit's part of the node lives.
struct SoSharedPixelsKeeper {
    std::shared_ptr<void const> kept;
};

/// A texture whose pixels may belong to several nodes, and whose name doesn't make the toolkit open a file.
/// It is written, and copied, as any other.
class SoSharedTexture final : private SoSharedPixelsKeeper, public SoTexture2
{
public:
    /// Gives the node a name.
    void setFileName(std::string const& name) { nameSilently(*this, name); }

    /// Gives the node its pixels. What is written is the name.
    /// @param pixels have a width and a height, which fit into shorts, a number of components, and bytes: the
    ///               bottom row first, and nothing between the rows
    template <class Pixels>
    void setPixels(std::shared_ptr<Pixels const> pixels)
    {
        SbVec2s const size(static_cast<short>(pixels->width), static_cast<short>(pixels->height));
        int const components = pixels->components;
        unsigned char const* const bytes = pixels->bytes.data();
        share(size, components, bytes, std::move(pixels));
    }

    /// Names a texture without having the toolkit open the file.
    static void nameSilently(SoTexture2& texture, std::string const& name);

private:
    void share(SbVec2s size, int components, unsigned char const* bytes, std::shared_ptr<void const> owner);
};
