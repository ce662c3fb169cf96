#include "view/InputGate.h"

#include <QAction>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QVBoxLayout>
#include <gtest/gtest.h>
#include <optional>

namespace
{

class InputGateTest : public testing::Test
{
protected:
    InputGateTest()
    {
        auto* const layout = new QVBoxLayout(&window);
        for (QWidget* widget :
             {static_cast<QWidget*>(&open), static_cast<QWidget*>(&other), static_cast<QWidget*>(&line)})
            layout->addWidget(widget);
        for (QPushButton* button : {&open, &other})
            QObject::connect(button, &QPushButton::clicked, [this, button] { clicked << button; });
        window.addAction(&action);
        action.setShortcut(Qt::CTRL + Qt::Key_O);
        QObject::connect(&action, &QAction::triggered, [this] { ++triggered; });
        window.show();
        gate.emplace(open);
        QObject::connect(&*gate, &InputGate::escaped, [this] { ++escaped; });
    }

    QWidget window;
    QPushButton open{&window}, other{&window};
    QLineEdit line{&window};
    QAction action;
    QList<QPushButton*> clicked;
    int triggered = 0, escaped = 0;
    std::optional<InputGate> gate;
};

TEST_F(InputGateTest, LetsTheMouseReachOneWidgetAlone)
{
    QTest::mouseClick(&other, Qt::LeftButton);
    QTest::mouseClick(&open, Qt::LeftButton);
    EXPECT_EQ((QList<QPushButton*>{&open}), clicked);
    gate.reset();
    QTest::mouseClick(&other, Qt::LeftButton);
    EXPECT_EQ((QList<QPushButton*>{&open, &other}), clicked);
}

TEST_F(InputGateTest, TakesNoKeysButEscape)
{
    QTest::keyClicks(&line, "text");
    QTest::keyClick(&line, Qt::Key_O, Qt::ControlModifier);
    EXPECT_EQ("", line.text());
    EXPECT_EQ(0, triggered);
    EXPECT_EQ(0, escaped);
    QTest::keyClick(&line, Qt::Key_Escape);
    EXPECT_EQ(1, escaped);
    gate.reset();
    QTest::keyClicks(&line, "text");
    EXPECT_EQ("text", line.text());
}

TEST_F(InputGateTest, KeepsAWindowOpenThatSomebodyWantsToCloseAndSaysSo)
{
    EXPECT_FALSE(gate->isCloseWanted());
    EXPECT_FALSE(window.close());
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(gate->isCloseWanted());
    EXPECT_EQ(1, escaped);
    gate.reset();
    EXPECT_TRUE(window.close());
}

} // namespace
