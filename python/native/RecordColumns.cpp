#include "RecordColumns.h"

#include "PythonObjects.h"

namespace
{

std::size_t sizeOf(char const* type)
{
    return type == nullptr || *type == '?' || *type == 's' ? 1
           : *type == 'f'                                  ? sizeof(float)
                                                           : sizeof(double);
}

PyObject* bytesOf(std::string const& bytes)
{
    return PyByteArray_FromStringAndSize(bytes.data(), static_cast<std::ptrdiff_t>(bytes.size()));
}

PyObject* bytesOf(std::vector<std::uint64_t> const& numbers)
{
    return PyByteArray_FromStringAndSize(reinterpret_cast<char const*>(numbers.data()),
                                         static_cast<std::ptrdiff_t>(numbers.size() * sizeof numbers[0]));
}

PyObject* listOf(std::vector<std::size_t> const& numbers)
{
    PyObject* const list = PyList_New(0);
    for (std::size_t const number : numbers)
        PythonObjects::append(list, PyLong_FromLongLong(static_cast<long long>(number)));
    return list;
}

} // namespace

void RecordColumns::add(FltRecordReader const& record)
{
    if (!record.isReadable())
        return;
    ++records;
    expected = 0;
    lastFlags = none;
    key("offset");
    integer(static_cast<std::int64_t>(record.offset()));
    record.giveFields(*this);
}

/// The column of a field of the open block. The fields of a record stand in the order of those of the last
/// one, but where it lacks some.
RecordColumns::Column& RecordColumns::columnOf(char const* key, char const* type)
{
    std::pair<std::size_t, char const*> const place(blocks.empty() ? none : blocks.back(), key);
    std::size_t number = expected;
    if (number >= keys.size() || keys[number] != place) {
        auto const [column, isNew] = known.try_emplace(place, columns.size());
        number = column->second;
        if (isNew) {
            columns.emplace_back();
            columns.back().name = blocks.empty() ? key : columns[blocks.back()].name + '.' + key;
            columns.back().type = type;
            keys.push_back(place);
        }
    }
    expected = number + 1;
    return columns[number];
}

/// Gives a column rows for records that lack it.
/// @param rows that it is to have
/// @param at   where their values go
void RecordColumns::fillUp(Column& column, std::size_t rows, std::size_t at)
{
    if (column.rows == rows)
        return;
    column.absences.resize(column.rows, 0);
    column.absences.resize(rows, 1);
    if (column.isCounted)
        column.counts.resize(rows, 0);
    else
        column.values.insert(at, (rows - column.rows) * column.rowSize, 0);
    column.rows = rows;
}

/// Ends the row of this record.
/// @param start where its values begin
/// @param count how many it has, where that isn't the same for all
void RecordColumns::endRow(Column& column, std::size_t start, std::size_t count)
{
    column.rowSize = column.values.size() - start;
    fillUp(column, records - 1, start);
    if (column.isCounted)
        column.counts.push_back(count);
    if (!column.absences.empty())
        column.absences.push_back(0);
    ++column.rows;
}

template <class Value>
void RecordColumns::add(char const* type, Value value)
{
    if (ignored > 0)
        return;
    auto const* const bytes = reinterpret_cast<char const*>(&value);
    if (depth > 0) {
        columns[array].type = type;
        columns[array].values.append(bytes, sizeof value);
        return;
    }
    Column& column = columnOf(member, type);
    std::size_t const start = column.values.size();
    column.values.append(bytes, sizeof value);
    endRow(column, start, 1);
}

void RecordColumns::text(std::string_view characters)
{
    if (ignored > 0 || depth > 0)
        return;
    Column& column = columnOf(member, "s");
    std::size_t const start = column.values.size();
    column.isCounted = true;
    column.values += characters;
    endRow(column, start, column.values.size() - start);
}

void RecordColumns::flag(char const* name, bool isSet)
{
    if (ignored > 0 || lastFlags == none)
        return;
    blocks.push_back(lastFlags);
    member = name;
    add("?", static_cast<std::uint8_t>(isSet));
    blocks.pop_back();
}

void RecordColumns::beginArray(Length length)
{
    if (ignored > 0)
        return;
    if (++depth == 1) {
        Column& column = columnOf(member, nullptr);
        column.isCounted = length == Length::counted;
        array = expected - 1;
        start = column.values.size();
        elements = 0;
    } else if (depth == 2) {
        ++elements;
    }
}

/// An array of arrays has rows of two dimensions, or elements of one where rows are counted.
void RecordColumns::endArray()
{
    if (ignored > 0 || --depth > 0)
        return;
    Column& column = columns[array];
    if (column.type == nullptr && !column.isCounted)
        return;
    std::size_t const count = (column.values.size() - start) / sizeOf(column.type);
    if (elements > 0)
        column.shape = column.isCounted ? Shape{count / elements} : Shape{elements, count / elements};
    else if (!column.isCounted)
        column.shape = {count};
    endRow(column, start, elements > 0 ? elements : count);
}

void RecordColumns::beginObject()
{
    if (ignored > 0 || depth > 0) {
        ++ignored;
        return;
    }
    static_cast<void>(columnOf(member, nullptr));
    blocks.push_back(expected - 1);
}

void RecordColumns::endObject()
{
    if (ignored > 0)
        --ignored;
    else
        blocks.pop_back();
}

PyObject* RecordColumns::take()
{
    PyObject* const list = PyList_New(0);
    for (Column& column : columns) {
        if (column.type == nullptr)
            continue;
        fillUp(column, records, column.values.size());
        PythonObjects::append(
            list, Py_BuildValue("(NsNNNN)", PythonObjects::textOf(column.name), column.type,
                                listOf(column.shape), bytesOf(column.values),
                                column.isCounted ? bytesOf(column.counts) : PythonObjects::none(),
                                column.absences.empty() ? PythonObjects::none() : bytesOf(column.absences)));
    }
    return list;
}
