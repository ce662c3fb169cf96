#include "view/WindowMemory.h"

#include "SettingsFolder.h"

#include <QDockWidget>
#include <QMainWindow>

namespace
{

/// A window with a dock.
class DockedWindow : public QMainWindow
{
public:
    DockedWindow() : dock(new QDockWidget(this))
    {
        dock->setObjectName("dock");
        addDockWidget(Qt::LeftDockWidgetArea, dock);
        resize(300, 200);
    }

    QDockWidget* dock;
};

class WindowMemoryTest : public SettingsFolder
{
};

TEST_F(WindowMemoryTest, LeavesAWindowAloneTheFirstTime)
{
    DockedWindow window;
    WindowMemory::restore(window);
    EXPECT_EQ(QSize(300, 200), window.size());
    EXPECT_FALSE(window.dock->isHidden());
}

TEST_F(WindowMemoryTest, KeepsSizeAndDocks)
{
    {
        DockedWindow window;
        window.show();
        window.resize(420, 310);
        window.dock->hide();
        WindowMemory::save(window);
    }
    DockedWindow window;
    WindowMemory::restore(window);
    window.show();
    EXPECT_EQ(QSize(420, 310), window.size());
    EXPECT_TRUE(window.dock->isHidden());
}

} // namespace
