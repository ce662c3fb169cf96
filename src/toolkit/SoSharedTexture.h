#pragma once

#include "toolkit/SoSharedPixels.h"

#include <Inventor/nodes/SoTexture2.h>
#include <memory>
#include <string>

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
