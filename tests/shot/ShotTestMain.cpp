#include "support/NoSkips.h"

#include "shot/EglOffscreen.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInteraction.h>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    NoSkips::listenIfAsked();
    EglOffscreen::install();
    SoDB::init();
    SoInteraction::init();
    return RUN_ALL_TESTS();
}
