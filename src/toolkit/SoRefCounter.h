#pragma once

#include "toolkit/VelloReaderExport.h"

/// An object that counts its references, as the toolkit's nodes do: it begins with none, and is deleted with
/// its last one. Not for use from two threads at a time.
class VELLOREADER_API SoRefCounter
{
public:
    virtual ~SoRefCounter();

    SoRefCounter(SoRefCounter const&) = delete;
    SoRefCounter& operator=(SoRefCounter const&) = delete;

    void ref() const; ///< Takes a reference.

    /// Gives a reference back, and deletes the object if that was the last.
    void unref() const;

    /// Gives a reference back, but keeps the object, even if that was the last.
    void unrefNoDelete() const;

    int getRefCount() const { return references; } ///< How many references there are.

protected:
    SoRefCounter() = default;

private:
    mutable int references = 0;
};
