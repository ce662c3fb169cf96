#pragma once

#include "support/Parse.h"

#include <vector>

/// The records of a database with a null entry behind them, as the handlers of a conversion expect them. The
/// header is the first.
class ParsedRecords
{
public:
    using Iterator = std::vector<FltRecord*>::const_iterator;

    explicit ParsedRecords(FltWriter const& flt) : parse(flt), entries(parse.parser.getFltRecords())
    {
        entries.push_back(nullptr);
    }

    /// An iterator on a record.
    Iterator at(int index) const { return entries.begin() + index; }

    /// The place of an iterator.
    int indexOf(Iterator iterator) const { return static_cast<int>(iterator - entries.begin()); }

    /// The place of the null entry.
    int end() const { return static_cast<int>(entries.size()) - 1; }

private:
    Parse parse;
    std::vector<FltRecord*> entries;
};
