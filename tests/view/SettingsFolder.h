#pragma once

#include "support/ScratchFolder.h"

#include <QCoreApplication>
#include <QSettings>
#include <gtest/gtest.h>

/// A test whose settings, and whose desktop's data, are in a folder of its own.
class SettingsFolder : public testing::Test
{
protected:
    SettingsFolder()
    {
        QCoreApplication::setOrganizationName("VelloReader");
        QCoreApplication::setApplicationName("fltview");
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                           QString::fromStdString(folder.path("settings")));
        qputenv("XDG_DATA_HOME", QByteArray::fromStdString(folder.path("data")));
    }

    ~SettingsFolder() override { qunsetenv("XDG_DATA_HOME"); }

    ScratchFolder folder;
};
