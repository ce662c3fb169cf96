#pragma once

#include "toolkit/VelloReaderExport.h"

#include <stdexcept>
#include <string>

/// Why a glTF file couldn't be written. what() is a whole sentence for a person: the file, what is wrong, and
/// what to do.
class VELLOREADER_API FltGltfError : public std::runtime_error
{
public:
    /// @param systemError as systemError()
    FltGltfError(std::string file, std::string const& text, int systemError = 0);
    ~FltGltfError() override;
    FltGltfError(FltGltfError const&);            ///< A copy.
    FltGltfError& operator=(FltGltfError const&); ///< The same.

    /// The name of the file as it was given; empty for bytes in memory.
    std::string const& file() const noexcept { return fileName; }

    /// The system's number of the fault (errno); 0 if the fault isn't the system's.
    int systemError() const noexcept { return errorNumber; }

private:
    std::string fileName;
    int errorNumber;
};
