#pragma once

#include <Inventor/SbString.h>
#include <Inventor/SoInput.h>
#include <cstdio>

/// Questions that a reader has about an input, answered with the toolkit's own operations. None of them reads
/// from the input.
///
/// An input always has a current file or buffer, if only standard input, unless its last openFile() has
/// failed: such an input must not be asked anything, here or in the toolkit.
namespace SoInputQueries
{

/// Whether the input is still at its header, and nothing has been read from it.
inline bool isReadingHeader(SoInput const* in)
{
    return in->getNumBytesRead() == 0;
}

/// The open file, or null: an input from memory has none.
inline FILE* getCurFile(SoInput const* in)
{
    return in->getCurFile();
}

/// The name of the current file as a C string; empty if it has none.
inline char const* getCurFileNameAsText(SoInput const* in)
{
    char const* const name = in->getCurFileName();
    return name != nullptr ? name : "";
}

/// The same as a string of the toolkit.
inline SbString getCurFileName(SoInput const* in)
{
    return {getCurFileNameAsText(in)};
}

/// Whether there is a file, open or by name. This doesn't ask SoInput::isValidFile(), which knows only the
/// toolkit's own formats, and waits for standard input.
inline bool isValid(SoInput const* in)
{
    return getCurFile(in) != nullptr || *getCurFileNameAsText(in) != '\0';
}

} // namespace SoInputQueries
