#pragma once

#include "iv/SceneForm.h"

#include <cstdint>
#include <cstdio>

class SoNode;

/// Writes scene graphs in every form that the program knows.
namespace SceneFile
{

/// Writes a scene. Whether the stream took everything its error flag tells.
/// @param root the scene; see SceneWriter::write()
/// @return the bytes that were written
std::uint64_t write(SoNode* root, FILE* stream, SceneForm const& form);

} // namespace SceneFile
