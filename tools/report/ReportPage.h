#pragma once

#include "report/MergedReports.h"

#include <cstddef>
#include <string>

/// A run as a page for browsers: one file, without scripts, that asks for nothing from anywhere.
namespace ReportPage
{

/// @param most how many databases and textures a list holds at most
std::string of(MergedReports const& reports, std::size_t most);

} // namespace ReportPage
