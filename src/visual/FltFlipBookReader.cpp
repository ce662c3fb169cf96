#include "visual/FltFlipBookReader.h"

#include "records/FltOpcode.h"
#include "records/FltRecordGroupAndObject.h"

#include <algorithm>
#include <cmath>

namespace
{

constexpr std::uint32_t forwardFlag = 0x40000000;
constexpr std::uint32_t swingFlag = 0x20000000;
constexpr std::uint32_t backwardFlag = 0x02000000;

/// Of a loop, where the record has none.
constexpr double usualSeconds = 1;

/// No frame shows longer: nobody waits for it.
constexpr double mostSeconds = 1e6;

bool isDuration(float seconds)
{
    return seconds > 0 && static_cast<double>(seconds) <= mostSeconds;
}

/// How long the frames show: the last one has a time of its own, and the others share what is left.
void setTimes(FltVisualFlipBook& book, std::size_t last, FltRecordAnimatedGroup const& group)
{
    double const loop =
        isDuration(group.loopDuration) ? static_cast<double>(group.loopDuration) : usualSeconds;
    auto const count = static_cast<double>(book.steps.size());
    double const own = static_cast<double>(group.lastFrameDuration);
    bool const hasOwn = isDuration(group.lastFrameDuration);
    double const others = hasOwn && own < loop ? (loop - own) / (count - 1) : loop / count;
    for (FltVisualFlipBook::Step& step : book.steps)
        step.seconds = others;
    if (hasOwn)
        book.steps[last].seconds = own;
}

} // namespace

bool FltFlipBookReader::isAnimated(FltRecordView const& record)
{
    return record.opcode == FltOpcode::group &&
           (FltDecoded<FltRecordGroup>(record).flags & (forwardFlag | swingFlag | backwardFlag)) != 0;
}

std::optional<FltVisualFlipBook> FltFlipBookReader::read(FltRecordView const& record, int revision,
                                                         std::size_t frames)
{
    if (frames < 2)
        return std::nullopt;
    FltRecordAnimatedGroup group(record.classLength());
    group.revision = revision;
    record.decodeFieldsTo(group);
    FltVisualFlipBook book;
    for (std::size_t frame = 0; frame < frames; ++frame)
        book.steps.push_back({frame, 0});
    if ((group.flags & backwardFlag) != 0 && (group.flags & forwardFlag) == 0)
        std::reverse(book.steps.begin(), book.steps.end());
    if ((group.flags & swingFlag) != 0) // back again, without the frames at both ends
        for (std::size_t step = frames - 2; step > 0; --step)
            book.steps.push_back(book.steps[step]);
    book.loops = static_cast<std::uint32_t>(std::max(group.loopCount, 0));
    setTimes(book, frames - 1, group);
    return book;
}
