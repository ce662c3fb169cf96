#pragma once

#include <Inventor/SbColor.h>
#include <Inventor/SbVec3f.h>
#include <vector>

class SoSeparator;

namespace OverlayLines
{

/// Lines in a plain colour that can't be picked. @param ends two for each line @return not yet referenced
SoSeparator* make(std::vector<SbVec3f> const& ends, SbColor const& color, float width);

} // namespace OverlayLines
