#pragma once

#include "info/DatabaseReport.h"

#include <nlohmann/json_fwd.hpp>

/// What a database holds, as JSON for programs: all of it, under names that don't change.
namespace InfoJson
{

nlohmann::ordered_json of(DatabaseReport const& report);

/// The hierarchy: a list of nodes in the order of the file, each with its depth.
nlohmann::ordered_json treeOf(FltInventory const& inventory, std::uint32_t depth);

/// The files that the database needs.
nlohmann::ordered_json filesOf(FltDependencies const& dependencies);

} // namespace InfoJson
