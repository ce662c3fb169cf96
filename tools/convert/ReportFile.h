#pragma once

#include "convert/ReportReader.h"

#include <optional>
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

    /// What run wrote the file before; nothing if none did.
    std::optional<ReportRun> const& earlierRun() const { return before.run(); }

    /// What it told of a database, which is of no use where its run was of another kind. Asked for before
    /// begin(): it is read again, so that no more than one is held.
    std::optional<ReportLine> earlierLine(std::string const& input) const;

    /// Begins with the lines of some databases that are taken over as they stand. Those of a run that goes on
    /// at the same time stay.
    void begin(std::vector<std::string> const& takenOver);

    /// Adds a line.
    void add(ReportLine const& line);

    /// Why lines couldn't be written, a sentence; empty if all could.
    std::string const& problem() const { return firstProblem; }

private:
    void open();
    bool isStillThere() const;
    bool read();
    std::string textOf(std::string const& input) const;
    bool writeBegin(int next, std::vector<std::string> const& takenOver) const;
    void append(std::string const& text);
    void fail(int reason);

    std::string path;
    ReportRun run;
    int file = -1;
    bool isSole = false; ///< Whether no other run writes it.
    bool isTorn = false; ///< Whether the last line isn't whole.
    ReportReader before;
    std::vector<ReportReader::Place> places; ///< Of earlier lines, by the numbers of their databases.
    std::string firstProblem;
};
