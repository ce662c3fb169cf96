#pragma once

#include "convert/FltFieldValues.h"
#include "toolkit/LargePages.h"

#include <Inventor/SbBasic.h>
#include <algorithm>
#include <cstddef>
#include <vector>

/// A field of a vertex property while vertices come in.
///
/// The field has a size from the start, far above what most files need. Its values are gathered here until
/// somebody may look at them; from then on they are written straight into the field's storage.
/// @tparam Field one of the toolkit's fields of many values
template <class Field, class Value>
class FltVertexField
{
public:
    /// @param zero what stands where nothing was written
    explicit FltVertexField(Value const& zero) : zero(zero) {}

    /// @param own has to outlive this object
    void setField(Field& own) { field = &own; }

    /// The size, whether the field has values yet or not.
    int getNum() const { return num; }

    void setNum(int size)
    {
        int const before = num;
        num = size;
        if (!isShown) {
            if (gathered.size() > static_cast<std::size_t>(size))
                gathered.resize(static_cast<std::size_t>(size), zero);
            return;
        }
        field->setNum(size);
        storage = field->startEditing();
        clear(before);
    }

    /// Writes a value; none beyond the size.
    void set(int index, Value const& value)
    {
        if (index < num && !isShown && static_cast<std::size_t>(index) == gathered.size()) {
            LargePages::add(gathered, value);
        } else if (Value* const place = find(index)) {
            *place = value;
        }
    }

    /// Where a value is written; null beyond the size.
    Value* find(int index)
    {
        if (index >= num)
            return nullptr;
        if (isShown)
            return storage + index;
        auto const at = static_cast<std::size_t>(index);
        if (at >= gathered.size())
            gathered.resize(at + 1, zero);
        return &gathered[at];
    }

    /// Gives the field its size and its values, if it hasn't got them.
    void show()
    {
        if (isShown)
            return;
        isShown = true;
        gathered.resize(static_cast<std::size_t>(num), zero);
        setFieldValues(*field, gathered);
        field->setDefault(FALSE);
        std::vector<Value>().swap(gathered);
        storage = field->startEditing();
    }

    /// Sets the values from @p from on to zero where anybody may look at them.
    void clear(int from)
    {
        if (isShown && from < num)
            std::fill(storage + from, storage + num, zero);
    }

    /// Gives a field that is shown storage for @p room values and leaves its size as it is; one without
    /// values stays so.
    void extend(int room)
    {
        if (!isShown || num == 0)
            return;
        auto* const larger = new Value[static_cast<std::size_t>(room)];
        std::fill(std::copy(storage, storage + num, larger), larger + room, zero);
        field->setValuesPointer(num, larger);
        field->enableDeleteValues();
        storage = larger;
    }

private:
    Field* field = nullptr;
    Value zero;
    int num = 0;
    std::vector<Value> gathered; ///< Empty once the field is shown.
    Value* storage = nullptr;    ///< The field's, once it is shown.
    bool isShown = false;
};
