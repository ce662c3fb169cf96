#pragma once

#include <Inventor/SbVec3d.h>
#include <QColor>
#include <QSize>
#include <QStringList>

/// The command line that draws what is on the screen.
struct ShownCommand {
    QString database;
    QStringList loaderWords; ///< As LoaderWords gives them.
    QSize size;              ///< Of the picture, in pixels.
    SbVec3d eye;             ///< Where the camera is, in metres from the database's zero,
    SbVec3d lookAt;          ///< and where it looks to.
    double fieldOfView = 45; ///< Degrees of the smaller side.
    QColor background;
    bool lightsAll = false;
    bool isWireframe = false;

    QString text() const; ///< "fltshot --size 640x480 …", for a shell.
};
