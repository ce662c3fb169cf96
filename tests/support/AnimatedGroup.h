#pragma once

#include "writer/FltWriter.h"

#include <string>

/// Adds a group with the fields that newer revisions have after it: how its children are played.
inline FltWriter& addAnimatedGroup(FltWriter& writer, std::string const& name, unsigned flags, long loopCount,
                                   double loopDuration, double lastFrameDuration)
{
    std::string const group =
        FltWriter(1570).add("Group", {{"idASCII", name}, {"flags", flags}}).lastRecord();
    return writer.addRaw(2, group.substr(4) + FltWriter::big32(loopCount) +
                                FltWriter::bigFloat(loopDuration) + FltWriter::bigFloat(lastFrameDuration));
}
