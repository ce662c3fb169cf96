#pragma once

#include "convert/ConversionOptions.h"
#include "convert/ConversionPlan.h"
#include "convert/DatabaseConverter.h"
#include "convert/ReferenceGraph.h"
#include "convert/ReferredFiles.h"
#include "convert/RunReport.h"
#include "convert/WorkerPool.h"
#include "support/LoaderOptions.h"
#include "support/Program.h"
#include "support/ProgressLine.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

/// Converts many databases, each in a process that may die without harm to the others.
class ConversionRun
{
public:
    /// Keeps all of them by reference. Nothing has started the toolkit yet.
    ConversionRun(Program const& program, LoaderOptions const& loaderOptions,
                  ConversionOptions const& options, DatabaseConverter const& converter);

    /// Makes sure that no output of a plan would replace what the inputs are or refer to, or anything at all
    /// if results are kept. Where no output is there yet, nothing is read.
    /// @throw ToolError, with the exit code for wrong usage unless results are kept
    void checkOutputs(ConversionPlan const& plan);

    /// Converts what is planned, and what that refers to if references are named. An input whose output would
    /// replace what the inputs are or refer to is reported, and the others are converted.
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
    bool opensReferences() const;
    bool keepsResults() const;
    bool replacesFiles(ConversionPlan const& plan) const;
    void tidyUp(ConversionPlan const& plan) const;
    void scan(ConversionPlan const& plan);
    void scanSome(std::vector<DatabaseScan::Reference> const& databases);
    void nameReferences(ConversionPlan& plan);
    void warnOfOutside(ConversionPlan const& plan);
    void findReferredFiles(ConversionPlan const& plan);
    std::vector<std::string> filesOf(ConversionPlan::Entry const& entry) const;
    std::string problemOf(ConversionPlan::Entry const& entry) const;
    bool isUpToDate(ConversionPlan const& plan, ConversionPlan::Entry const& entry);
    void startReport(ConversionPlan const& plan);
    bool isAllReported(ConversionPlan const& plan);
    std::vector<std::string> namesIn(ConversionPlan const& plan, ConversionPlan::Entry const& entry) const;
    std::vector<std::size_t> chooseWork(ConversionPlan const& plan);
    Fields requestFor(ConversionPlan const& plan, ConversionPlan::Entry const& entry) const;
    void convertAll(ConversionPlan const& plan, std::vector<std::size_t> const& chosen);
    void takeResult(ConversionPlan const& plan, ConversionPlan::Entry const& entry,
                    WorkerPool::Result const& result);
    void addFailure(ConversionPlan::Entry const& entry, std::string const& failure);
    void showProgress(std::size_t count, std::uint64_t bytes);
    ExitCode summary(ConversionPlan const& plan);

    Program const& program;
    LoaderOptions const& loaderOptions;
    ConversionOptions const& options;
    DatabaseConverter const& converter;
    WorkerPool pool;
    ReferenceGraph graph;
    std::unordered_map<std::string, std::string> scanned; ///< Paths of databases by canonical path.
    ReferredFiles referred;
    std::unordered_set<std::string> refused; ///< Outputs that would replace a file that is needed.
    std::optional<RunReport> report;
    ProgressLine progress;

    std::map<std::size_t, std::uint64_t> bytesInWork; ///< Of conversions that go on, by their number.
    std::uint64_t bytesDone = 0;
    double conversionBegin = 0; ///< Seconds after the beginning of the run.
    std::size_t converted = 0;
    std::size_t upToDate = 0;
    std::vector<std::string> failures; ///< A sentence each.
    ConversionStatistics total;
};
