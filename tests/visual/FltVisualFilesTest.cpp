#include "visual/FltVisualFiles.h"

#include "support/CompleteDatabase.h"
#include "support/DeepChain.h"
#include "support/SmallStack.h"
#include "support/Text.h"

#include "messages/FltLimits.h"

#include <algorithm>
#include <gtest/gtest.h>

using Outcome = FltVisualConversion::Outcome;

namespace
{

constexpr char tooDeep[] = "Levels that are nested too deeply are left out";

struct Converted {
    explicit Converted(std::string const& file)
    {
        StreamCapture const err(std::cerr);
        CompleteDatabase::Converted const result =
            CompleteDatabase::sceneOf(FltVisualConversion::convert(file, {}));
        messages = err.str();
        EXPECT_EQ(result.outcome, Outcome::converted);
        triangles = DrawnScene(result.root.get()).triangles.size();
    }

    std::string messages;
    std::size_t triangles = 0;
};

} // namespace

TEST(FltVisualFiles, countTheLevelsOfAllFilesOfAChain)
{
    DeepChain const chain(32, 200);
    Converted const converted(chain.first());
    EXPECT_EQ(countOf(converted.messages, "WARNING"), 1) << converted.messages;
    EXPECT_EQ(countOf(converted.messages, tooDeep), 1);
    EXPECT_NE(converted.messages.find("f5.flt"), std::string::npos) << "which has the first level of these";
    EXPECT_NE(converted.messages.find("byte offset"), std::string::npos);
    EXPECT_EQ(converted.triangles, FltLimits::hierarchyDepth / 200) << "the files above it are all there";
}

TEST(FltVisualFiles, keepAllOfALongChainOfFewLevels)
{
    DeepChain const chain(32, 30);
    Converted const converted(chain.first());
    EXPECT_EQ(converted.messages, "");
    EXPECT_EQ(converted.triangles, 32U);
}

TEST(FltVisualFiles, leaveOutWhatASmallStackCantHold)
{
    DeepChain const chain(32, 200);
    runOnStackOf(512U << 10, [&] {
        StreamCapture const err(std::cerr);
        CompleteDatabase::Converted const result =
            CompleteDatabase::sceneOf(FltVisualConversion::convert(chain.first(), {}));
        EXPECT_EQ(result.outcome, Outcome::converted);
        EXPECT_EQ(countOf(err.str(), tooDeep), 1) << err.str();
        EXPECT_GT(DrawnScene(result.root.get()).triangles.size(), 0U);
    });
}

namespace
{

/// What is drawn where a chain of two files stands below so many levels, and then below others.
Converted belowLevels(int first, int second)
{
    DeepChain const child(2, 200);
    FltWriter flt;
    flt.push();
    for (int const levels : {first, second}) {
        for (int level = 0; level < levels; ++level)
            flt.add("Group").push();
        flt.add("ExternalReference", {{"asciiPath", DeepChain::nameOf(0)}});
        for (int level = 0; level < levels; ++level)
            flt.pop();
    }
    flt.pop().save(child.folder.path("parent.flt"));
    return Converted(child.folder / "parent.flt");
}

} // namespace

TEST(FltVisualFiles, showAFileWholeThatStandsDeepFirstAndHigherThen)
{
    Converted const converted = belowLevels(1100, 0);
    EXPECT_EQ(countOf(converted.messages, tooDeep), 1) << converted.messages;
    EXPECT_EQ(converted.triangles, 1U + 2U) << "the one file at the bottom, and both at the top";
}

TEST(FltVisualFiles, areReadAgainBelowHalfAsManyLevelsAlone)
{
    EXPECT_EQ(belowLevels(1101, 550).triangles, 1U + 2U);
    EXPECT_EQ(belowLevels(1101, 551).triangles, 1U + 1U);
    EXPECT_EQ(belowLevels(1101, 700).triangles, 1U + 1U);
}

TEST(FltVisualFiles, areReadAgainForOtherPalettesAsOftenAsTheirSizeAllows)
{
    constexpr std::size_t size = std::size_t(1) << 21, longest = 0xffff, head = 4;
    CompleteDatabase child;
    std::vector<double> const square = child.square();
    child.begin();
    child.object(square).writer.pop();
    while (child.writer.bytes().size() < size)
        child.writer.addRaw(199,
                            std::string(std::min(longest, size - child.writer.bytes().size()) - head, 'x'));
    CompleteDatabase parent;
    parent.folder.write("child.flt", child.writer.bytes());
    parent.begin();
    for (std::uint32_t palettes = 0; palettes < 64; ++palettes) {
        std::uint32_t const flags = palettes >> 2 << 28 | (palettes & 3) << 25;
        parent.writer.add("ExternalReference", {{"asciiPath", "child.flt"}, {"Flags", double(flags)}});
    }
    FltVisualConversion::Result const result = parent.see();
    constexpr int ofItself = 16, ofAll = 32; // so often are 2 MiB in what all files together may have
    EXPECT_EQ(result.leftOut.at("external reference that can't be read"), 64 - (1 + ofItself + ofAll));
    EXPECT_NE(parent.messages.find("External files take over too many palettes"), std::string::npos);
}
