#pragma once

#include <cstddef>
#include <string>

/// A conversion of a large database in a process of its own, so that the most memory it takes is known,
/// whatever was converted before it. Its log is counted only.
///
/// A process that crashes or throws, or that leaves leaks where a sanitizer looks for them, throws
/// std::runtime_error here.
struct MeasuredConversion {
    explicit MeasuredConversion(std::string const& bytes);

    /// How often a text stands in the messages.
    int countMessages(std::string const& text) const;

    int result = -1; ///< What FltToInventor::convert() returned.
    std::size_t logSize = 0;
    std::size_t memory = 0; ///< Bytes that the process grew by, at its largest.
    std::string messages;   ///< What went to std::cerr.
};
