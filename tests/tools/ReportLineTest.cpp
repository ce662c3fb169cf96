#include "convert/ReportLine.h"

#include "ReportExamples.h"

#include <gtest/gtest.h>
#include <limits>

TEST(ReportLine, isReadAsItWasWritten)
{
    std::string const text = exampleLine().text();
    EXPECT_EQ(text.find('\n'), text.size() - 1);
    std::optional<ReportLine> const read = ReportLine::from(text);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->text(), text);
    EXPECT_EQ(read->facts.needs, exampleLine().facts.needs);
    EXPECT_EQ(read->facts.box->most[0], 1e6);
    EXPECT_EQ(read->facts.messages[2], 3U);
}

TEST(ReportLine, takesWhatNoTextHolds)
{
    ReportLine strange = exampleLine("\xff\n\u009b.flt");
    strange.facts.latitude = std::numeric_limits<double>::quiet_NaN();
    strange.facts.longitude = std::numeric_limits<double>::infinity();
    std::string const text = strange.text();
    EXPECT_EQ(text.find('\n'), text.size() - 1);
    std::optional<ReportLine> const read = ReportLine::from(text);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->facts.latitude, 0);
    EXPECT_EQ(read->text(), text);
}

TEST(ReportLine, isAbsentIfItIsNotWhole)
{
    std::string const text = exampleLine().text();
    for (std::size_t size = 0; size + 2 < text.size(); ++size)
        EXPECT_FALSE(ReportLine::from(std::string_view(text).substr(0, size))) << size;
    for (char const* const other : {"{}", "[]", "null", "{\"input\":1}", "{\"run\":{}}"})
        EXPECT_FALSE(ReportLine::from(other)) << other;
}
