#include "records/FltRecordCategory.h"

#include "records/FltOpcode.h"
#include "records/FltRecordTable.h"
#include "records/FltRecordUnknown.h"

#include <gtest/gtest.h>
#include <memory>

namespace
{

TEST(FltRecordCategoryTest, EveryNameLeadsBackToItsCategory)
{
    for (FltRecordCategory const category : {FltRecordCategory::primary, FltRecordCategory::ancillary,
                                             FltRecordCategory::control, FltRecordCategory::palette})
        EXPECT_EQ(categoryOf(nameOf(category)), category);
    EXPECT_EQ(nameOf(FltRecordCategory::unknown), "");
    EXPECT_EQ(categoryOf(""), FltRecordCategory::unknown);
    EXPECT_EQ(categoryOf("SOMETHING"), FltRecordCategory::unknown);
}

TEST(FltRecordCategoryTest, EveryRecordSaysTheSameWithAndWithoutText)
{
    for (int opcode = 0; opcode <= FltOpcode::last; ++opcode)
        if (FltRecordRow const* const row = FltRecordTable::find(opcode)) {
            std::unique_ptr<FltRecord> const record(row->make(4, 1580));
            EXPECT_NE(record->getCategory(), FltRecordCategory::unknown) << opcode;
            EXPECT_EQ(record->getRecordCategory(), nameOf(record->getCategory())) << opcode;
        }
}

TEST(FltRecordCategoryTest, AnUnknownRecordIsOfTheCategoryThatItWasGiven)
{
    FltRecordUnknown record(115, 4);
    EXPECT_EQ(record.getCategory(), FltRecordCategory::unknown);
    record.setRecordCategory("PALETTE_RECORD");
    EXPECT_EQ(record.getCategory(), FltRecordCategory::palette);
}

} // namespace
