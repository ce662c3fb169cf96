#pragma once

#include <iostream>
#include <sstream>
#include <string>

/// Holds what a stream is sent while this object lives, and then puts the stream's own buffer back.
class StreamCapture
{
public:
    explicit StreamCapture(std::ostream& stream) : stream(stream), before(stream.rdbuf(text.rdbuf())) {}
    ~StreamCapture() { stream.rdbuf(before); }

    StreamCapture(StreamCapture const&) = delete;
    StreamCapture& operator=(StreamCapture const&) = delete;

    std::string str() const { return text.str(); }

private:
    std::ostringstream text;
    std::ostream& stream;
    std::streambuf* before;
};
