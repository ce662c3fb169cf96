#pragma once

#include "report/MergedReports.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

/// A run as text for a terminal.
namespace ReportText
{

/// Everything. @param most how many databases and textures a list holds at most
std::string of(MergedReports const& reports, std::size_t most);

/// The figures of the whole run: what it is, and how many.
std::vector<std::pair<std::string, std::string>> figures(MergedReports const& reports);

/// What is missing of parts, a line each.
std::vector<std::string> holes(MergedReports const& reports);

} // namespace ReportText
