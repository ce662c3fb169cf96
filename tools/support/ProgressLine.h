#pragma once

#include <chrono>
#include <string>

/// A line at the foot of a terminal that says how far the work is, and goes away when it is done.
///
/// It stands on standard error. Where that is no terminal nothing is ever printed.
class ProgressLine
{
public:
    enum class Start {
        never,
        afterASecond, ///< So that short work stays silent.
        atOnce,
    };

    explicit ProgressLine(Start start);
    ~ProgressLine();

    ProgressLine(ProgressLine const&) = delete;
    ProgressLine& operator=(ProgressLine const&) = delete;

    /// Shows a text in place of the one before, but not more often than can be read.
    void show(std::string const& text);

    /// Takes the line away, so that something else can be printed. The next show() brings it back.
    void clear();

    /// Seconds since the work began.
    double seconds() const;

    /// How long the rest of the work may take: "about 1:05 left". Empty as long as nobody can know.
    /// @param seconds  what the work took so far
    /// @param partDone how much of it is done, from 0 to 1
    static std::string timeLeft(double seconds, double partDone);

private:
    using Clock = std::chrono::steady_clock;

    bool isOn;
    bool isShown = false;
    Clock::time_point begin = Clock::now();
    Clock::time_point next;
};
