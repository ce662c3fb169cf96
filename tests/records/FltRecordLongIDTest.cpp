#include "records/FltRecordLongID.h"

#include "support/RecordText.h"
#include "support/ShortRecords.h"

#include <gtest/gtest.h>

namespace
{

std::string const title = "\n LONG_ID RECORD ";
std::string const ancillary = "ANCILLARY_RECORD";

TEST(FltRecordLongIDTest, DecodesAndDumpsItsName)
{
    auto const name = decodeLastAs<FltRecordLongID>(FltWriter().add("LongID", {{"idASCII", "a long name"}}));
    ASSERT_NE(name, nullptr);
    EXPECT_STREQ(name->idASCII.get(), "a long name");
    EXPECT_EQ(dumpOf(*name), frame(title, ancillary, 33, 15) + "idASCII: a long name\n");
}

TEST(FltRecordLongIDTest, NameOfLength4HasAnEmptyName)
{
    auto const name = decodeLastAs<FltRecordLongID>(FltWriter().add("LongID").addBytes("behind"));
    ASSERT_NE(name, nullptr);
    EXPECT_STREQ(name->idASCII.get(), "");
    EXPECT_EQ(dumpOf(*name), frame(title, ancillary, 33, 4) + "idASCII: \n");
}

TEST(FltRecordLongIDTest, NameThatHoldsAZeroPrintsUpToItAndIsKeptWhole)
{
    std::string const text("ab\0cd", 5);
    auto const name = decodeLastAs<FltRecordLongID>(FltWriter().add("LongID", {{"idASCII", text}}));
    ASSERT_NE(name, nullptr);
    EXPECT_EQ(std::string(name->idASCII.get(), 6), text + '\0');
    EXPECT_EQ(dumpOf(*name), frame(title, ancillary, 33, 9) + "idASCII: ab\n");
}

TEST(FltRecordLongIDTest, NameShorterThanItsOwnHeadHasAnEmptyName)
{
    for (unsigned length : {1U, 2U, 3U}) {
        FltWriter flt;
        flt.add("LongID").claimLength(length).addBytes("behind");
        auto const name = decodeLastAs<FltRecordLongID>(flt);
        ASSERT_NE(name, nullptr);
        EXPECT_EQ(name->getLength(), length);
        EXPECT_STREQ(name->idASCII.get(), "");
    }
}

TEST(FltRecordLongIDTest, LongestNameIsKeptAndDumpedWhole)
{
    std::string const text(65535 - 4, 'c');
    auto const name = decodeLast(FltWriter().add("LongID", {{"idASCII", text}}));
    EXPECT_EQ(dumpOf(*name), frame(title, ancillary, 33, 65535) + "idASCII: " + text + "\n");
}

TEST(FltRecordLongIDTest, DumpBeforeDecodingHasAnEmptyName)
{
    FltRecordLongID const name(9);
    EXPECT_EQ(name.idASCII, nullptr);
    EXPECT_EQ(dumpOf(name), frame(title, ancillary, 33, 9) + "idASCII: \n");
}

} // namespace
