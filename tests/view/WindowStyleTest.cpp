#include "view/WindowStyle.h"

#include <QApplication>
#include <gtest/gtest.h>

namespace
{

int lightness(QPalette::ColorRole role)
{
    return QApplication::palette().color(role).lightness();
}

TEST(WindowStyleTest, IsDarkAndThenAsBefore)
{
    QPalette const before = QApplication::palette();
    WindowStyle style;
    style.setDark(true);
    EXPECT_LT(lightness(QPalette::Base), 60);
    EXPECT_LT(lightness(QPalette::Window), 60);
    EXPECT_GT(lightness(QPalette::Text), 200);
    EXPECT_GT(WindowStyle::warningColor(QApplication::palette()).lightness(), 150);
    style.setDark(false);
    EXPECT_EQ(before.color(QPalette::Base), QApplication::palette().color(QPalette::Base));
    EXPECT_LT(WindowStyle::warningColor(before).lightness(), 150);
}

} // namespace
