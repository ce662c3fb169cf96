#pragma once

#include <optional>
#include <string>
#include <vector>

/// What a worker and its owner tell each other: texts of any bytes, with a word for what they are.
struct WorkerMessage {
    enum class Kind : char {
        request = 'q',
        reply = 'r',
        note = 'n', ///< How far the request is.
    };

    Kind kind = Kind::request;
    std::vector<std::string> fields;

    /// The message as bytes for a stream.
    std::string bytes() const;

    /// Takes the first message out of what has arrived of a stream. @return nothing if it isn't whole yet
    static std::optional<WorkerMessage> takeFrom(std::string& arrived);
};
