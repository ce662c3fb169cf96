#pragma once

#include "writer/FltWriter.h"

#include <cstddef>
#include <iterator>
#include <random>
#include <string>
#include <string_view>
#include <vector>

/// Values for the fields of records, the same for the same number on every machine.
class RandomValues
{
public:
    explicit RandomValues(unsigned number);

    unsigned below(unsigned limit) { return static_cast<unsigned>(random() % limit); }
    bool oneIn(unsigned times) { return below(times) == 0; }

    template <class Value, std::size_t count>
    Value const& oneOf(Value const (&values)[count])
    {
        return values[below(static_cast<unsigned>(count))];
    }
    template <class Value>
    Value const& oneOf(std::vector<Value> const& values)
    {
        return values[below(static_cast<unsigned>(values.size()))];
    }

    /// A place, a size or an angle. In some databases now and then one that is no number, infinite, or beyond
    /// what a float holds.
    double number();

    /// A whole number for a field of these bits: mostly a small one.
    double wholeNumber(unsigned bits);

    /// A name of at most so many bytes, mostly a plain one.
    std::string name(std::size_t most);

    std::string bytes(std::size_t size);

    /// A value for every field that a record has at a revision but those in @p given, which stand as they
    /// are where the record has them.
    FltWriter::Fields fieldsOf(std::string_view record, int revision, FltWriter::Fields const& given = {});

private:
    FltValue valueOf(FltField const& field);

    std::mt19937 random;
    unsigned oddNumbers; ///< One number in so many is odd; 0 for none.
};
