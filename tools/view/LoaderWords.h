#pragma once

#include <QStringList>

class FltLoader;

/// The options of a loader as words of a command line.
namespace LoaderWords
{

/// Those that every program offers and that aren't as by default, "--time", "dusk"; no log.
QStringList of(FltLoader const& loader);

} // namespace LoaderWords
