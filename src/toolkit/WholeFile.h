#pragma once

#include <cstdio>
#include <string>
#include <vector>

/// A plain file that takes its place when it is whole. Until then, whatever stood there before stays. It is
/// written without a name where the disk can do that, and has one of TemporaryName otherwise.
///
/// Errors are those of the system (errno).
class WholeFile
{
public:
    /// Begins a file beside the place that it is going to have.
    explicit WholeFile(std::string path);

    /// Without commit() nothing is left of it.
    ~WholeFile();

    WholeFile(WholeFile const&) = delete;
    WholeFile& operator=(WholeFile const&) = delete;

    /// Null if the file can't be written.
    FILE* stream() const { return file; }

    /// Why the file can't be written; 0 if nothing is known against it.
    int problem() const { return reason; }

    /// Ends the writing, so that many files can be whole before the first one takes its place.
    /// @return 0, or the reason why the file isn't whole
    int close();

    /// Gives the file its place, after its end if that isn't there yet. @return 0, or the reason why it
    /// doesn't get it
    int commit();

    /// Whether two names are those of one file that is there.
    static bool areOne(std::string const& first, std::string const& second);

private:
    std::string path;
    std::string temporary;
    FILE* file = nullptr;
    int reason = 0;
};
