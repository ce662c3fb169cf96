#include "view/LoadProgress.h"

#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <gtest/gtest.h>

namespace
{

class LoadProgressTest : public testing::Test
{
protected:
    LoadProgressTest()
    {
        auto* const layout = new QVBoxLayout(&window);
        layout->addWidget(progress);
        layout->addWidget(line);
        window.show();
    }

    /// Loads until it comes into sight.
    void goOnUntilShown() const
    {
        while (progress->isHidden())
            ASSERT_TRUE(progress->goOn("/data/town.flt", 1, 4));
    }

    QWidget window;
    LoadProgress* progress = new LoadProgress;
    QLineEdit* line = new QLineEdit;
};

TEST_F(LoadProgressTest, ComesIntoSightWithTheFileAndHowFarItIs)
{
    EXPECT_FALSE(progress->isLoading());
    {
        LoadProgress::Run const run(*progress, "/data/airfield.flt");
        EXPECT_TRUE(progress->isLoading());
        EXPECT_TRUE(progress->isHidden());
        goOnUntilShown();
        EXPECT_EQ("Loading town.flt", progress->findChild<QLabel*>()->text());
        EXPECT_EQ(250, progress->findChild<QProgressBar*>()->value());
    }
    EXPECT_FALSE(progress->isLoading());
    EXPECT_TRUE(progress->isHidden());
}

TEST_F(LoadProgressTest, IsCancelledByItsButton)
{
    LoadProgress::Run const run(*progress, "airfield.flt");
    goOnUntilShown();
    QTimer::singleShot(0, [this] { QTest::mouseClick(progress->findChild<QPushButton*>(), Qt::LeftButton); });
    while (progress->goOn("airfield.flt", 2, 4)) {
    }
    EXPECT_FALSE(progress->goOn("airfield.flt", 3, 4)) << "it stays cancelled";
}

TEST_F(LoadProgressTest, IsCancelledByEscapeAndByClosingTheWindow)
{
    for (bool const isClosing : {false, true}) {
        {
            LoadProgress::Run const run(*progress, "airfield.flt");
            QTimer::singleShot(0, [&] {
                if (isClosing)
                    window.close();
                else
                    QTest::keyClick(&window, Qt::Key_Escape);
            });
            while (progress->goOn("airfield.flt", 2, 4)) {
            }
        }
        EXPECT_EQ(isClosing, progress->isCloseWanted());
        EXPECT_TRUE(window.isVisible());
    }
}

TEST_F(LoadProgressTest, TakesNoOtherInputMeanwhile)
{
    LoadProgress::Run const run(*progress, "airfield.flt");
    bool isTyped = false;
    QTimer::singleShot(0, [&] {
        QTest::keyClicks(line, "text");
        isTyped = true;
    });
    while (!isTyped)
        EXPECT_TRUE(progress->goOn("airfield.flt", 2, 0));
    EXPECT_EQ("", line->text());
}

} // namespace
