#pragma once

#include "parser/FltInput.h"

#include <cstddef>
#include <cstdio>
#include <memory>

class OpenFile;

/// A file, read whole into memory when the object is made. Backslashes of the name are taken as slashes.
///
/// A file that can't be opened is reported on std::cerr, and isInFlowCreated() is false from then on. Only
/// regular files are opened: a directory or a device counts as one that can't be.
class VELLOREADER_API FltFileInput : public FltInput
{
public:
    explicit FltFileInput(char const* fileName); ///< Reads a file.

    /// Reads a file that the library has opened already, whatever stands under its name by now.
    /// @param fileName what it is called
    /// @param file     none if it can't be opened
    FltFileInput(char const* fileName, OpenFile file);
    virtual ~FltFileInput() = default;

    FltFileInput(FltFileInput const&) = delete;
    FltFileInput& operator=(FltFileInput const&) = delete;

    char* getBuffer() override { return buffer.get(); }
    long getSize() const override { return size; }
    bool isInFlowCreated() const override { return flowCreated; }
    char const* getFileName() const override { return fileName.get(); }
    char const* getDirName() const override { return dirName.get(); }

    /// The same as getDirName().
    virtual char const* getAdditionalDirName() const { return dirName.get(); }

    /// Reports whether a file could be opened: success on std::cout, failure on std::cerr. The constructor
    /// does this, and so does code that uses a file in memory for the second time.
    static void reportOpening(char const* fileName, bool isOpen);

    /// Takes the size of the open file and goes back to its start.
    void calculFileSize();

    /// Reads the open file into the buffer. If it can't be read to its end, the size is set to what was read,
    /// and that is reported to the console.
    void fileToBuffer();

    /// Has the parser give the bytes back while it reads them, since nobody else wants them: getBuffer() is
    /// null after that, and there is nothing to parse a second time. Without this call they stay as long as
    /// the object.
    void dropBytesWhenParsed();

    /// The same for another reader, which needs the bytes before @p first to the end.
    void dropBytesFrom(std::size_t first);

    /// Gives the memory of the bytes before @p end back, if one of the above was called; they are zero from
    /// then on. Less than a few megabytes wait for more.
    void dropBytesBefore(char const* end)
    {
        if (dropsBytes && end - dropped >= droppedAtOnce)
            dropMore();
    }

    /// Frees all bytes, if one of the above was called.
    void dropBytes();

    /// Writes every byte to std::cout as a decimal number followed by a blank.
    void showBuffer();

private:
    struct Close {
        void operator()(FILE* open) const { std::fclose(open); }
    };

    bool flowCreated = false;
    std::unique_ptr<char[]> buffer;
    std::unique_ptr<char[]> fileName;
    std::unique_ptr<char[]> dirName;
    std::unique_ptr<FILE, Close> file;
    /// Bytes whose memory is given back in one call: two of the largest pages.
    static constexpr std::ptrdiff_t droppedAtOnce = std::ptrdiff_t(4) << 20;

    void take(OpenFile opened);
    void dropMore();

    long size = 0;
    bool dropsBytes = false;
    char* dropped = nullptr; ///< The end of what was given back.
};
