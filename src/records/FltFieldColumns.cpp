#include "records/FltFieldColumns.h"

#include <algorithm>
#include <stdexcept>

namespace
{

/// Bytes of a row, as a form has them.
std::size_t rowSizeOf(std::uint64_t form)
{
    return static_cast<std::size_t>(form >> 8);
}

} // namespace

void FltFieldColumns::beginRecord(std::uint64_t byteOffset)
{
    if (records == capacity)
        throw std::length_error("more records than there are columns for");
    expected = 0;
    hasGaps = false;
    block = none;
    blocks.clear();
    ignored = 0;
    lastFlags = none;
    key("offset");
    integer(static_cast<std::int64_t>(byteOffset));
}

void FltFieldColumns::endRecord()
{
    ++records;
    if (hasGaps || expected != columns.size())
        markAbsences();
}

/// Marks this record in the columns of what it lacked.
void FltFieldColumns::markAbsences()
{
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (slots[i].lastRecord == records)
            continue;
        std::size_t const size = columns[i].isCounted ? sizeof(std::uint64_t) : rowSizeOf(slots[i].form);
        std::fill_n(slots[i].rows + (records - 1) * size, size, '\0');
        columns[i].absences.resize(records - 1, 0);
        columns[i].absences.push_back(1);
    }
}

/// The slot of a field that isn't the expected one; null if that has no column. Fields of one name that are
/// stored in different forms have the column of the first.
FltFieldColumns::Slot* FltFieldColumns::searchedSlot(std::uint64_t form)
{
    if (ignored > 0)
        return nullptr;
    hasGaps = true;
    auto const [column, isNew] = known.try_emplace({block, member}, columns.size());
    if (isNew)
        addSlot(form);
    Slot& slot = slots[column->second];
    if (slot.form != form)
        return nullptr;
    expected = column->second + 1;
    return &slot;
}

void FltFieldColumns::addSlot(std::uint64_t form)
{
    FltColumn& column = columns.emplace_back();
    column.name = block == none ? member : columns[block].name + '.' + member;
    column.type = static_cast<FltColumn::Type>(form & 0xff);
    column.isCounted = form != formOfBlock && form == countedForm(column.type);
    std::size_t const rowSize = column.isCounted ? sizeof(std::uint64_t) : rowSizeOf(form);
    FltColumnBytes& rows = column.isCounted ? column.counts : column.values;
    rows.reserve(capacity * rowSize);
    std::fill_n(rows.data(), records * rowSize, '\0');
    column.absences.assign(records, 1);
    slots.back() = {member, block, form, 0, rows.data()};
    slots.emplace_back();
}

char* FltFieldColumns::countedRow(FltColumn::Type type, std::size_t count, std::size_t size)
{
    Slot* const slot = nextSlot(countedForm(type));
    if (slot == nullptr)
        return nullptr;
    FltColumn& column = columns[expected - 1];
    slot->lastRecord = records + 1;
    std::uint64_t const number = count;
    std::memcpy(slot->rows + records * sizeof number, &number, sizeof number);
    return column.values.extend(size);
}

void FltFieldColumns::text(std::string_view characters)
{
    char* const row = countedRow(FltColumn::Type::text, characters.size(), characters.size());
    if (row != nullptr)
        std::copy(characters.begin(), characters.end(), row);
}

/// Only blocks come as elements one by one.
void FltFieldColumns::beginArray(Length /*length*/)
{
    if (ignored++ == 0)
        blocks.push_back(std::exchange(block, nowhere));
}

void FltFieldColumns::endArray()
{
    if (--ignored > 0)
        return;
    block = blocks.back();
    blocks.pop_back();
}

void FltFieldColumns::beginObject()
{
    if (ignored > 0) {
        ++ignored;
        return;
    }
    Slot* const slot = nextSlot(formOfBlock);
    if (slot == nullptr) { // a field has the name
        ++ignored;
        blocks.push_back(std::exchange(block, nowhere));
        return;
    }
    slot->lastRecord = records + 1;
    blocks.push_back(std::exchange(block, expected - 1));
}

void FltFieldColumns::endObject()
{
    if (ignored > 1) {
        --ignored;
        return;
    }
    ignored = 0;
    block = blocks.back();
    blocks.pop_back();
}

std::vector<FltColumn> FltFieldColumns::take()
{
    std::vector<FltColumn> taken;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        FltColumn& column = columns[i];
        bool const isText = column.type == FltColumn::Type::text;
        bool const hasValues = !column.isCounted || isText || column.values.size() > 0;
        if (slots[i].form == formOfBlock || !hasValues)
            continue;
        if (column.isCounted) {
            column.counts.cut(records * sizeof(std::uint64_t));
            column.values.cut(column.values.size());
        } else {
            column.values.cut(records * rowSizeOf(slots[i].form));
        }
        if (!column.absences.empty())
            column.absences.resize(records, 0);
        taken.push_back(std::move(column));
    }
    columns.clear();
    return taken;
}
