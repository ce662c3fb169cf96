#pragma once

#include "support/StreamCapture.h"

#include <functional>
#include <string>
#include <vector>

/// What a piece of work took.
struct BenchTime {
    using Work = std::function<void()>;

    double wall = 0;       ///< Seconds on the clock.
    double cpu = 0;        ///< Seconds of processor time, in the system's calls too.
    double peakMemory = 0; ///< Bytes of the process at its largest.

    /// The shorter times and the smaller memory of two runs.
    static BenchTime best(BenchTime const& a, BenchTime const& b);

    /// Runs the work in this process. The memory is that of the process so far.
    static BenchTime of(Work const& work);

    /// Runs the work in a process of its own, @p runs times, and takes the best. Ends the program if the work
    /// fails.
    static BenchTime apart(int runs, Work const& work);

    /// Runs pieces of work one after the other in one process of its own.
    /// @return one for each, and one for the end of the process, of which only the processor time is known
    static std::vector<BenchTime> stepsApart(std::vector<Work> const& steps);

    /// Runs another program in the same way.
    static BenchTime ofCommand(int runs, std::string const& command);
};

/// Sends std::cout and std::cerr to nowhere while it lives, and puts their own buffers back.
class Silence
{
    StreamCapture const out{std::cout, CaptureBuffer::nothing};
    StreamCapture const err{std::cerr, CaptureBuffer::nothing};
};
