#pragma once

#include "iv/SceneForm.h"

#include "vrml/FltVrmlWriter.h"

#include <cstdint>
#include <cstdio>

class SoNode;

/// Writes scenes in every form that the program knows.
namespace SceneFile
{

/// Writes a scene graph. Whether the stream took everything its error flag tells. VRML97 is what the toolkit
/// makes of it, which knows less than FltVrmlWriter: that is for what has no visual.
/// @param root the scene; see SceneWriter::write()
/// @return the bytes that were written
std::uint64_t write(SoNode* root, FILE* stream, SceneForm const& form);

/// Writes a visual as VRML97.
/// @param addressOf see FltVrmlWriter
/// @return the bytes that were written
std::uint64_t write(FltVrmlWriter& vrml, FltVrmlWriter::AddressOf const& addressOf, FILE* stream,
                    SceneForm const& form);

} // namespace SceneFile
