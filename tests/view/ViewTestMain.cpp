#include "support/NoSkips.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInteraction.h>
#include <QApplication>
#include <cstdlib>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    NoSkips::listenIfAsked();
    ::setenv("QT_QPA_PLATFORM", "offscreen", 1);
    QApplication const application(argc, argv);
    SoDB::init();
    SoInteraction::init();
    return RUN_ALL_TESTS();
}
