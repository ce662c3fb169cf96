#pragma once

#include "loader/FltScene.h"
#include "loader/FltVisual.h"

#include <nlohmann/json.hpp>

/// What the Python package gets to know of a loaded database besides what it looks like.
namespace ReportJson
{

using Json = nlohmann::ordered_json;

Json of(FltScene const& scene);
Json of(FltVisual const& visual);

} // namespace ReportJson
