#include "view/TexturePanel.h"

#include "LoadedViewDatabase.h"

#include <QApplication>
#include <QFileDialog>
#include <QImage>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <functional>

namespace
{

class TexturePanelTest : public LoadedViewDatabase
{
protected:
    TexturePanelTest() { panel.show(&loaded.textures, QString::fromStdString(folder.path(""))); }

    QString savePicture(char const* name) const
    {
        QImage picture(8, 4, QImage::Format_RGB32);
        picture.fill(Qt::red);
        EXPECT_TRUE(picture.save(QString::fromStdString(folder.path(name))));
        return QString::fromStdString(folder.path(name));
    }

    QPushButton& findButton() const { return *panel.findChild<QPushButton*>("find"); }
    QTreeWidgetItem& row() const { return *panel.findChild<QTreeWidget*>()->topLevelItem(0); }

    /// Presses "Find…", and chooses a file in the dialog that comes.
    void find(
        QString const& path, std::function<void()> const& next = [] {}) const
    {
        QTimer::singleShot(0, [&] {
            auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            ASSERT_NE(nullptr, dialog);
            dialog->selectFile(path);
            QTimer::singleShot(0, next);
            QMetaObject::invokeMethod(dialog, "accept");
        });
        QTest::mouseClick(&findButton(), Qt::LeftButton);
    }

    TexturePanel panel;
};

TEST_F(TexturePanelTest, SaysWhichTextureIsMissingAndOffersToFindIt)
{
    EXPECT_EQ("nowhere/poster.png", row().text(0).toStdString());
    EXPECT_EQ("missing", row().text(1).toStdString());
    EXPECT_TRUE(findButton().isEnabled());
}

TEST_F(TexturePanelTest, TakesTheFileThatIsChosenAndTellsItsFolder)
{
    QSignalSpy const told(&panel, &TexturePanel::found);
    find(savePicture("other.png"));
    EXPECT_EQ("8 x 4", row().text(1).toStdString());
    EXPECT_FALSE(findButton().isEnabled());
    ASSERT_EQ(1, told.count());
    EXPECT_EQ(QDir(QString::fromStdString(folder.path(""))), QDir(told.front().front().toString()));
}

TEST_F(TexturePanelTest, SaysThatAFileIsNoImageAndGoesOnWithoutIt)
{
    QFile text(QString::fromStdString(folder.write("text.png", "no image")));
    QString said;
    find(text.fileName(), [&said] {
        auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(nullptr, box);
        said = box->text();
        box->accept();
    });
    EXPECT_TRUE(said.endsWith("text.png can't be read as an image.")) << said.toStdString();
    EXPECT_EQ("missing", row().text(1).toStdString());
}

TEST_F(TexturePanelTest, FindsTheMissingOnesOfAFolder)
{
    savePicture("POSTER.PNG");
    QSignalSpy const told(&panel, &TexturePanel::found);
    EXPECT_EQ(1, panel.findIn(QString::fromStdString(folder.path(""))));
    EXPECT_EQ("8 x 4", row().text(1).toStdString());
    EXPECT_EQ(0, panel.findIn(QString::fromStdString(folder.path(""))));
    EXPECT_EQ(1, told.count()) << "of a folder in which something was found";
}

TEST_F(TexturePanelTest, IsEmptyWithoutAScene)
{
    panel.show(nullptr, {});
    EXPECT_EQ(0, panel.findChild<QTreeWidget*>()->topLevelItemCount());
    EXPECT_FALSE(findButton().isEnabled());
}

} // namespace
