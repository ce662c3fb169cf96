#include "support/NoSkips.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInteraction.h>
#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    NoSkips::listenIfAsked();
    SoDB::init();
    SoInteraction::init();
    return RUN_ALL_TESTS();
}
