#include "visual/FltVisualFiles.h"

#include "support/CompleteDatabase.h"
#include "support/DeepChain.h"
#include "support/SmallStack.h"
#include "support/Text.h"

#include "messages/FltLimits.h"

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

TEST(FltVisualFiles, showAFileWholeThatStandsDeepFirstAndHigherThen)
{
    DeepChain const child(2, 200);
    FltWriter flt;
    flt.push();
    for (int level = 0; level < 1100; ++level)
        flt.add("Group").push();
    flt.add("ExternalReference", {{"asciiPath", DeepChain::nameOf(0)}});
    for (int level = 0; level < 1100; ++level)
        flt.pop();
    flt.add("ExternalReference", {{"asciiPath", DeepChain::nameOf(0)}}).pop();
    flt.save(child.folder.path("parent.flt"));
    Converted const converted(child.folder / "parent.flt");
    EXPECT_EQ(countOf(converted.messages, tooDeep), 1) << converted.messages;
    EXPECT_EQ(converted.triangles, 1U + 2U) << "the one file at the bottom, and both at the top";
}
