#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <sys/types.h>

/// A stream for scenes in front of another one.
///
/// It knows its position even if the other one is a pipe: the toolkit aligns binary data by that. And it can
/// compress what is written, in the form of gzip.
class SceneStream
{
public:
    /// @param target stays the caller's; its error flag tells whether it took everything
    SceneStream(FILE* target, bool compresses);
    ~SceneStream();

    SceneStream(SceneStream const&) = delete;
    SceneStream& operator=(SceneStream const&) = delete;

    /// Where to write. It lives as long as this object.
    FILE* stream() const { return input; }

    /// Hands over everything. Nothing may be written afterwards.
    /// @return the bytes that went into the target
    std::uint64_t finish();

private:
    struct Output;
    class Plain;
    class Compressed;

    static ssize_t write(void* stream, char const* bytes, std::size_t count);
    static int seek(void* stream, off64_t* offset, int whence);

    std::unique_ptr<Output> output;
    off64_t position = 0;
    bool isBroken = false; ///< Whether the target has refused something.
    FILE* input = nullptr;
};
