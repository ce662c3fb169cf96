#include "scene/FltNodeInfos.h"

#include <limits>
#include <locale>
#include <sstream>

std::string FltNodeInfos::describe(FltVisualJoint const& joint)
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    auto const line = [&text](char const* name, FltDegreeOfFreedom::Range const& range) {
        text << '\n'
             << name << " min " << range.minimum << " max " << range.maximum << " current " << range.current
             << " step " << range.step << (range.isLimited ? " limited" : "");
    };
    text << "degree of freedom";
    line("x", joint.translation[0]);
    line("y", joint.translation[1]);
    line("z", joint.translation[2]);
    line("pitch", joint.pitch);
    line("roll", joint.roll);
    line("yaw", joint.yaw);
    line("x scale", joint.scale[0]);
    line("y scale", joint.scale[1]);
    line("z scale", joint.scale[2]);
    return text.str();
}

std::string FltNodeInfos::describeOffset(double const (&offset)[3])
{
    std::ostringstream text;
    text.imbue(std::locale::classic());
    text.precision(std::numeric_limits<double>::max_digits10);
    text << "offset " << offset[0] << ' ' << offset[1] << ' ' << offset[2];
    return text.str();
}

std::string FltNodeInfos::describe(FltVisualLevel const& level)
{
    return "significantSize " + std::to_string(level.significantSize);
}

std::string FltNodeInfos::describe(FltVisualSwitch const& choice)
{
    std::string text = "currentMask " + std::to_string(choice.currentMask) + "\nwordsPerMask " +
                       std::to_string(choice.wordsPerMask);
    for (std::size_t i = 0; i < choice.masks.size(); ++i)
        text += (i % choice.wordsPerMask == 0 ? "\nmask " : " ") + std::to_string(choice.masks[i]);
    for (std::size_t i = 0; i < choice.maskNames.size(); ++i)
        if (!choice.maskNames[i].empty())
            text += "\nmaskName " + std::to_string(i) + ' ' + choice.maskNames[i];
    return text;
}
