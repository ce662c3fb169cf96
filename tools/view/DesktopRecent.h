#pragma once

#include <QString>

/// The list of recent files that desktops show in launchers and file dialogs.
namespace DesktopRecent
{

/// Adds a database, or makes it the most recent one. A list that can't be read or written stays as it is.
void add(QString const& path);

} // namespace DesktopRecent
