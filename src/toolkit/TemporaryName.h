#pragma once

#include <string>
#include <vector>

/// Names of files that aren't whole yet. They tell who writes them: the host, the process there, and the job
/// of a batch system, so that nobody takes away what another one is writing.
namespace TemporaryName
{

/// A name beside a file that nobody uses.
std::string beside(std::string const& target);

/// Removes what was left of files that somebody began to write: those whose process is gone on this host, and
/// those that are older than a day, wherever they come from.
/// @param targets the files. What lies beside them for others isn't touched
void removeAbandoned(std::vector<std::string> const& targets);

/// The same for all that lies in a directory, which needn't be there.
void removeAbandonedIn(std::string const& directory);

} // namespace TemporaryName
