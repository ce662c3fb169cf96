#pragma once

#include "convert/Conversion.h"
#include "convert/ConversionPlan.h"
#include "convert/ReportFile.h"

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

/// The report of a run: what earlier runs have done already, and what this one does.
class RunReport
{
public:
    /// @param hasFilesBeside whether results may consist of several files
    /// @throw ToolError; see ReportFile
    RunReport(std::string const& path, ReportRun const& run, bool hasFilesBeside);

    /// What is to be said of the earlier report, such as that it is of no use; empty if there is nothing.
    std::string remark() const;

    /// Whether an earlier line still holds for a database: all files of its result are there, in their sizes,
    /// and all that it was made of is as it was. Such a line is taken over.
    /// @param names the results of others that it would name
    bool isUpToDate(ConversionPlan::Entry const& entry, std::vector<std::string> const& names);

    /// Begins to write, once isUpToDate() was asked for all.
    void begin() { file.begin(takenOver); }

    /// @param facts see textOf()
    void add(ConversionPlan::Entry const& entry, ConversionStatistics const& statistics,
             std::vector<std::string> const& names, std::string const& facts);
    void addFailure(ConversionPlan::Entry const& entry, std::string const& problem);

    /// Why lines couldn't be written, a sentence; empty if all could.
    std::string const& problem() const { return file.problem(); }

    /// Facts as a text, to send them to another process.
    static std::string textOf(ConversionFacts const& facts);

private:
    std::optional<FileStamp> const& stampOf(std::string const& path);
    bool isThere(ReportLine const& line, ConversionPlan::Entry const& entry);

    ReportRun const run;
    bool const hasFilesBeside;
    ReportFile file;
    std::unordered_map<std::string, std::optional<FileStamp>> stamps; ///< Of files as they are.
    std::unordered_map<std::string, bool> known;                      ///< Answers of isUpToDate().
    bool isOfThisKind;                  ///< Whether the earlier run was like this one.
    std::vector<std::string> takenOver; ///< The databases whose lines are.
};
