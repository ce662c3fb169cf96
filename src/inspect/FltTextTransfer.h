#pragma once

#include "inspect/FltInventory.h"

/// A file that was transferred as text has no carriage return left. What held one holds a line feed now:
/// offsets that hit nothing, and indices that are there twice.
class FltTextTransfer
{
public:
    explicit FltTextTransfer(FltInventory const& inventory)
        : lacksCarriageReturns(inventory.lacksCarriageReturns())
    {
    }

    /// Whether a number that hits nothing may be one that a transfer has changed.
    bool hasTrace(std::int64_t number) const { return lacksCarriageReturns && holdsLineFeed(number); }

private:
    static bool holdsLineFeed(std::int64_t number)
    {
        for (int shift = 0; shift < 32; shift += 8)
            if ((number >> shift & 0xff) == '\n')
                return true;
        return false;
    }

    bool lacksCarriageReturns;
};
