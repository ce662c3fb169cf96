#include "records/FltRecordExternalReference.h"

#include "support/FlagLines.h"
#include "support/RecordText.h"

#include <gtest/gtest.h>

namespace
{

std::string body(std::string path, std::string const& rest)
{
    path.resize(200, '\0');
    return path + rest;
}

TEST(FltRecordExternalReferenceTest, DecodesAndDumpsEveryField)
{
    auto const record = decodeLastAs<FltRecordExternalReference>(
        FltWriter().addRaw(63, body("models/tree.flt", FltWriter::big32(-5) + FltWriter::big32(0xAA000001) +
                                                           FltWriter::big16(0x7777) + FltWriter::big16(-9))));
    ASSERT_NE(record, nullptr);
    EXPECT_STREQ(record->asciiPath, "models/tree.flt");
    EXPECT_EQ(record->reserved1, -5);
    EXPECT_EQ(record->Flags, 0xAA000001U);
    EXPECT_EQ(record->reserved2, -9) << "two bytes are skipped before it";
    EXPECT_EQ(dumpOf(*record), frame("\n EXTERNAL REFERENCE RECORD ", "PRIMARY_RECORD", 63, 216) +
                                   "asciiPath: models/tree.flt\n"
                                   "Flags: \n"
                                   "      Color palette override: 1\n"
                                   "      Material palette override: 0\n"
                                   "      Texture and texture mapping palette override: 1\n"
                                   "      Line style palette override: 0\n"
                                   "      Sound palette override: 1\n"
                                   "      Light source palette override: 0\n"
                                   "      Light point palette override: 1\n");
}

TEST(FltRecordExternalReferenceTest, EachFlagBitHasItsLine)
{
    expectFlagLines("ExternalReference", "Flags", 32,
                    {{31, "      Color palette override: "},
                     {30, "      Material palette override: "},
                     {29, "      Texture and texture mapping palette override: "},
                     {28, "      Line style palette override: "},
                     {27, "      Sound palette override: "},
                     {26, "      Light source palette override: "},
                     {25, "      Light point palette override: "}});
}

TEST(FltRecordExternalReferenceTest, APathThatFillsAll200BytesRunsOnIntoTheNextField)
{
    std::string const path(200, 'p');
    auto const record = decodeLast(FltWriter().addRaw(63, path + FltWriter::big32(0x4241)));
    EXPECT_NE(dumpOf(*record).find("\nasciiPath: " + path + "AB\nFlags: \n"), std::string::npos);
}

TEST(FltRecordExternalReferenceTest, TextWithoutAnyZeroEndsWithTheLastMember)
{
    auto const record = decodeLast(FltWriter().addRaw(63, std::string(212, 'x')));
    EXPECT_NE(dumpOf(*record).find("\nasciiPath: " + std::string(210, 'x') + "\nFlags: \n"),
              std::string::npos);
}

} // namespace
