#pragma once

#include "inspect/FltCheckFamily.h"
#include "textures/FltTexture.h"

#include <vector>

/// The pictures of textures: whether they can be read, and how large they are.
class FltCheckPictures : private FltCheckFamily
{
public:
    using FltCheckFamily::FltCheckFamily;

    /// @param textures those of the database's own that are in use, as they were looked for and decoded
    void check(std::vector<FltTexture> const& textures);

private:
    void checkPicture(FltTexture const& texture, std::int64_t offset);
};
