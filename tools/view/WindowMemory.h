#pragma once

class QMainWindow;

/// Size and docks of a window, from one start of the program to the next.
namespace WindowMemory
{

/// Gives a window what it had when it was closed last; leaves it alone if it never was.
void restore(QMainWindow& window);

void save(QMainWindow const& window);

} // namespace WindowMemory
