#include "scene/FltSceneFlipBook.h"

#include <Inventor/engines/SoEngineOutput.h>
#include <Inventor/engines/SoOneShot.h>
#include <Inventor/engines/SoTimeCounter.h>
#include <algorithm>

namespace
{

/// What counts the children of a blinker.
SoTimeCounter* counterOf(SoBlinker& blinker)
{
    SoEngineOutput* output = nullptr;
    if (!blinker.whichChild.getConnectedEngine(output))
        return nullptr;
    SoFieldContainer* const engine = output->getContainer();
    return engine->isOfType(SoTimeCounter::getClassTypeId()) ? static_cast<SoTimeCounter*>(engine) : nullptr;
}

} // namespace

SoBlinker* FltSceneFlipBook::addBlinker(std::vector<SoNodeRef<SoNode>> const& frames)
{
    SoBlinker* const blinker = blinkers.emplace_back(new SoBlinker).get();
    blinker->on = FALSE;
    blinker->speed = static_cast<float>(1 / seconds());
    for (Step const& step : steps)
        blinker->addChild(frames[step.frame].get());
    bool const areEven = std::all_of(steps.begin(), steps.end(), [this](Step const& step) {
        return step.seconds == steps.front().seconds;
    });
    SoTimeCounter* const counter = areEven ? nullptr : counterOf(*blinker);
    for (std::size_t i = 0; counter != nullptr && i < steps.size(); ++i)
        counter->duty.set1Value(static_cast<int>(i), static_cast<float>(steps[i].seconds));
    auto const shown =
        std::find_if(steps.begin(), steps.end(), [](Step const& step) { return step.frame == first; });
    blinker->whichChild = static_cast<int>(shown - steps.begin());
    return blinker;
}

void FltSceneFlipBook::play(bool isPlaying)
{
    for (SoNodeRef<SoBlinker> const& blinker : blinkers)
        blinker->on.disconnect();
    bool const hasEnd = isPlaying && loops != 0;
    // It lives as long as a blinker is connected with it.
    SoOneShot* const clock = hasEnd ? new SoOneShot : nullptr;
    if (hasEnd) {
        clock->duration = SbTime(loops * seconds());
        clock->trigger.touch();
    }
    for (SoNodeRef<SoBlinker> const& blinker : blinkers)
        if (hasEnd)
            blinker->on.connectFrom(&clock->isActive);
        else
            blinker->on = isPlaying;
}
