#include "records/FltRecordExtensionAttribute.h"

#include "support/RecordText.h"
#include "support/ShortRecords.h"

#include <gtest/gtest.h>

namespace
{

std::string const title = "\n EXTENSION ATTRIBUTE RECORD ";
std::string const ancillary = "ANCILLARY_RECORD";

FltWriter attribute(FltWriter::Fields const& fields)
{
    FltWriter flt;
    flt.add("ExtensionAttribute", fields);
    return flt;
}

TEST(FltRecordExtensionAttributeTest, DecodesEveryFieldAndKeepsTheDataOutOfTheDump)
{
    auto const record = decodeLastAs<FltRecordExtensionAttribute>(attribute({{"idASCII", "attr"},
                                                                             {"idSite", "site"},
                                                                             {"revision", 200},
                                                                             {"recordCode", 65535},
                                                                             {"extensionData", "data!"}}));
    ASSERT_NE(record, nullptr);
    EXPECT_STREQ(record->idASCII, "attr");
    EXPECT_STREQ(record->idSite, "site");
    EXPECT_EQ(record->revision, 200);
    EXPECT_EQ(record->recordCode, 65535);
    EXPECT_EQ(std::string(record->extensionData.get(), 5), "data!");
    EXPECT_EQ(dumpOf(*record), frame(title, ancillary, 100, 29) +
                                   "idASCII: attr\nidSite: site\nrevision: 200\nrecordCode: 65535\n");
}

TEST(FltRecordExtensionAttributeTest, AttributeOfLength24HasNoData)
{
    auto const record = decodeLastAs<FltRecordExtensionAttribute>(attribute({{"idASCII", "attr"}}));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->getLength(), 24U);
    EXPECT_NE(record->extensionData, nullptr) << "a buffer of no bytes";
    EXPECT_EQ(dumpOf(*record),
              frame(title, ancillary, 100, 24) + "idASCII: attr\nidSite: \nrevision: 0\nrecordCode: 0\n");
}

TEST(FltRecordExtensionAttributeTest, FullIdPrintsOnIntoTheSite)
{
    EXPECT_EQ(withoutFrame(dumpOf(*decodeLast(attribute({{"idASCII", "12345678"}, {"idSite", "site"}})))),
              "idASCII: 12345678site\nidSite: site\nrevision: 0\nrecordCode: 0\n");
}

TEST(FltRecordExtensionAttributeTest, TextWithoutAnyZeroBehindItEndsInFrontOfTheDataBuffer)
{
    FltWriter flt;
    flt.addRaw(100, std::string(20, 'x'));
    EXPECT_EQ(withoutFrame(dumpOf(*decodeLast(flt))), "idASCII: " + std::string(20, 'x') +
                                                          "\nidSite: " + std::string(12, 'x') +
                                                          "\nrevision: 120\nrecordCode: 30840\n");
}

TEST(FltRecordExtensionAttributeTest, ShortRecordsReadOnIntoTheFileAndThenZeros)
{
    expectShortRecordsToReadOn(
        attribute({{"idASCII", "12345678"}, {"idSite", "87654321"}, {"revision", 1}, {"recordCode", 2}}));
}

TEST(FltRecordExtensionAttributeTest, DecodedAgainFreesTheEarlierData)
{
    auto const record = decodeLastAs<FltRecordExtensionAttribute>(attribute({{"extensionData", "data!"}}));
    ASSERT_NE(record, nullptr);
    std::string bytes = attribute({{"extensionData", "other"}}).lastRecord();
    record->getPropertiesFromData(&bytes[0]);
    EXPECT_EQ(std::string(record->extensionData.get(), 5), "other");
}

} // namespace
