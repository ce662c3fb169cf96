#include "shot/ContactSheet.h"

#include <gtest/gtest.h>

namespace
{

ContactSheet::Layout layoutOf(int count, int columns)
{
    ContactSheet::Layout layout;
    layout.count = count;
    layout.columns = columns;
    layout.width = 100;
    layout.height = 50;
    return layout;
}

} // namespace

TEST(ContactSheet, hasAboutAsManyColumnsAsRows)
{
    EXPECT_EQ(layoutOf(1, 0).columnCount(), 1);
    EXPECT_EQ(layoutOf(4, 0).columnCount(), 2);
    EXPECT_EQ(layoutOf(5, 0).columnCount(), 3);
    EXPECT_EQ(layoutOf(5, 2).columnCount(), 2);
    EXPECT_EQ(layoutOf(5, 99).columnCount(), 5);
    EXPECT_GT(layoutOf(5, 2).sheetHeight(), layoutOf(4, 2).sheetHeight());
}

TEST(ContactSheet, putsPicturesSideBySideAndThenBelow)
{
    ContactSheet sheet(layoutOf(3, 2));
    for (unsigned char const grey : {10, 20, 30}) {
        Picture picture(100, 50);
        picture.pixels.assign(picture.pixels.size(), grey);
        sheet.add(picture, "name");
    }
    EXPECT_EQ(sheet.picture().at(12, 12)[0], 10);
    EXPECT_EQ(sheet.picture().at(111, 61)[2], 10);
    EXPECT_EQ(sheet.picture().at(124, 12)[0], 20);
    EXPECT_EQ(sheet.picture().at(12, 12 + 82)[0], 30);
}

TEST(ContactSheet, writesNamesThatAreNoText)
{
    ContactSheet sheet(layoutOf(1, 1));
    sheet.addProblem("line\nline\t\xff", "\xff\xfe\n.flt");
    int dark = 0;
    for (int y = 62; y < 82; ++y)
        for (int x = 12; x < 112; ++x)
            dark += sheet.picture().at(x, y)[0] < 120 ? 1 : 0;
    EXPECT_GT(dark, 40);
}

TEST(ContactSheet, takesPlacesThatAreTooSmallForText)
{
    ContactSheet::Layout layout = layoutOf(1, 1);
    layout.width = 1;
    layout.height = 1;
    ContactSheet sheet(layout);
    sheet.addProblem("a long reason", "a long name");
    EXPECT_EQ(sheet.picture().at(12, 12)[0], 228);
}
