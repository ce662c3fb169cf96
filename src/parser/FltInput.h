#pragma once

#include "toolkit/VelloReaderExport.h"

/// Where the bytes of a database come from. Inputs belong to whoever made them.
class VELLOREADER_API FltInput
{
public:
    /// The bytes, getSize() of them. They belong to the input.
    virtual char* getBuffer() = 0;

    /// Number of bytes.
    virtual long getSize() const = 0;

    /// Whether there is anything to read.
    virtual bool isInFlowCreated() const = 0;

    /// The name that messages and side files are made from.
    virtual char const* getFileName() const = 0;

    /// The directory that external references count from, with its closing slash; may be null.
    virtual char const* getDirName() const = 0;

protected:
    ~FltInput() = default;
};
