#pragma once

#include "inspect/FltFindingList.h"
#include "inspect/FltInventory.h"

#include <cstdio>
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
    /// A number as people write it.
    static std::string textOf(double number, int digits = 6)
    {
        char text[32];
        std::snprintf(text, sizeof text, "%.*g", digits, number);
        return text;
    }

    static std::string quoted(std::string const& name) { return "\"" + name + "\""; }

    FltInventory const& inventory;
    FltFindingList& findings;
};
