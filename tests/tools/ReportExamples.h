#pragma once

#include "convert/ReportLine.h"
#include "convert/ReportRun.h"

#include <string>

/// @name A run and a database, as a report may tell of them
/// @{
inline ReportRun exampleRun(std::string const& options = "--lod all")
{
    return {"flt2iv", "1.2.3", options, {3, 16}, 1000};
}

inline ReportLine exampleLine(std::string const& input = "north/a.flt")
{
    ReportLine line;
    line.input = input;
    line.output = "north/a.iv";
    line.bytesRead = 12;
    line.bytesWritten = 34;
    line.names = {"library/tree.iv"};
    line.facts.seconds = 0.25;
    line.facts.memory = 1 << 20;
    line.facts.messages = {1, 2, 3};
    line.facts.missingTextures = {"no.rgb"};
    line.facts.triangles = 56;
    line.facts.box = ConversionFacts::Box{{-1, -2, -3}, {1e6, 2, 0.1}};
    line.facts.latitude = 47.5;
    line.facts.longitude = -8.25;
    line.facts.projection = 3;
    line.facts.needs = {{"models/a.flt", {12, 1234567890123456789}}};
    return line;
}
/// @}
