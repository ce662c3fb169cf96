#include "view/WindowMemory.h"

#include <QMainWindow>
#include <QSettings>

namespace
{

constexpr char geometry[] = "window/geometry";
constexpr char docks[] = "window/docks";
constexpr int version = 1; ///< Of the docks: those of another one aren't taken.

} // namespace

void WindowMemory::restore(QMainWindow& window)
{
    QSettings const settings;
    window.restoreGeometry(settings.value(geometry).toByteArray());
    window.restoreState(settings.value(docks).toByteArray(), version);
}

void WindowMemory::save(QMainWindow const& window)
{
    QSettings settings;
    settings.setValue(geometry, window.saveGeometry());
    settings.setValue(docks, window.saveState(version));
}
