#include "scene/FltSceneFlipBook.h"

#include <Inventor/engines/SoEngineOutput.h>
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

void FltSceneFlipBook::fill(std::vector<SoNodeRef<SoNode>> const& frames)
{
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
}
