#include "records/FltRecordCast.h"

#include "records/FltRecordFace.h"
#include "records/FltRecordVertex.h"

#include <gtest/gtest.h>

namespace
{

TEST(FltRecordCastTest, ARecordIsFoundAsItsOwnClassAndAsItsBases)
{
    FltRecordVertexColorNormal const vertex(56);
    FltRecord const* const record = &vertex;
    EXPECT_EQ(recordCast<FltRecordVertexColorNormal>(record), &vertex);
    EXPECT_EQ(recordCast<FltRecordVertexColor>(record), &vertex);
    EXPECT_EQ(recordCast<FltRecordFace>(record), nullptr);
    EXPECT_EQ(recordCast<FltRecordFace>(nullptr), nullptr);
}

} // namespace
