#pragma once

#include "iv/ConversionPlan.h"
#include "iv/DatabaseConverter.h"
#include "iv/ReferenceGraph.h"
#include "iv/WorkerPool.h"
#include "support/ProgressLine.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

/// Converts many databases, each in a process that may die without harm to the others.
class ConversionRun
{
public:
    struct Options {
        ConversionOptions conversion;
        std::size_t jobs = 1; ///< Conversions at a time.
        bool onlyIfNewer =
            false;              ///< Whether outputs are passed over that are newer than all they are made of.
        bool summarises = true; ///< Whether to end with a count.
        ProgressLine::Start progress = ProgressLine::Start::afterASecond;
        std::string dieAt;  ///< For tests: the name of the database at which a worker dies.
        std::string haltAt; ///< For tests: the name of the database at which a worker stops for ever.
    };

    /// Keeps all of them by reference. Nothing has started the toolkit yet.
    ConversionRun(Program const& program, LoaderOptions const& loaderOptions, Options const& options);

    /// Converts what is planned, and what that refers to if references are named.
    /// @throw UsageError if two inputs would become one file; nothing was converted then
    ExitCode run(ConversionPlan& plan);

private:
    using Fields = std::vector<std::string>;

    /// @name In a worker
    /// @{
    Fields work(Fields const& request, WorkerProcess::Tell const& tell) const;
    Fields convert(Fields const& request, WorkerProcess::Tell const& tell) const;
    /// @}

    bool namesReferences() const;
    void scan(ConversionPlan& plan);
    void scanSome(std::vector<DatabaseScan::Reference> const& databases);
    void planReferences(ConversionPlan& plan);
    bool isUpToDate(ConversionPlan::Entry const& entry) const;
    std::vector<std::size_t> chooseWork(ConversionPlan const& plan);
    Fields requestFor(ConversionPlan const& plan, ConversionPlan::Entry const& entry) const;
    void convertAll(ConversionPlan const& plan, std::vector<std::size_t> const& chosen);
    void takeResult(ConversionPlan::Entry const& entry, WorkerPool::Result const& result);
    void showProgress(std::size_t count, std::uint64_t bytes);
    ExitCode report(ConversionPlan const& plan);

    Program const& program;
    LoaderOptions const& loaderOptions;
    Options const& options;
    DatabaseConverter const converter;
    WorkerPool pool;
    ReferenceGraph graph;
    ProgressLine progress;

    std::map<std::size_t, std::uint64_t> bytesInWork; ///< Of conversions that go on, by their number.
    std::uint64_t bytesDone = 0;
    double conversionBegin = 0; ///< Seconds after the beginning of the run.
    std::size_t converted = 0;
    std::size_t upToDate = 0;
    std::vector<std::string> failures; ///< A sentence each.
    ConversionStatistics total;
};
