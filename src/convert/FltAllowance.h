#pragma once

#include <cstdint>

/// How much of something the conversion of a file, and of all that it refers to, may use up.
class FltAllowance
{
public:
    explicit FltAllowance(std::int64_t limit) : limit(limit) {}

    /// Uses up some more.
    /// @return whether all that was used up so far is within the limit
    bool spend(std::int64_t amount)
    {
        spent += amount;
        return !isExceeded();
    }

    bool isExceeded() const { return spent > limit; }

private:
    std::int64_t limit;
    std::int64_t spent = 0;
};
