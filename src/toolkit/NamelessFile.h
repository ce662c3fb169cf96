#pragma once

#include <string>

/// Plain files that have no name until they get one: nothing is left of them however the program ends. Not
/// every file system knows them.
namespace NamelessFile
{

/// Opens one for writing, for its owner alone.
/// @param target where it is going to be
/// @return a descriptor, or -1 where there is no such thing
int open(std::string const& target);

/// Gives it a name that nobody has. @return 0, or the error number
int giveName(int descriptor, std::string const& name);

} // namespace NamelessFile
