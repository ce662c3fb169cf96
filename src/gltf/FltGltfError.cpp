#include "gltf/FltGltfError.h"

#include <utility>

FltGltfError::FltGltfError(std::string file, std::string const& text, int systemError)
    : std::runtime_error(file.empty() ? text : file + ": " + text), fileName(std::move(file)),
      errorNumber(systemError)
{
}

FltGltfError::~FltGltfError() = default;
FltGltfError::FltGltfError(FltGltfError const&) = default;
FltGltfError& FltGltfError::operator=(FltGltfError const&) = default;
