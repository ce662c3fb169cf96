#include "convert/PartSizes.h"

#include "convert/TreePart.h"
#include "support/Numbers.h"

#include "messages/FltText.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numeric>

namespace
{

std::string tableRow(std::string const& head, std::string const& least, std::string const& mean,
                     std::string const& most, std::string const& ratio)
{
    char line[160];
    std::snprintf(line, sizeof line, "%-10s %12s %12s %12s %12s\n", head.c_str(), least.c_str(), mean.c_str(),
                  most.c_str(), ratio.c_str());
    return line;
}

std::string ratioOf(double most, double mean)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", mean > 0 ? most / mean : 0);
    return text;
}

} // namespace

PartSizes::Sizes PartSizes::sizesOf(std::vector<std::uint64_t> const& parts)
{
    auto const [least, most] = std::minmax_element(parts.begin(), parts.end());
    std::uint64_t const all = std::accumulate(parts.begin(), parts.end(), std::uint64_t(0));
    return {*least, *most, all, static_cast<double>(all) / static_cast<double>(parts.size())};
}

PartSizes::PartSizes(std::vector<ConversionPlan::Entry> const& entries, std::uint64_t parts) : count(parts)
{
    std::vector<std::uint64_t> filesOf(parts), bytesOf(parts);
    for (ConversionPlan::Entry const& entry : entries) {
        std::uint64_t const part = TreePart::numberOf(entry.place, parts);
        ++filesOf[part];
        bytesOf[part] += entry.bytes;
        if (entry.bytes >= largest.bytes)
            largest = entry;
    }
    files = sizesOf(filesOf);
    bytes = sizesOf(bytesOf);
}

double PartSizes::largestToMean() const
{
    return files.mean > 0 ? static_cast<double>(files.most) / files.mean : 0;
}

std::string PartSizes::text() const
{
    constexpr double fewFiles = 100;
    std::string text = Numbers::counted(files.all, "database", "databases") + ", " +
                       Numbers::bytes(bytes.all) + ", in " + Numbers::counted(count, "part", "parts") + "\n";
    text += tableRow("of a part", "least", "mean", "most", "most / mean");
    text += tableRow("databases", Numbers::grouped(files.least),
                     Numbers::grouped(static_cast<std::uint64_t>(std::llround(files.mean))),
                     Numbers::grouped(files.most), ratioOf(static_cast<double>(files.most), files.mean));
    text +=
        tableRow("bytes", Numbers::bytes(bytes.least), Numbers::bytes(static_cast<std::uint64_t>(bytes.mean)),
                 Numbers::bytes(bytes.most), ratioOf(static_cast<double>(bytes.most), bytes.mean));
    if (files.all != 0)
        text += "largest database: " + Numbers::bytes(largest.bytes) + ", " +
                FltText::printable(largest.input) + "\n";
    if (count > 1 && files.mean < fewFiles)
        text += "These parts are small: starting a job often takes longer than a hundred small databases. "
                "Take fewer parts.\n";
    return text;
}
