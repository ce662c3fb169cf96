#include "globe/FltGlobeError.h"

FltGlobeError::FltGlobeError(std::string const& reason)
    : std::runtime_error("the database can't be put on the globe: " + reason)
{
}

FltGlobeError::~FltGlobeError() = default;
FltGlobeError::FltGlobeError(FltGlobeError const&) = default;
FltGlobeError& FltGlobeError::operator=(FltGlobeError const&) = default;
