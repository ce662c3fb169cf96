#pragma once

#include <cstddef>
#include <iostream>
#include <streambuf>
#include <string>

/// Takes what a stream is sent: counts it and its flushes, and keeps it unless told otherwise.
class CaptureBuffer : public std::streambuf
{
public:
    enum Kept { everything, nothing };

    explicit CaptureBuffer(Kept kept = everything) : kept(kept) {}

    std::string const& str() const { return text; }
    std::size_t size() const { return taken; }
    int flushes() const { return flushed; }

protected:
    int_type overflow(int_type character) override
    {
        char const last = traits_type::to_char_type(character);
        if (!traits_type::eq_int_type(character, traits_type::eof()))
            CaptureBuffer::xsputn(&last, 1);
        return traits_type::not_eof(character);
    }
    std::streamsize xsputn(char const* characters, std::streamsize count) override
    {
        taken += static_cast<std::size_t>(count);
        if (kept == everything)
            text.append(characters, static_cast<std::size_t>(count));
        return count;
    }
    int sync() override
    {
        ++flushed;
        return 0;
    }

private:
    Kept kept;
    std::string text;
    std::size_t taken = 0;
    int flushed = 0;
};

/// Takes what a stream is sent while this object lives, and then puts the stream's own buffer back, whatever
/// buffer it was given in between.
class StreamCapture
{
public:
    explicit StreamCapture(std::ostream& stream, CaptureBuffer::Kept kept = CaptureBuffer::everything)
        : buffer(kept), stream(stream), before(stream.rdbuf(&buffer))
    {
    }
    ~StreamCapture() { stream.rdbuf(before); }

    StreamCapture(StreamCapture const&) = delete;
    StreamCapture& operator=(StreamCapture const&) = delete;

    std::string const& str() const { return buffer.str(); }
    std::size_t size() const { return buffer.size(); }

private:
    CaptureBuffer buffer;
    std::ostream& stream;
    std::streambuf* before;
};
