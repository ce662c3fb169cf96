#include "convert/Conversion.h"

#include "support/Numbers.h"

#include "messages/FltText.h"

#include <cstdio>

namespace
{

std::string tableRow(std::string const& nodes, std::string const& faces, std::string const& triangles,
                     std::string const& textures, std::string const& bytesIn, std::string const& bytesOut,
                     std::string const& seconds, std::string const& name)
{
    char numbers[160];
    std::snprintf(numbers, sizeof numbers, "%12s %12s %12s %9s %12s %12s %9s  ", nodes.c_str(), faces.c_str(),
                  triangles.c_str(), textures.c_str(), bytesIn.c_str(), bytesOut.c_str(), seconds.c_str());
    return numbers + FltText::printable(name);
}

} // namespace

ConversionStatistics& ConversionStatistics::operator+=(ConversionStatistics const& other)
{
    nodes += other.nodes;
    faces += other.faces;
    triangles += other.triangles;
    textures += other.textures;
    bytesIn += other.bytesIn;
    bytesOut += other.bytesOut;
    seconds += other.seconds;
    return *this;
}

std::vector<std::string> ConversionStatistics::fields() const
{
    return {std::to_string(nodes),    std::to_string(faces),   std::to_string(triangles),
            std::to_string(textures), std::to_string(bytesIn), std::to_string(bytesOut),
            std::to_string(seconds)};
}

ConversionStatistics ConversionStatistics::fromFields(std::vector<std::string> const& fields)
{
    return {std::stoull(fields.at(0)), std::stoull(fields.at(1)), std::stoull(fields.at(2)),
            std::stoull(fields.at(3)), std::stoull(fields.at(4)), std::stoull(fields.at(5)),
            std::stod(fields.at(6))};
}

std::string ConversionStatistics::tableHead()
{
    return tableRow("nodes", "faces", "triangles", "textures", "read", "written", "seconds", "database");
}

std::string ConversionStatistics::tableLine(std::string const& name) const
{
    char time[32];
    std::snprintf(time, sizeof time, "%.2f", seconds);
    return tableRow(Numbers::grouped(nodes), Numbers::grouped(faces), Numbers::grouped(triangles),
                    Numbers::grouped(textures), Numbers::bytes(bytesIn), Numbers::bytes(bytesOut), time,
                    name);
}
