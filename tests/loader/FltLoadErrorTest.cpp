#include "loader/FltLoadError.h"

#include <gtest/gtest.h>

TEST(FltLoadError, SaysWhatWhereAndWhatToDo)
{
    FltLoadError const error(FltLoadError::Kind::damaged, "a.flt", "it is damaged. Fetch it again.", 12);
    EXPECT_STREQ(error.what(), "a.flt: it is damaged. Fetch it again.");
    EXPECT_EQ(error.kind(), FltLoadError::Kind::damaged);
    EXPECT_EQ(error.file(), "a.flt");
    EXPECT_EQ(error.offset(), 12);
    EXPECT_EQ(error.systemError(), 0);
    EXPECT_STREQ(FltLoadError(FltLoadError::Kind::failed, "", "it failed.").what(), "it failed.");
}
