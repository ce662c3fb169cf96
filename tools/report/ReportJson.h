#pragma once

#include "report/MergedReports.h"

#include <nlohmann/json.hpp>

/// A run as JSON for a program: what docs/schemas/fltreport.schema.json describes.
namespace ReportJson
{

/// Everything. Of slow and large databases so many at most
nlohmann::ordered_json of(MergedReports const& reports, std::size_t most);

} // namespace ReportJson
