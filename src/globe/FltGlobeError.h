#pragma once

#include "toolkit/VelloReaderExport.h"

#include <stdexcept>
#include <string>

/// Why a database couldn't be put on the globe. what() is a whole sentence for a person.
class VELLOREADER_API FltGlobeError : public std::runtime_error
{
public:
    /// @param reason as FltProjection::describe() gives it
    explicit FltGlobeError(std::string const& reason);
    ~FltGlobeError() override;
    FltGlobeError(FltGlobeError const&);            ///< A copy.
    FltGlobeError& operator=(FltGlobeError const&); ///< The same.
};
