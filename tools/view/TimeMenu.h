#pragma once

#include "loader/FltLoader.h"

#include <QMenu>

/// The times of day, one of which is shown.
class TimeMenu : public QMenu
{
    Q_OBJECT

public:
    /// @param time the one that is chosen at first
    explicit TimeMenu(FltLoader::TimeOfDay time, QWidget* parent = nullptr);

signals:
    void chosen(FltLoader::TimeOfDay time);
};
