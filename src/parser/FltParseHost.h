#pragma once

#include <cstddef>

class FltInput;
class FltRecord;

/// Learns what is read. Each function may throw, which ends the parse.
class FltParseHost
{
public:
    virtual ~FltParseHost() = default;

    /// A file was read and is going to be parsed.
    virtual void beginFile(FltInput const& file) = 0;

    /// A record was made of the bytes at an offset. It lives until the file is converted.
    virtual void takeRecord(FltInput const& file, FltRecord const& record, std::size_t offset) = 0;
};
