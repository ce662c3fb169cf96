#include "view/ShownCommand.h"

#include <gtest/gtest.h>

namespace
{

ShownCommand yard()
{
    ShownCommand command;
    command.database = "/data/yard.flt";
    command.size = QSize(640, 480);
    command.eye = SbVec3d(-10, 0.5, 2);
    command.lookAt = SbVec3d(0, 0, 1);
    command.background = QColor(194, 209, 224);
    return command;
}

TEST(ShownCommandTest, DrawsTheSamePicture)
{
    EXPECT_EQ("fltshot --size 640x480 --eye=-10,0.5,2 --look-at=0,0,1 --background '#c2d1e0' "
              "--output=yard.png /data/yard.flt",
              yard().text().toStdString());
}

TEST(ShownCommandTest, SaysWhatWasChosenAndQuotesNames)
{
    ShownCommand command = yard();
    command.database = "/data/my 'yard'.flt";
    command.lightsAll = true;
    command.isWireframe = true;
    command.fieldOfView = 90;
    command.loaderWords = QStringList{"--texture-path", "/data/my textures"};
    EXPECT_EQ("fltshot --size 640x480 --eye=-10,0.5,2 --look-at=0,0,1 --zoom 0.414214 --background '#c2d1e0' "
              "--light --wireframe --texture-path '/data/my textures' '--output=my '\\''yard'\\''.png' "
              "'/data/my '\\''yard'\\''.flt'",
              command.text().toStdString());
}

TEST(ShownCommandTest, KeepsPlacesFarFromTheZero)
{
    ShownCommand command = yard();
    command.eye = SbVec3d(500000.125, 4649776.25, 12);
    EXPECT_TRUE(command.text().contains("--eye=500000.125,4649776.25,12 "));
}

} // namespace
