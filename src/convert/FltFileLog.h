#pragma once

class FltLogStream;

/// Sends std::cout into a log file, and leaves it there: once the log is closed, later output is lost until
/// somebody gives std::cout another buffer.
class FltFileLog
{
public:
    FltFileLog() = default;
    ~FltFileLog() { close(); }

    FltFileLog(FltFileLog const&) = delete;
    FltFileLog& operator=(FltFileLog const&) = delete;

    /// Sends std::cout into a new file at @p path. If the file can't be made, the output is lost silently.
    /// @param database the file that is converted, which the log must never lead into; null if none is known
    void open(char const* path, char const* database = nullptr);

    /// Closes the file, if one is open.
    void close();

private:
    bool fileLoggingEnabled = false;
    FltLogStream* logStream = nullptr; ///< Never deleted: std::cout may still use its buffer.
};
