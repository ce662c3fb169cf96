#include "complete/FltCompleteScene.h"

#include <Inventor/SbRotation.h>
#include <cmath>

namespace
{

SbRotation turn(float x, float y, float z, double degrees)
{
    constexpr double radiansPerDegree = 0.017453292519943295;
    return {SbVec3f(x, y, z), static_cast<float>(degrees * radiansPerDegree)};
}

float scaleOf(FltCompleteDOF::Range const& range)
{
    return range.current != 0 ? static_cast<float>(range.current) : 1.0F;
}

} // namespace

bool FltCompleteSwitch::shows(int mask, std::size_t child) const
{
    if (mask < 0 || mask >= getMaskCount() || child / 32 >= wordsPerMask)
        return false;
    std::uint32_t const word = masks[static_cast<std::size_t>(mask) * wordsPerMask + child / 32];
    return (word >> child % 32 & 1) != 0;
}

bool FltCompleteSwitch::choose(int mask)
{
    if (mask < 0 || mask >= getMaskCount())
        return false;
    currentMask = mask;
    for (std::size_t i = 0; i < children.size(); ++i)
        children[i]->whichChild = shows(mask, i) ? SO_SWITCH_ALL : SO_SWITCH_NONE;
    return true;
}

bool FltCompleteSwitch::choose(std::vector<FltCompleteSwitch>& switches, std::string const& name, int mask)
{
    bool isChosen = false;
    for (FltCompleteSwitch& each : switches)
        if (each.name == name)
            isChosen = each.choose(mask) || isChosen;
    return isChosen;
}

void FltCompleteDOF::apply()
{
    transform->translation.setValue(static_cast<float>(translation[0].current),
                                    static_cast<float>(translation[1].current),
                                    static_cast<float>(translation[2].current));
    // The one on the left acts first.
    transform->rotation =
        turn(0, 1, 0, roll.current) * turn(1, 0, 0, pitch.current) * turn(0, 0, 1, yaw.current);
    transform->scaleFactor.setValue(scaleOf(scale[0]), scaleOf(scale[1]), scaleOf(scale[2]));
}
