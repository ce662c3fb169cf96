#pragma once

#include "convert/WorkerProcess.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

/// Does requests in processes of their own, several at a time. One that crashes costs only its own request.
///
/// A process begins as a copy of this one, which must have a single thread, and must not have started what
/// doesn't outlive that, such as the toolkit.
class WorkerPool
{
public:
    using Work = WorkerProcess::Work;

    struct Result {
        std::vector<std::string> reply;
        std::string errors; ///< What was written on standard error meanwhile.
        std::string death;  ///< How the worker ended, if it did: "signal 9 (Killed)". There is no reply then.
    };

    /// Is told how the requests go, by their number.
    struct Watcher {
        std::function<void(std::size_t request, std::string const& note)> note;
        std::function<void(std::size_t request, Result const& result)> end; ///< Once for each.
    };

    /// @param workers the most processes at a time, at least 1
    WorkerPool(std::size_t workers, Work work);
    ~WorkerPool();

    WorkerPool(WorkerPool const&) = delete;
    WorkerPool& operator=(WorkerPool const&) = delete;

    /// Does requests, and returns when all have ended.
    /// @param count   how many there are
    /// @param request makes the fields of one by its number, when it is its turn
    /// @throw ToolError if there can't be a single process
    void run(std::size_t count, std::function<std::vector<std::string>(std::size_t)> const& request,
             Watcher const& watcher);

private:
    struct Worker;

    void startWorkers(std::size_t count);
    void wait() const;
    void hear(Worker& worker, Watcher const& watcher);
    void bury(std::size_t position, Watcher const& watcher);

    std::size_t const most;
    Work const work;
    std::vector<std::unique_ptr<Worker>> workers;
};
