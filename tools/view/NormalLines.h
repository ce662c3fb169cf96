#pragma once

class SbViewportRegion;
class SoNode;
class SoSeparator;

namespace NormalLines
{

/// A line for each normal of the face sets in a scene that are drawn: at the corners where they have normals
/// of their own, else one in the middle of each face. After half a million lines the rest is left out.
/// @return not yet referenced
SoSeparator* make(SoNode* scene, SbViewportRegion const& region);

} // namespace NormalLines
