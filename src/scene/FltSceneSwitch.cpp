#include "scene/FltSceneSwitch.h"

bool FltSceneSwitch::choose(int mask)
{
    if (mask < 0 || mask >= getMaskCount())
        return false;
    currentMask = mask;
    for (std::size_t i = 0; i < doors.size(); ++i)
        doors[i]->whichChild = shownBy(i);
    return true;
}
