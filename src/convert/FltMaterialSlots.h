#pragma once

#include "convert/FltMaterialFields.h"

#include <vector>

/// The values of many materials on their way into one SoMaterial, whose fields get them all at once.
///
/// Positions that are never set end up as FltMaterialFields::writeTo() leaves them.
class FltMaterialSlots
{
public:
    /// Sets the values at a position. @param index from 0 on
    void set(int index, FltMaterialFields const& fields);

    /// Positions up to the last one that was set.
    int getNum() const { return static_cast<int>(slots.size()); }

    /// Sets all fields; with no position set, none.
    void writeTo(SoMaterial& material) const;

private:
    std::vector<FltMaterialFields> slots;
};
