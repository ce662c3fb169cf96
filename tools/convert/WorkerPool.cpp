#include "convert/WorkerPool.h"

#include "support/ToolError.h"

#include <algorithm>
#include <optional>
#include <poll.h>
#include <utility>

struct WorkerPool::Worker {
    Worker(Work const& work, std::vector<int> const& others) : process(work, others) {}

    WorkerProcess process;
    std::optional<std::size_t> request; ///< What it is doing.
    bool isDead = false;
};

WorkerPool::WorkerPool(std::size_t workers, Work work)
    : most(std::max<std::size_t>(workers, 1)), work(std::move(work))
{
}

WorkerPool::~WorkerPool() = default;

/// Sees to it that so many requests can be done at a time, or fewer if the system says no.
void WorkerPool::startWorkers(std::size_t count)
{
    while (workers.size() < std::min(most, count)) {
        std::vector<int> others;
        for (std::unique_ptr<Worker> const& worker : workers) {
            others.push_back(worker->process.stream());
            others.push_back(worker->process.errorStream());
        }
        try {
            workers.push_back(std::make_unique<Worker>(work, others));
        } catch (ToolError const&) {
            if (workers.empty())
                throw;
            return;
        }
    }
}

void WorkerPool::wait() const
{
    std::vector<pollfd> streams;
    for (std::unique_ptr<Worker> const& worker : workers) {
        streams.push_back({worker->process.stream(), POLLIN, 0});
        streams.push_back({worker->process.errorStream(), POLLIN, 0});
    }
    ::poll(streams.data(), streams.size(), -1);
}

/// Takes what a worker has to say.
void WorkerPool::hear(Worker& worker, Watcher const& watcher)
{
    worker.isDead = !worker.process.receive();
    worker.process.receiveErrors();
    while (std::optional<WorkerMessage> message = worker.process.nextMessage()) {
        if (message->kind == WorkerMessage::Kind::note)
            watcher.note(*worker.request, message->fields.front());
        else
            watcher.end(*std::exchange(worker.request, std::nullopt),
                        {std::move(message->fields), worker.process.takeErrors(), ""});
    }
}

/// Removes a worker that is dead.
void WorkerPool::bury(std::size_t position, Watcher const& watcher)
{
    std::unique_ptr<Worker> const worker = std::move(workers[position]);
    workers.erase(workers.begin() + static_cast<std::ptrdiff_t>(position));
    std::string const death = worker->process.howItEnded();
    if (worker->request)
        watcher.end(*worker->request, {{}, worker->process.takeErrors(), death});
}

void WorkerPool::run(std::size_t count, std::function<std::vector<std::string>(std::size_t)> const& request,
                     Watcher const& watcher)
{
    std::size_t next = 0;
    for (std::size_t ended = 0; ended < count;) {
        startWorkers(count - ended);
        for (std::unique_ptr<Worker> const& worker : workers) {
            if (worker->request || next == count)
                continue;
            worker->request = next;
            worker->process.send(request(next++));
        }
        wait();
        Watcher const counting{watcher.note, [&](std::size_t number, Result const& result) {
                                   ++ended;
                                   watcher.end(number, result);
                               }};
        for (std::size_t i = workers.size(); i-- > 0;) {
            hear(*workers[i], counting);
            if (workers[i]->isDead)
                bury(i, counting);
        }
    }
}
