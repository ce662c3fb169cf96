#pragma once

#include "dump/FltDumpBuffer.h"
#include "toolkit/ReservedRoom.h"
#include "toolkit/SideFile.h"

#include <memory>
#include <ostream>

/// The buffer of a log file. Lines of a dump end with a flush, as a host that passes its own stream expects;
/// this buffer takes such flushes lightly and writes large blocks: when one is full, when write() is called,
/// and when the log closes. Output that can't be written, or that comes when no file is open, is lost without
/// an error: the stream on this buffer never fails.
class FltLogBuffer : public FltDumpBuffer
{
public:
    /// Creates or empties the file at @p path, as SideFile does; a file that is open is closed first.
    /// @param database the name of the database, which isn't overwritten; null if there is none
    SideFile::Outcome open(char const* path, char const* database = nullptr);

    /// Writes what is waiting.
    void write() override;

    /// Writes what is waiting and closes the file. @return false if anything could not be written
    bool close();

    /// Writes what is waiting in the log that is open, if one is.
    static void writeCurrent();

    FltLogBuffer() = default;
    ~FltLogBuffer() override;

protected:
    int_type overflow(int_type character) override;
    std::streamsize xsputn(char const* text, std::streamsize size) override;
    int sync() override { return 0; }

private:
    static constexpr int blockSize = 256 * 1024;

    std::unique_ptr<char[]> block;
    int file = -1;
    bool failed = false;
    off_t size = 0; ///< Of the file so far.
    ReservedRoom room;
};

/// A log file as a stream.
class FltLogStream : public std::ostream
{
public:
    FltLogStream() : std::ostream(nullptr) { rdbuf(&buffer); }

    FltLogBuffer buffer;
};
