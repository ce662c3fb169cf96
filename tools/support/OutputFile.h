#pragma once

#include <cstdio>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

/// A file that a program must never write into or replace.
struct KeptFile {
    std::string path;
    std::string what; ///< What it is to the user, such as "the input".
};

/// Where a program writes.
///
/// A plain file is written beside its target, without a name where the disk can do that, and takes the
/// target's place when it is whole: what stood there before stays until then, whatever happens, also if the
/// program is ended by Ctrl-C or the disk is full. The target's permissions are kept, and links are followed.
/// A device, a pipe or a terminal is written as such, and never removed or replaced. "-" is standard output.
///
/// One object at a time may have a file that isn't whole yet.
class OutputFile
{
public:
    /// What becomes of a plain file that stands there already.
    enum class Existing { replace, keep };

    /// Opens the output.
    /// @param kept     files which must not be written or replaced; those that aren't there don't matter
    /// @param existing if it is kept, a file that stands there is a reason not to write, also if it came
    ///                 after this one was begun
    /// @throw ToolError if it can't be written, with the exit code for wrong usage if it is one of @p kept
    explicit OutputFile(std::string path, std::vector<KeptFile> const& kept = {},
                        Existing existing = Existing::replace);

    /// Without commit() nothing is left of a plain file that was begun.
    ~OutputFile();

    OutputFile(OutputFile const&) = delete;
    OutputFile& operator=(OutputFile const&) = delete;

    FILE* stream() const { return file; }

    /// Whether the output goes to a terminal, which binary data would upset.
    bool isTerminal() const;

    /// Ends the output: a plain file takes its place.
    /// @throw ToolError if not all of it could be written; the target is as before then
    void commit();

    /// Whether an output is a stream, which has no place beside it: standard output, a pipe or a device.
    static bool isStream(std::string const& path);

    /// Why an existing file is kept; empty if no plain file stands there.
    static std::string problemOfReplacing(std::string const& path);

    /// Writes what a stream still holds back.
    /// @return 0, or the error number of this or of an earlier attempt
    static int flush(FILE* file);

    /// Makes sure that a name ends in one of these endings (".png"), in letters of any case. "-", a device
    /// and a pipe need none.
    /// @throw ToolError with the exit code for wrong usage
    static void checkEnding(std::string const& path, std::vector<std::string_view> const& endings);

private:
    void openStream();
    void openTemporary(mode_t permissions);
    int takePlace();
    int rename() const;
    void discard();
    [[noreturn]] void discardAndFail(int reason);
    [[noreturn]] void fail(int reason) const;

    Existing existing;
    std::string path;      ///< As it was given.
    std::string target;    ///< The plain file itself, behind all links; empty for a stream.
    std::string temporary; ///< The file that is being written; empty if there is none.
    FILE* file = nullptr;
};
