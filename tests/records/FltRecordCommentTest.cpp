#include "records/FltRecordComment.h"

#include "support/RecordText.h"
#include "support/ShortRecords.h"

#include <gtest/gtest.h>

namespace
{

std::string const title = "\n COMMENT RECORD ";
std::string const ancillary = "ANCILLARY_RECORD";

TEST(FltRecordCommentTest, DecodesAndDumpsItsText)
{
    auto const comment =
        decodeLastAs<FltRecordComment>(FltWriter().add("Comment", {{"textDescription", "two\nlines"}}));
    ASSERT_NE(comment, nullptr);
    EXPECT_STREQ(comment->textDescription.get(), "two\nlines");
    EXPECT_EQ(dumpOf(*comment), frame(title, ancillary, 31, 13) + "textDescription: two\nlines\n");
}

TEST(FltRecordCommentTest, CommentOfLength4HasAnEmptyText)
{
    auto const comment = decodeLastAs<FltRecordComment>(FltWriter().add("Comment").addBytes("behind"));
    ASSERT_NE(comment, nullptr);
    EXPECT_STREQ(comment->textDescription.get(), "");
    EXPECT_EQ(dumpOf(*comment), frame(title, ancillary, 31, 4) + "textDescription: \n");
}

TEST(FltRecordCommentTest, TextThatHoldsAZeroPrintsUpToItAndIsKeptWhole)
{
    std::string const text("ab\0cd", 5);
    auto const comment =
        decodeLastAs<FltRecordComment>(FltWriter().add("Comment", {{"textDescription", text}}));
    ASSERT_NE(comment, nullptr);
    EXPECT_EQ(std::string(comment->textDescription.get(), 6), text + '\0');
    EXPECT_EQ(dumpOf(*comment), frame(title, ancillary, 31, 9) + "textDescription: ab\n");
}

TEST(FltRecordCommentTest, CommentShorterThanItsOwnHeadHasAnEmptyText)
{
    for (unsigned length : {1U, 2U, 3U}) {
        FltWriter flt;
        flt.add("Comment").claimLength(length).addBytes("behind");
        auto const comment = decodeLastAs<FltRecordComment>(flt);
        ASSERT_NE(comment, nullptr);
        EXPECT_EQ(comment->getLength(), length);
        EXPECT_STREQ(comment->textDescription.get(), "");
    }
}

TEST(FltRecordCommentTest, LongestCommentIsKeptAndDumpedWhole)
{
    std::string const text(65535 - 4, 'c');
    auto const comment = decodeLast(FltWriter().add("Comment", {{"textDescription", text}}));
    EXPECT_EQ(dumpOf(*comment), frame(title, ancillary, 31, 65535) + "textDescription: " + text + "\n");
}

TEST(FltRecordCommentTest, DumpBeforeDecodingHasAnEmptyText)
{
    FltRecordComment const comment(9);
    EXPECT_EQ(comment.textDescription, nullptr);
    EXPECT_EQ(dumpOf(comment), frame(title, ancillary, 31, 9) + "textDescription: \n");
}

} // namespace
