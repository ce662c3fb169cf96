#include "view/Banner.h"

#include <QPushButton>
#include <gtest/gtest.h>

namespace
{

TEST(BannerTest, IsOutOfSightUntilThereIsAProblem)
{
    Banner banner;
    EXPECT_TRUE(banner.isHidden());
    banner.tell("bad.flt: the file is empty.", {});
    EXPECT_FALSE(banner.isHidden());
    EXPECT_EQ("bad.flt: the file is empty.", banner.text());
    banner.findChild<QPushButton*>("closeBanner")->click();
    EXPECT_TRUE(banner.isHidden());
}

TEST(BannerTest, NamesWhatIsStillSeenAndTakesNoTextForMarkup)
{
    Banner banner;
    banner.tell("<b>.flt: cannot open.", "Still shown: the old one.");
    EXPECT_EQ("<b>.flt: cannot open.\n\nStill shown: the old one.", banner.text());
}

TEST(BannerTest, OffersTheMessagesAndACheck)
{
    Banner banner;
    int messages = 0, checks = 0;
    QObject::connect(&banner, &Banner::messagesWanted, [&] { ++messages; });
    QObject::connect(&banner, &Banner::checkWanted, [&] { ++checks; });
    banner.findChild<QPushButton*>("showMessages")->click();
    banner.findChild<QPushButton*>("checkFile")->click();
    EXPECT_EQ(1, messages);
    EXPECT_EQ(1, checks);
}

} // namespace
