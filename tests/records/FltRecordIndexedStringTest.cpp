#include "records/FltRecordIndexedString.h"

#include "records/FltFields.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>
#include <string>

namespace
{

TEST(FltRecordIndexedString, isANumberAndTheTextUpToTheRecordsEnd)
{
    std::string bytes = FltWriter::big16(132) + FltWriter::big16(12) + FltWriter::big32(6) + "open" + "next";
    FltRecordIndexedString string(12);
    FltFields::decode(string, bytes.data());
    EXPECT_EQ(string.index, 6U);
    EXPECT_STREQ(string.text.get(), "open");
}

TEST(FltRecordIndexedString, hasNoTextInARecordThatIsTooShort)
{
    std::string bytes(16, 'x');
    for (unsigned int const length : {0U, 4U, 8U}) {
        FltRecordIndexedString string(length);
        FltFields::decode(string, bytes.data());
        EXPECT_STREQ(string.text.get(), "") << length;
    }
}

} // namespace
