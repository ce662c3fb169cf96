#pragma once

#include "toolkit/VelloReaderExport.h"

/// An object that counts its references, in the way of the toolkit's nodes: it begins with none, and goes
/// with its last one. Not for use from two threads at a time.
class VELLOREADER_API SoRefCounter
{
public:
    virtual ~SoRefCounter();

    SoRefCounter(SoRefCounter const&) = delete;
    SoRefCounter& operator=(SoRefCounter const&) = delete;

    void ref() const;

    /// Takes a reference back, and deletes the object if that was the last.
    void unref() const;

    /// Takes a reference back, and lets the object live without any.
    void unrefNoDelete() const;

    int getRefCount() const { return references; }

protected:
    SoRefCounter() = default;

private:
    mutable int references = 0;
};
