#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

/// A stream that keeps what is written.
class MemoryStream
{
public:
    MemoryStream() : stream(::open_memstream(&bytes, &size)) {}
    ~MemoryStream()
    {
        std::fclose(stream);
        std::free(bytes);
    }
    MemoryStream(MemoryStream const&) = delete;
    MemoryStream& operator=(MemoryStream const&) = delete;

    operator FILE*() const { return stream; }

    std::string text() const
    {
        std::fflush(stream);
        return {bytes, size};
    }

private:
    char* bytes = nullptr;
    std::size_t size = 0;
    FILE* stream;
};
