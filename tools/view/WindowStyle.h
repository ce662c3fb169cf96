#pragma once

#include <QPalette>
#include <QString>

/// Light letters on dark, or the style of the desktop.
class WindowStyle
{
public:
    WindowStyle();

    /// Has all windows of the program be dark, or as the desktop has them.
    void setDark(bool isDark);

    /// For what is wrong or missing, on the ground of lists. @param palette of the list
    static QColor warningColor(QPalette const& palette);

private:
    QString styleOfDesktop;
    QPalette paletteOfDesktop;
};
