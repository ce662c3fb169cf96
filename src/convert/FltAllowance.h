#pragma once

#include <cstdint>

/// What may be spent of something before a file has had enough of it.
class FltAllowance
{
public:
    explicit FltAllowance(std::int64_t limit) : limit(limit) {}

    /// Spends some more.
    /// @return whether all that was spent keeps to the limit
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
