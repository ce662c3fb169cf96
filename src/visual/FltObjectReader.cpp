#include "visual/FltObjectReader.h"

#include "records/FltRecordGroupAndObject.h"

namespace
{

constexpr std::uint32_t notIlluminatedFlag = 0x10000000;
constexpr std::uint32_t flatShadedFlag = 0x08000000;
constexpr std::uint32_t groupsShadowFlag = 0x04000000;

/// What hides an Object at a time of day, and what that is called.
struct Hiding {
    std::uint32_t flag;
    char const* kind;
};

Hiding hidingAt(FltVisualOptions::TimeOfDay time)
{
    using Time = FltVisualOptions::TimeOfDay;
    switch (time) {
    case Time::dusk:
        return {0x40000000, "Object hidden at dusk"};
    case Time::night:
        return {0x20000000, "Object hidden at night"};
    case Time::day:
        break;
    }
    return {0x80000000, "Object hidden in daylight"};
}

} // namespace

FltObjectReader FltObjectReader::read(FltRecordView const& record, FltVisualOptions::TimeOfDay time,
                                      FltLeftOut& leftOut)
{
    FltDecoded<FltRecordObject> const object(record);
    FltObjectReader read;
    read.look = lookOf(record);
    Hiding const hiding = hidingAt(time);
    read.isHidden = (object.flags & hiding.flag) != 0;
    if (read.isHidden)
        ++leftOut[hiding.kind];
    if ((object.flags & groupsShadowFlag) != 0)
        ++leftOut["shadow of a group, drawn as any other Object"];
    return read;
}

FltObjectLook FltObjectReader::lookOf(FltRecordView const& record)
{
    FltDecoded<FltRecordObject> const object(record);
    FltObjectLook look;
    look.transparency = static_cast<float>(object.transparency) / 65535.0F;
    look.isUnlit = (object.flags & notIlluminatedFlag) != 0;
    look.isFlatShaded = (object.flags & flatShadedFlag) != 0;
    return look;
}
