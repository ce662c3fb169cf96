#pragma once

#include "messages/FltLimits.h"

#include <cstdint>

/// How much of something the conversion of a file, and of all that it refers to, may use up.
class FltAllowance
{
public:
    explicit FltAllowance(FltLimits::Ceiling ceiling) : limit(ceiling.floor), perByte(ceiling.perByte) {}

    /// Allows more, since so many more bytes of the database were read.
    void growBy(std::int64_t bytes) { limit += bytes * perByte; }

    /// Uses up some more.
    /// @return whether all that was used up so far is within the limit
    bool spend(std::int64_t amount)
    {
        spent += amount;
        return !isExceeded();
    }

    bool isExceeded() const { return spent > limit; }

    std::int64_t getLimit() const { return limit; }

private:
    std::int64_t limit;
    std::int64_t perByte;
    std::int64_t spent = 0;
};
