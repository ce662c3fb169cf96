#include "loader/FltLoadError.h"

#include <utility>

FltLoadError::FltLoadError(Kind kind, std::string file, std::string const& text, std::int64_t offset,
                           int systemError)
    : std::runtime_error(file.empty() ? text : file + ": " + text), whatKind(kind), fileName(std::move(file)),
      byteOffset(offset), errorNumber(systemError)
{
}

FltLoadError::~FltLoadError() = default;
FltLoadError::FltLoadError(FltLoadError const&) = default;
FltLoadError& FltLoadError::operator=(FltLoadError const&) = default;
