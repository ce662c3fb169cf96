#pragma once

#include <Inventor/SbVec2s.h>
#include <Inventor/nodes/SoTexture2.h>
#include <memory>
#include <string>
#include <vector>

/// A picture as the toolkit decoded it.
struct SoSharedPixels {
    SbVec2s size;
    int components = 0;
    std::vector<unsigned char> bytes;

    /// @param image an SbImage or an SoSFImage
    /// @return null if it is empty
    template <class Image>
    static std::shared_ptr<SoSharedPixels const> copyOf(Image const& image)
    {
        SbVec2s size;
        int components = 0;
        unsigned char const* const bytes = image.getValue(size, components);
        return bytes != nullptr ? copyOf(bytes, size, components) : nullptr;
    }

private:
    static std::shared_ptr<SoSharedPixels const> copyOf(unsigned char const* bytes, SbVec2s size,
                                                        int components);
};

/// Keeps the pixels of a node for as long as the toolkit's part of the node lives.
struct SoSharedPixelsKeeper {
    std::shared_ptr<SoSharedPixels const> kept;
};

/// A texture whose pixels may belong to several nodes, and whose name doesn't make the toolkit open a file.
/// It is written, and copied, as any other.
class SoSharedTexture final : private SoSharedPixelsKeeper, public SoTexture2
{
public:
    /// Gives the node a name.
    void setFileName(std::string const& name) { nameSilently(*this, name); }

    /// Gives the node its pixels. What is written is the name.
    void setPixels(std::shared_ptr<SoSharedPixels const> pixels);

    /// Names a texture without having the toolkit open the file.
    static void nameSilently(SoTexture2& texture, std::string const& name);
};
