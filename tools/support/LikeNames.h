#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <utility>
#include <vector>

/// Finds out what somebody may have meant by a name that isn't there: those that differ in a few letters, and
/// those that hold it or have a word like it.
class LikeNames
{
public:
    explicit LikeNames(std::string const& wanted);

    /// Shows a name that is there.
    void offer(std::string const& name);

    /// The likest of them first, a few at most.
    std::vector<std::string> found() const;

private:
    std::string wanted; ///< In small letters.
    std::set<std::pair<std::size_t, std::string>> best;
};
