#pragma once

#include "toolkit/LargePages.h"

#include <algorithm>
#include <vector>

/// Sets a field to the values, which are copied once: the field takes the copy over and frees it.
template <class Field, class Value>
void setFieldValues(Field& field, std::vector<Value> const& values)
{
    if (values.empty()) {
        field.setNum(0);
        return;
    }
    auto* const copy = new Value[values.size()];
    LargePages::useIn(copy, copy + values.size());
    std::copy(values.begin(), values.end(), copy);
    field.setValuesPointer(static_cast<int>(values.size()), copy);
    field.enableDeleteValues();
}
