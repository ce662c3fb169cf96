#pragma once

#include "support/StreamCapture.h"

#include <functional>
#include <string>

/// What a piece of work took.
struct BenchTime {
    double wall = 0;       ///< Seconds on the clock.
    double cpu = 0;        ///< Seconds of processor time, in the system's calls too.
    double peakMemory = 0; ///< Bytes of the process at its largest.

    /// The shorter times and the smaller memory of two runs.
    static BenchTime best(BenchTime const& a, BenchTime const& b);

    /// Runs the work in this process. The memory is that of the process so far.
    static BenchTime of(std::function<void()> const& work);

    /// Runs the work in a process of its own, @p runs times, and takes the best. Ends the program if the work
    /// fails.
    static BenchTime apart(int runs, std::function<void()> const& work);

    /// Runs another program in the same way.
    static BenchTime ofCommand(int runs, std::string const& command);
};

/// Sends std::cout and std::cerr to nowhere while it lives, and puts their own buffers back.
class Silence
{
    StreamCapture const out{std::cout, CaptureBuffer::nothing};
    StreamCapture const err{std::cerr, CaptureBuffer::nothing};
};
