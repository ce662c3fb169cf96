#include "convert/ReportReader.h"

#include "ReportExamples.h"
#include "WrittenReport.h"
#include "support/ScratchFolder.h"
#include "support/ToolError.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace
{

/// What a reader says, a line each, of a text that comes in pieces.
std::vector<std::string> told(std::string_view text, std::size_t piece)
{
    std::vector<std::string> told;
    ReportReader reader(
        [&told](std::size_t database, ReportLine const& line, ReportReader::Place const& place) {
            told.push_back(std::to_string(database) + " " + line.input + " " + std::to_string(place.offset) +
                           " " + std::to_string(place.size));
        });
    for (std::size_t at = 0; at < text.size(); at += piece)
        reader.add(text.substr(at, piece));
    reader.end();
    told.push_back(std::to_string(reader.torn()) + (reader.run() ? " torn of a run" : " torn"));
    return told;
}

} // namespace

TEST(ReportReader, givesTheLastLineOfEachDatabase)
{
    ReportLine later = exampleLine();
    later.bytesWritten = 99;
    WrittenReport const report(exampleRun().text() + exampleLine().text() + exampleLine("b.flt").text() +
                               later.text() + "{torn");
    ASSERT_TRUE(report.run);
    EXPECT_TRUE(report.run->isLike(exampleRun()));
    EXPECT_EQ(report.run->databases, 1000U);
    ASSERT_EQ(report.lines.size(), 2U);
    EXPECT_EQ(report.lines[0].bytesWritten, 99U);
    EXPECT_EQ(report.torn, 1U);
    std::string const text = exampleLine().text();
    EXPECT_EQ(WrittenReport(exampleRun().text() + text.substr(0, text.size() - 1)).lines.size(), 0U)
        << "without its end a line may lack digits";
    EXPECT_FALSE(WrittenReport("").run);
}

TEST(ReportReader, readsTheSameInWhateverPiecesAReportComes)
{
    std::string const begin = exampleRun().text(), a = exampleLine("a.flt").text(),
                      b = exampleLine("b.flt").text();
    std::string const text = begin + a + "\n{torn\n" + b + a + "{\"input\":";
    std::string const size = " " + std::to_string(a.size());
    std::size_t const second = begin.size() + a.size() + std::string_view("\n{torn\n").size();
    std::vector<std::string> const expected = {
        "0 a.flt " + std::to_string(begin.size()) + size, "1 b.flt " + std::to_string(second) + size,
        "0 a.flt " + std::to_string(second + b.size()) + size, "2 torn of a run"};
    for (std::size_t const piece : {std::size_t(1), std::size_t(7), a.size(), a.size() + 1, text.size()})
        EXPECT_EQ(told(text, piece), expected) << piece;
}

TEST(ReportReader, knowsTheNumbersOfDatabases)
{
    ReportReader reader([](std::size_t, ReportLine const&, ReportReader::Place const&) {});
    reader.add(exampleLine("a.flt").text() + exampleLine("b.flt").text() + exampleLine("a.flt").text());
    EXPECT_EQ(reader.numberOf("a.flt"), 0U);
    EXPECT_EQ(reader.numberOf("b.flt"), 1U);
    EXPECT_FALSE(reader.numberOf("c.flt"));
}

TEST(ReportReader, tellsWhichFileIsNoReport)
{
    ScratchFolder const folder;
    auto const problemOf = [](std::string const& file) {
        try {
            ReportReader::read(file, [](std::size_t, ReportLine const&, ReportReader::Place const&) {});
        } catch (ToolError const& problem) {
            return std::string(problem.what());
        }
        return std::string();
    };
    EXPECT_EQ(problemOf(folder / "none"), folder / "none" +
                                              ": cannot read this report: No such file or directory. "
                                              "Check its name and permissions.");
    EXPECT_EQ(problemOf(folder / "."), folder / "." +
                                           ": cannot read this report: Is a directory. Check its name "
                                           "and permissions.");
    std::string const letter = folder.write("letter", "Dear reader,\n");
    EXPECT_EQ(problemOf(letter), letter + ": this is no report. Give the files that --report has written.");
    EXPECT_EQ(problemOf(folder.write("report", exampleRun().text())), "");
}
