#pragma once

#include "support/SmallVertexPalettes.h"

#include <Inventor/errors/SoDebugError.h>
#include <chrono>
#include <cstddef>
#include <streambuf>
#include <string>

#ifdef __SANITIZE_ADDRESS__
constexpr bool isSanitized = true;
#else
constexpr bool isSanitized = false;
#endif

/// While this object lives the toolkit doesn't tell what it thinks of broken scenes.
class QuietToolkit
{
public:
    QuietToolkit() : callback(SoDebugError::getHandlerCallback()), data(SoDebugError::getHandlerData())
    {
        SoDebugError::setHandlerCallback([](SoError const*, void*) {}, nullptr);
    }
    ~QuietToolkit() { SoDebugError::setHandlerCallback(callback, data); }

    QuietToolkit(QuietToolkit const&) = delete;
    QuietToolkit& operator=(QuietToolkit const&) = delete;

private:
    SoErrorCB* callback;
    void* data;
};

/// Takes everything, keeps nothing but its size.
class CountingBuffer : public std::streambuf
{
public:
    std::size_t size = 0;

protected:
    int_type overflow(int_type character) override
    {
        ++size;
        return traits_type::not_eof(character);
    }
    std::streamsize xsputn(char const* /*text*/, std::streamsize count) override
    {
        size += static_cast<std::size_t>(count);
        return count;
    }
};

class Stopwatch
{
public:
    double seconds() const
    {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    }

private:
    std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
};

/// What a conversion of a broken database came to.
struct Endured {
    std::size_t records = 0;  ///< That the log dumps.
    std::size_t logBytes = 0; ///< Of the log.
    bool wasRefused = false;  ///< By the exception that a negative number of mask words is answered with.
};

/// Converts a database, does with the scene what a host does, and destroys it. Any exception but the one that
/// is allowed goes on.
Endured endure(std::string const& bytes);

/// Whether a database holds a switch whose number of mask words is negative.
bool hasNegativeSwitch(std::string const& bytes);

/// How many records stand whole in a database.
std::size_t countWholeRecords(std::string const& bytes);

/// Bytes of memory that the process holds.
std::size_t memoryInUse();

/// The most that the process has held since the last call of forgetPeak().
std::size_t peakMemory();
void forgetPeak();

/// How many files the process has open.
std::size_t openFiles();
