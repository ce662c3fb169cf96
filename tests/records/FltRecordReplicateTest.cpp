#include "records/FltRecordReplicate.h"

#include "support/RecordText.h"

#include <gtest/gtest.h>

namespace
{

TEST(FltRecordReplicateTest, ANegativeNumberOfReplicationsIsPrintedAsSuchAndTheReservedWordIsNotShown)
{
    auto const record =
        decodeLastAs<FltRecordReplicate>(FltWriter().addRaw(60, FltWriter::big32(-3) + FltWriter::big32(17)));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->numberOfReplications, -3);
    EXPECT_EQ(record->reserved, 17);
    EXPECT_EQ(dumpOf(*record),
              frame("\n REPLICATE RECORD ", "ANCILLARY_RECORD", 60, 12) + "numberOfReplications: -3\n");
}

} // namespace
