#include "view/SelectionBox.h"

#include "view/OverlayLines.h"

#include <Inventor/nodes/SoSeparator.h>
#include <vector>

namespace
{

SbVec3f corner(SbBox3f const& box, int which)
{
    SbVec3f const& low = box.getMin();
    SbVec3f const& high = box.getMax();
    return {(which & 1) != 0 ? high[0] : low[0], (which & 2) != 0 ? high[1] : low[1],
            (which & 4) != 0 ? high[2] : low[2]};
}

} // namespace

SelectionBox::SelectionBox(SbBox3f const& box)
{
    std::vector<SbVec3f> ends;
    for (int from = 0; from < 8; ++from)
        for (int axis = 1; axis < 8; axis *= 2)
            if ((from & axis) == 0) {
                ends.push_back(corner(box, from));
                ends.push_back(corner(box, from | axis));
            }
    separator = OverlayLines::make(ends, SbColor(1.0f, 0.55f, 0.0f), 2);
    separator->ref();
}

SelectionBox::~SelectionBox()
{
    separator->unref();
}
