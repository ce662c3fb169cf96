#pragma once

#include "toolkit/VelloReaderExport.h"

#include <cstdint>
#include <stdexcept>
#include <string>

/// Why a database couldn't be loaded. what() is a whole sentence for a person: the file, what is wrong with
/// it, and what to do.
class VELLOREADER_API FltLoadError : public std::runtime_error
{
public:
    /// Why it couldn't be loaded.
    enum class Kind {
        cannotOpen,    ///< There is no such file, no permission, or it isn't a regular file.
        notOpenFlight, ///< It doesn't begin with a header record.
        revision,      ///< A revision of the format below 11.
        damaged,       ///< It begins like a database, but is damaged beyond use.
        outOfMemory,   ///< The memory doesn't suffice.
        cancelled,     ///< The progress callback said so.
        refused,       ///< An option forbids it, or asks for what can't be.
        failed,        ///< A fault of the library or the toolkit.
    };

    /// @param offset      of the byte where the fault is; -1 if it has no place
    /// @param systemError as systemError()
    FltLoadError(Kind kind, std::string file, std::string const& text, std::int64_t offset = -1,
                 int systemError = 0);
    ~FltLoadError() override;
    FltLoadError(FltLoadError const&);            ///< A copy.
    FltLoadError& operator=(FltLoadError const&); ///< The same.

    Kind kind() const noexcept { return whatKind; } ///< Why it couldn't be loaded, for programs.

    /// The name of the file as it was given.
    std::string const& file() const noexcept { return fileName; }

    /// Of the byte where the fault is; -1 if it has no place.
    std::int64_t offset() const noexcept { return byteOffset; }

    /// The system's number of the fault (errno), such as ENOENT; 0 if the fault isn't the system's.
    int systemError() const noexcept { return errorNumber; }

private:
    Kind whatKind;
    std::string fileName;
    std::int64_t byteOffset;
    int errorNumber;
};
