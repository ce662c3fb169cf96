#include "model/FltPaletteTexture.h"

#include "writer/FltWriter.h"

#include <gtest/gtest.h>

namespace
{

/// The number that a record of so many bytes, in the form with a short name, gives its texture.
int indexIn(std::size_t length)
{
    FltWriter flt;
    flt.addRaw(FltOpcode::texturePattern, std::string(80, 'n') + FltWriter::big32(7) + std::string(8, '\0'));
    flt.resizeLast(length);
    std::string const bytes = flt.bytes().substr(flt.lastOffset());
    return FltPaletteTexture({bytes.data(), static_cast<std::uint32_t>(bytes.size()),
                              static_cast<std::uint32_t>(FltOpcode::texturePattern), 0})
        .patternIndex;
}

} // namespace

TEST(FltPaletteTexture, HasTheFormWithAShortNameWhereItIsShort)
{
    EXPECT_EQ(indexIn(96), 7);
    EXPECT_EQ(indexIn(90), 7);
    EXPECT_EQ(indexIn(84), 0);
    EXPECT_EQ(indexIn(216), 0) << "a long name goes on there";
}
