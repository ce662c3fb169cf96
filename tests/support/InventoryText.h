#pragma once

#include "inspect/FltInventory.h"

#include <string>

/// All that an inventory holds, as text: a line for each entry of its lists, with every field, and what it
/// works out of them.
std::string inventoryText(FltInventory const& inventory);
