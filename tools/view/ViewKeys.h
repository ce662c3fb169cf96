#pragma once

#include "support/ProgramDescription.h"

#include <QKeySequence>
#include <string_view>
#include <vector>

class QAction;

/// What keys and the mouse do in the window: menus, tool tips, the sheet of help and the manual page all have
/// it from here.
namespace ViewKeys
{

/// All rows, in the order of the sheet.
std::vector<ProgramKey> const& all();

/// The keys of a command, which has a row; the first is the one that menus show.
QList<QKeySequence> keysOf(std::string_view command);

/// Gives an action the keys of a command, and tool and status tips that say what it does.
void assign(QAction& action, std::string_view command);

} // namespace ViewKeys
