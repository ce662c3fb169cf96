#include "gltf/FltGltfExtras.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

namespace
{

using GltfValues::readable;

GltfJson textsOf(std::vector<std::string> const& texts)
{
    GltfJson list = GltfJson::array();
    for (std::string const& text : texts)
        list.push_back(GltfValues::text(text));
    return list;
}

/// The lines of a comment, since its ends of lines would be blanks otherwise.
GltfJson linesOf(std::string const& comment)
{
    GltfJson lines = GltfJson::array();
    for (std::size_t begin = 0; begin <= comment.size();) {
        std::size_t const end = std::min(comment.find('\n', begin), comment.size());
        lines.push_back(GltfValues::text(std::string_view(comment).substr(begin, end - begin)));
        begin = end + 1;
    }
    return lines;
}

GltfJson rangeOf(FltDegreeOfFreedom::Range const& range)
{
    return {{"minimum", readable(range.minimum)},
            {"maximum", readable(range.maximum)},
            {"current", readable(range.current)},
            {"step", readable(range.step)},
            {"isLimited", range.isLimited}};
}

GltfJson of(FltVisualSwitch const& choice, std::size_t children)
{
    constexpr std::size_t childrenOfAWord = 32;
    std::size_t const told = std::min(children, childrenOfAWord * choice.wordsPerMask);
    GltfJson masks = GltfJson::array();
    for (int mask = 0; mask < choice.getMaskCount(); ++mask) {
        GltfJson shown = GltfJson::array();
        for (std::size_t child = 0; child < told; ++child)
            if (choice.shows(mask, child))
                shown.push_back(child);
        masks.push_back(std::move(shown));
    }
    return {{"current", choice.currentMask},
            {"masks", std::move(masks)},
            {"maskNames", textsOf(choice.maskNames)},
            {"children", children}};
}

GltfJson of(FltVisualLevels const& levels, SbVec3d const& zero)
{
    GltfJson told = {{"distances", GltfJson::array()}};
    for (double const distance : levels.distances)
        told["distances"].push_back(readable(distance));
    if (levels.center)
        told["center"] = GltfValues::list(SbVec3d(*levels.center) - zero);
    if (!levels.nextStays.empty())
        told["nextStays"] = levels.nextStays;
    return told;
}

GltfJson of(FltVisualFlipBook const& book)
{
    GltfJson frames = GltfJson::array();
    GltfJson seconds = GltfJson::array();
    for (FltVisualFlipBook::Step const& step : book.steps) {
        frames.push_back(step.frame);
        seconds.push_back(readable(step.seconds));
    }
    return {{"frames", std::move(frames)}, {"seconds", std::move(seconds)}, {"loops", book.loops}};
}

GltfJson of(FltVisualText const& text, SbVec3d const& zero)
{
    using Alignment = FltVisualText::Alignment;
    auto const part = [&text](unsigned shift) { return text.color >> shift & 0xff; };
    return {{"lines", textsOf(text.lines)},
            {"place", GltfValues::list(text.place - zero)},
            {"size", readable(static_cast<double>(text.size))},
            {"isLying", text.isLying},
            {"alignment", text.alignment == Alignment::right    ? "right"
                          : text.alignment == Alignment::center ? "center"
                                                                : "left"},
            {"color", {part(24), part(16), part(8)}}};
}

} // namespace

GltfJson FltGltfExtras::of(FltVisualNode const& node, SbVec3d const& zero)
{
    GltfJson extras = GltfJson::object();
    if (node.record.offset != FltVisualNode::Record::none)
        extras["record"] = {{"file", node.record.file}, {"offset", node.record.offset}};
    for (std::string const& comment : node.comments)
        extras["comments"].push_back(linesOf(comment));
    if (auto const* const choice = node.as<FltVisualSwitch>())
        extras["switch"] = ::of(*choice, node.children.size());
    if (auto const* const level = node.as<FltVisualLevel>())
        extras["significantSize"] = readable(level->significantSize);
    if (auto const* const levels = node.as<FltVisualLevels>())
        extras["levels"] = ::of(*levels, zero);
    if (auto const* const turning = node.as<FltVisualTurning>())
        extras["turning"] = turning->isAboutPoint ? "point" : "axis";
    if (auto const* const book = node.as<FltVisualFlipBook>())
        extras["flipBook"] = ::of(*book);
    if (auto const* const text = node.as<FltVisualText>())
        extras["text"] = ::of(*text, zero);
    return extras;
}

GltfJson FltGltfExtras::of(FltVisualJoint const& joint)
{
    GltfJson ranges = GltfJson::object();
    char const* const axes[] = {"x", "y", "z"};
    for (std::size_t axis = 0; axis < 3; ++axis)
        ranges["translation"][axes[axis]] = rangeOf(joint.translation[axis]);
    ranges["pitch"] = rangeOf(joint.pitch);
    ranges["roll"] = rangeOf(joint.roll);
    ranges["yaw"] = rangeOf(joint.yaw);
    for (std::size_t axis = 0; axis < 3; ++axis)
        ranges["scale"][axes[axis]] = rangeOf(joint.scale[axis]);
    return ranges;
}

GltfJson FltGltfExtras::ofWhole(FltVisual const& visual, SbVec3d const& subtracted)
{
    FltDatabaseInfo const& info = visual.info;
    GltfJson files = GltfJson::array();
    for (std::string const& file : visual.files)
        files.push_back(GltfValues::lastPart(file));
    GltfJson origin = {{"place", GltfValues::list(subtracted)},
                       {"metresPerUnit", readable(visual.metresPerUnit)},
                       {"latitude", readable(info.originLatitude)},
                       {"longitude", readable(info.originLongitude)},
                       {"projection", info.projection},
                       {"ellipsoid", info.ellipsoid},
                       {"unit", FltDatabaseInfo::nameOf(info.unit)}};
    return {{"origin", std::move(origin)}, {"files", std::move(files)}};
}

GltfJson FltGltfExtras::of(FltGlobeFrame const& frame)
{
    GltfJson matrix = GltfJson::array();
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 4; ++column)
            matrix.push_back(frame.matrix()[row][column]);
    return {{"latitude", frame.place().latitude},
            {"longitude", frame.place().longitude},
            {"height", frame.place().height},
            {"matrix", std::move(matrix)}};
}
