#include "view/DesktopRecent.h"

#include "SettingsFolder.h"

#include <QDir>
#include <QFile>

namespace
{

class DesktopRecentTest : public SettingsFolder
{
protected:
    QString listPath() const { return QString::fromStdString(folder.path("data")) + "/recently-used.xbel"; }

    QByteArray list() const
    {
        QFile file(listPath());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void write(QByteArray const& text) const
    {
        QDir().mkpath(QString::fromStdString(folder.path("data")));
        QFile file(listPath());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }
};

TEST_F(DesktopRecentTest, BeginsAListWithTheTypeAndTheProgramOfAFile)
{
    DesktopRecent::add("/data/my yard.flt");
    EXPECT_TRUE(list().contains("href=\"file:///data/my%20yard.flt\""));
    EXPECT_TRUE(list().contains("type=\"model/x-openflight\""));
    EXPECT_TRUE(list().contains("exec=\"'fltview %f'\""));
}

TEST_F(DesktopRecentTest, KeepsTheMarksOfOthersAndHasEachFileOnce)
{
    write("<?xml version=\"1.0\"?><xbel version=\"1.0\"><bookmark href=\"file:///a.txt\"/></xbel>");
    DesktopRecent::add("/data/yard.flt");
    DesktopRecent::add("/data/tower.flt");
    DesktopRecent::add("/data/yard.flt");
    QByteArray const marks = list();
    EXPECT_EQ(1, marks.count("file:///a.txt"));
    EXPECT_EQ(1, marks.count("file:///data/yard.flt"));
    EXPECT_LT(marks.indexOf("tower.flt"), marks.indexOf("yard.flt"));
}

TEST_F(DesktopRecentTest, LeavesAListAloneThatItDoesNotUnderstand)
{
    for (char const* text : {"<xbel><broken", "<other/>"}) {
        write(text);
        DesktopRecent::add("/data/yard.flt");
        EXPECT_EQ(text, list());
    }
}

} // namespace
