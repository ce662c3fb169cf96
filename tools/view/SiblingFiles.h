#pragma once

#include <QString>

namespace SiblingFiles
{

/// The database before or after one in its folder, by their names and the numbers in them; empty at the ends.
/// @param step 1 for the next, -1 for the previous one
QString beside(QString const& path, int step);

} // namespace SiblingFiles
