#pragma once

#include "inspect/FltFindingList.h"
#include "inspect/FltInventory.h"

#include <string>

/// What the checks of all families have: what they judge, and where they tell of it.
class FltCheckFamily
{
public:
    FltCheckFamily(FltInventory const& inventory, FltFindingList& findings)
        : inventory(inventory), findings(findings)
    {
    }

protected:
    static std::string quoted(std::string const& name) { return "\"" + name + "\""; }

    FltInventory const& inventory;
    FltFindingList& findings;
};
