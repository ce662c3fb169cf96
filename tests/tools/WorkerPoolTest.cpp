#include "convert/WorkerPool.h"

#include <csignal>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <unistd.h>

namespace
{

/// Answers "die" by its own end, and all else by the same text and the number of its process.
std::vector<std::string> answer(std::vector<std::string> const& request, WorkerProcess::Tell const& tell)
{
    if (request.front() == "die")
        std::raise(SIGKILL);
    if (request.front() == "exit")
        ::_exit(7);
    tell("half of it");
    if (request.front() == "warn")
        static_cast<void>(::write(STDERR_FILENO, "a warning\n", 10));
    return {request.front(), std::to_string(::getpid())};
}

struct Outcome {
    std::map<std::size_t, WorkerPool::Result> results;
    std::size_t notes = 0;
};

Outcome run(WorkerPool& pool, std::vector<std::string> const& requests)
{
    Outcome outcome;
    pool.run(requests.size(), [&](std::size_t number) { return std::vector<std::string>{requests[number]}; },
             {[&](std::size_t, std::string const& note) { outcome.notes += note == "half of it" ? 1 : 0; },
              [&](std::size_t number, WorkerPool::Result const& result) {
                  EXPECT_TRUE(outcome.results.emplace(number, result).second) << "each ends once";
              }});
    return outcome;
}

} // namespace

TEST(WorkerPool, answersEveryRequestInAFewProcesses)
{
    WorkerPool pool(3, answer);
    std::vector<std::string> const requests(100, std::string("a\0b", 3));
    Outcome const outcome = run(pool, requests);
    ASSERT_EQ(outcome.results.size(), 100U);
    EXPECT_EQ(outcome.notes, 100U);
    std::set<std::string> processes;
    for (auto const& [number, result] : outcome.results) {
        EXPECT_EQ(result.reply.at(0), requests[0]);
        EXPECT_EQ(result.death, "");
        processes.insert(result.reply.at(1));
    }
    EXPECT_LE(processes.size(), 3U);
    EXPECT_EQ(processes.count(std::to_string(::getpid())), 0U);
}

TEST(WorkerPool, losesOnlyTheRequestAtWhichAWorkerDies)
{
    WorkerPool pool(2, answer);
    Outcome const outcome = run(pool, {"a", "die", "b", "die", "c", "exit", "d"});
    ASSERT_EQ(outcome.results.size(), 7U);
    for (std::size_t const dead : {1, 3})
        EXPECT_EQ(outcome.results.at(dead).death, "signal 9 (Killed)");
    EXPECT_EQ(outcome.results.at(5).death, "exit code 7");
    for (std::size_t const well : {0, 2, 4, 6})
        EXPECT_EQ(outcome.results.at(well).death, "");
}

TEST(WorkerPool, keepsWhatARequestWritesOnStandardErrorWithItsResult)
{
    WorkerPool pool(2, answer);
    Outcome const outcome = run(pool, {"a", "warn", "b", "warn"});
    for (std::size_t number = 0; number < 4; ++number)
        EXPECT_EQ(outcome.results.at(number).errors, number % 2 == 1 ? "a warning\n" : "");
}

TEST(WorkerPool, takesMessagesThatAreLargerThanAPipe)
{
    WorkerPool pool(2, answer);
    std::vector<std::string> const requests(4, std::string(3'000'000, 'x'));
    Outcome const outcome = run(pool, requests);
    for (auto const& [number, result] : outcome.results)
        EXPECT_EQ(result.reply.at(0).size(), requests[number].size());
}

TEST(WorkerPool, keepsOnlyTheBeginningOfEndlessErrors)
{
    WorkerPool pool(1, [](std::vector<std::string> const&, WorkerProcess::Tell const&) {
        std::string const line(1000, 'e');
        for (int i = 0; i < 1000; ++i)
            static_cast<void>(::write(STDERR_FILENO, line.data(), line.size()));
        return std::vector<std::string>{};
    });
    std::string const errors = run(pool, {"a"}).results.at(0).errors;
    EXPECT_LT(errors.size(), 100'000U);
    EXPECT_NE(errors.find("... and more\n"), std::string::npos);
}

TEST(WorkerPool, doesAnotherRunWithTheSameWorkers)
{
    WorkerPool pool(1, answer);
    std::string const first = run(pool, {"a"}).results.at(0).reply.at(1);
    EXPECT_EQ(run(pool, {"b"}).results.at(0).reply.at(1), first);
    EXPECT_EQ(run(pool, {}).results.size(), 0U);
}
