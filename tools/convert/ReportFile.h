#pragma once

#include "convert/Report.h"

#include <string>
#include <vector>

/// A report that is being written, a line as soon as a database is done: what is in it counts, however the
/// run ends. Two runs may write one report at a time.
class ReportFile
{
public:
    /// Opens a report, and reads what earlier runs have left.
    /// @throw ToolError if it can't be opened, is another file, or belongs to a run of another kind that goes
    /// on
    ReportFile(std::string path, ReportRun run);
    ~ReportFile();

    ReportFile(ReportFile const&) = delete;
    ReportFile& operator=(ReportFile const&) = delete;

    /// What the file held. Its lines are of no use where its run was of another kind.
    Report const& earlier() const { return before; }

    /// Begins with the lines that are taken over. Those of a run that goes on at the same time stay.
    void begin(std::vector<ReportLine> const& takenOver);

    /// Adds a line.
    void add(ReportLine const& line);

    /// Why lines couldn't be written, a sentence; empty if all could.
    std::string const& problem() const { return firstProblem; }

private:
    void open();
    bool isStillThere() const;
    std::string contents() const;
    void append(std::string const& text);
    void fail(int reason);

    std::string path;
    ReportRun run;
    int file = -1;
    bool isSole = false; ///< Whether no other run writes it.
    bool isTorn = false; ///< Whether the last line isn't whole.
    Report before;
    std::string firstProblem;
};
