#include "RecordColumns.h"

#include "PythonObjects.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

namespace
{

/// An address and bytes.
PyObject* placeOf(void const* first, std::size_t size)
{
    return Py_BuildValue("(KK)", reinterpret_cast<unsigned long long>(first),
                         static_cast<unsigned long long>(size));
}

PyObject* listOf(std::vector<std::size_t> const& numbers)
{
    PyObject* const list = PyList_New(0);
    for (std::size_t const number : numbers)
        PythonObjects::append(list, PyLong_FromLongLong(static_cast<long long>(number)));
    return list;
}

bool isFirstOfCharacter(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xc0) != 0x80;
}

/// The texts of a column, one after the other.
class Texts
{
public:
    explicit Texts(FltColumn const& column)
        : at(column.values.data()), count(column.counts.data()),
          end(column.counts.data() + column.counts.size())
    {
    }

    bool isAtEnd() const { return count == end; }
    std::string_view next()
    {
        std::uint64_t size = 0;
        std::memcpy(&size, count, sizeof size);
        count += sizeof size;
        return {std::exchange(at, at + size), static_cast<std::size_t>(size)};
    }

private:
    char const* at;
    char const* count;
    char const* end;
};

/// Writes a text with four bytes a character, as far as there is room. @return the end
char* widen(std::string_view text, char* to, char const* end)
{
    for (std::size_t i = 0; i < text.size() && to != end;) {
        auto const byte = static_cast<unsigned char>(text[i++]);
        std::uint32_t character = byte < 0x80   ? byte
                                  : byte < 0xe0 ? byte & 0x1fU
                                  : byte < 0xf0 ? byte & 0xfU
                                                : byte & 7U;
        for (; i < text.size() && !isFirstOfCharacter(text[i]); ++i)
            character = character << 6 | (static_cast<unsigned char>(text[i]) & 0x3fU);
        std::memcpy(to, &character, sizeof character);
        to += sizeof character;
    }
    return to;
}

std::size_t rowsOf(FltColumn const& texts)
{
    return texts.counts.size() / sizeof(std::uint64_t);
}

/// Whether texts of one width take little more room than the characters.
/// @param longest of them, in bytes
bool isEven(FltColumn const& column, std::size_t longest)
{
    constexpr std::size_t wideOfAny = 1000;
    return longest * rowsOf(column) <= 4 * column.values.size() + wideOfAny;
}

std::size_t longestOf(FltColumn const& column)
{
    std::size_t longest = 0;
    for (Texts texts(column); !texts.isAtEnd();)
        longest = std::max(longest, texts.next().size());
    return longest;
}

/// How many characters the longest text has, and at least one.
/// @param longest of them, in bytes
std::size_t widthOf(FltColumn const& column, std::size_t longest)
{
    char const* const first = column.values.data();
    if (std::all_of(first, first + column.values.size(), isFirstOfCharacter))
        return std::max<std::size_t>(longest, 1);
    std::ptrdiff_t width = 1;
    for (Texts texts(column); !texts.isAtEnd();) {
        std::string_view const text = texts.next();
        width = std::max(width, std::count_if(text.begin(), text.end(), isFirstOfCharacter));
    }
    return static_cast<std::size_t>(width);
}

/// Makes all texts of one width, with zeros behind them.
/// @param longest of them, in bytes
/// @return the type
std::string makeEven(FltColumn& column, std::size_t longest)
{
    std::size_t const width = widthOf(column, longest);
    std::size_t const rowSize = width * sizeof(std::uint32_t);
    FltColumnBytes even;
    even.reserve(rowsOf(column) * rowSize);
    for (Texts texts(column); !texts.isAtEnd();) {
        char* const row = even.extend(rowSize);
        char* const end = widen(texts.next(), row, row + rowSize);
        std::fill(end, row + rowSize, '\0');
    }
    column.values = std::move(even);
    return 'U' + std::to_string(width);
}

PyObject* textsOf(FltColumn const& column)
{
    PyObject* const list = PyList_New(0);
    for (Texts texts(column); !texts.isAtEnd();)
        PythonObjects::append(list, PythonObjects::textOf(texts.next()));
    return list;
}

PyObject* tupleOf(FltColumn taken)
{
    auto owned = std::make_unique<FltColumn>(std::move(taken));
    FltColumn& column = *owned;
    std::string type(1, static_cast<char>(column.type));
    PyObject* values = nullptr;
    bool const isText = column.type == FltColumn::Type::text;
    std::size_t const longest = isText ? longestOf(column) : 0;
    if (isText && !isEven(column, longest)) {
        type = "O";
        values = textsOf(column);
    } else {
        if (isText)
            type = makeEven(column, longest);
        values = placeOf(column.values.data(), column.values.size());
    }
    PyObject* const counts = column.isCounted && !isText ? placeOf(column.counts.data(), column.counts.size())
                                                         : PythonObjects::none();
    PyObject* const absences = column.absences.empty()
                                   ? PythonObjects::none()
                                   : placeOf(column.absences.data(), column.absences.size());
    PyObject* const name = PythonObjects::textOf(column.name);
    PyObject* const shape = listOf(column.shape);
    return Py_BuildValue("(NNsNNNN)", PythonObjects::owning(std::move(owned)), name, type.c_str(), shape,
                         values, counts, absences);
}

} // namespace

PyObject* RecordColumns::listOf(std::vector<FltColumn> columns)
{
    PyObject* const list = PyList_New(0);
    for (FltColumn& column : columns)
        PythonObjects::append(list, tupleOf(std::move(column)));
    return PythonObjects::unlessRaised(list);
}
