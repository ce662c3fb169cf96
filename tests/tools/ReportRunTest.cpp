#include "convert/ReportRun.h"

#include "ReportExamples.h"

#include <gtest/gtest.h>

TEST(ReportRun, isOfNoUseToARunOfAnotherKind)
{
    EXPECT_TRUE(exampleRun().isLike(exampleRun()));
    EXPECT_FALSE(exampleRun().isLike(exampleRun("--lod lowest")));
    ReportRun other = exampleRun();
    other.part.count = 17;
    EXPECT_FALSE(exampleRun().isLike(other));
    other = exampleRun();
    other.version = "1.2.4";
    EXPECT_FALSE(exampleRun().isLike(other));
}
