#include "ProgramRun.h"
#include "messages/FltText.h"
#include "support/FaultyDatabases.h"
#include "support/Text.h"

#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <nlohmann/json.hpp>
#include <set>

namespace
{

using Json = nlohmann::json;

class Fltcheck : public testing::Test
{
protected:
    std::string faulty(int number)
    {
        auto const& all = faultyDatabases();
        return std::find_if(all.begin(), all.end(),
                            [&](FaultyDatabase const& one) { return one.number == number; })
            ->write(folder);
    }

    std::string faultless()
    {
        faultlessDatabase().save(folder / "faultless.flt");
        return folder / "faultless.flt";
    }

    ScratchFolder folder;
};

} // namespace

TEST_F(Fltcheck, findsNothingInAFaultlessDatabase)
{
    std::string const file = faultless();
    ProgramRun const run("fltcheck", "--strict " + file);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.output, file + ": nothing found\n");
    EXPECT_EQ(run.errors, "");
    EXPECT_EQ(ProgramRun("fltcheck", "-q " + file).output, "");
}

/// The offset was right or lost for both alike.
TEST_F(Fltcheck, judgesOffsetsOfVerticesByTheConversionThatItIsAskedAbout)
{
    FltWriter flt;
    flt.vertexPalette();
    std::size_t const head = flt.lastOffset();
    double const first = flt.vertex("VertexColor", 0, 0, 0);
    flt.add("Comment", {{"textDescription", "between vertices"}});
    double corners[2];
    for (int i = 0; i < 2; ++i) {
        flt.vertex("VertexColor", 1, i, 0);
        corners[i] = static_cast<double>(flt.lastOffset() - head);
    }
    flt.push().add("Object").push().face({first, corners[0], corners[1]}).pop().pop();
    flt.save(folder / "between.flt");
    EXPECT_FALSE(holds(ProgramRun("fltcheck", folder / "between.flt").output, "FLT-201"));
    EXPECT_TRUE(holds(ProgramRun("fltcheck", "--exact " + (folder / "between.flt")).output, "FLT-201"));
}

TEST_F(Fltcheck, saysPlaceSeverityNodeAndCodeInALine)
{
    std::string const file = faulty(601);
    ProgramRun const run("fltcheck", file);
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(
        holds(run.output, ": warning: A level of detail has an empty range: from 20 to 10 (level of detail"))
        << run.output;
    EXPECT_TRUE(holds(run.output, " [FLT-601]\n" + file + ": 1 warning\n")) << run.output;
}

TEST_F(Fltcheck, findsEachFaultAsAProgram)
{
    std::vector<std::unique_ptr<ScratchFolder>> folders;
    for (bool const isExact : {false, true}) {
        std::string files;
        std::vector<FaultyDatabase const*> databases;
        for (FaultyDatabase const& database : faultyDatabases()) {
            if (isExact != (database.number > 800))
                continue;
            folders.push_back(std::make_unique<ScratchFolder>());
            files += " " + database.write(*folders.back());
            databases.push_back(&database);
        }
        ProgramRun const run("fltcheck", (isExact ? "--exact --json" : "--json") + files);
        EXPECT_EQ(run.exitCode, isExact ? 0 : 3) << "only the others have errors";
        Json const checked = Json::parse(run.output)["files"];
        ASSERT_EQ(checked.size(), databases.size());
        for (std::size_t i = 0; i < databases.size(); ++i) {
            std::set<int> numbers;
            for (Json const& finding : checked[i]["findings"])
                numbers.insert(std::stoi(finding["code"].get<std::string>().substr(4)));
            numbers.erase(901); // what isn't shown may come with any
            std::set<int> expected = databases[i]->others;
            expected.insert(databases[i]->number);
            EXPECT_EQ(numbers, expected);
        }
    }
}

TEST_F(Fltcheck, exitsWith3ForErrorsAndUnderStrictForWarningsToo)
{
    EXPECT_EQ(ProgramRun("fltcheck", faulty(101)).exitCode, 3);
    EXPECT_EQ(ProgramRun("fltcheck", "-q " + faulty(101)).exitCode, 3);
    EXPECT_EQ(ProgramRun("fltcheck", "--json " + faulty(101)).exitCode, 3);
    EXPECT_EQ(ProgramRun("fltcheck", "--sarif " + faulty(101)).exitCode, 3);
    EXPECT_EQ(ProgramRun("fltcheck", "--ignore FLT-101 " + faulty(101)).exitCode, 0);
    EXPECT_EQ(ProgramRun("fltcheck", faulty(601)).exitCode, 0);
    EXPECT_EQ(ProgramRun("fltcheck", "--strict " + faulty(101)).exitCode, 3);
    EXPECT_EQ(ProgramRun("fltcheck", "--strict " + faulty(601)).exitCode, 3);
    EXPECT_EQ(ProgramRun("fltcheck", "--strict " + faulty(205)).exitCode, 0);
    EXPECT_EQ(ProgramRun("fltcheck", "--strict --ignore FLT-601 " + faulty(601)).exitCode, 0);
}

TEST_F(Fltcheck, exitsWith0WhateverIsFoundForWhoOnlyWantsTheReport)
{
    ProgramRun const run("fltcheck", "--exit-zero " + faulty(101));
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_TRUE(holds(run.output, "[FLT-101]")) << run.output;
    EXPECT_EQ(ProgramRun("fltcheck", "--exit-zero " + (folder / "gone.flt")).exitCode, 1);
    EXPECT_EQ(ProgramRun("fltcheck", "--exit-zero --strict " + faultless()).exitCode, 2);
}

TEST_F(Fltcheck, countsWhatItFoundInSeveralFilesInTheLastLine)
{
    ScratchFolder other;
    std::string const warned = faulty(601), file = folder.path("well/faultless.flt");
    faultlessDatabase().save(file);
    std::string const text = other.write("text.flt", "no database");
    auto const lastLineOf = [](std::string const& arguments) {
        std::string const output = ProgramRun("fltcheck", arguments).output;
        return output.substr(output.rfind('\n', output.size() - 2) + 1);
    };
    EXPECT_EQ(lastLineOf(warned + " " + file + " " + warned), "3 files checked: 2 warnings\n");
    EXPECT_EQ(lastLineOf(file + " " + text + " " + file),
              "2 files checked, 1 can't be read: nothing found\n");
    EXPECT_EQ(lastLineOf(file), file + ": nothing found\n") << "a file has its own count";
    EXPECT_EQ(ProgramRun("fltcheck", "-q " + warned + " " + file).output, "");
}

TEST_F(Fltcheck, judgesAllDatabasesOfADirectoryAndBelowIt)
{
    std::string const below = folder.path("models/sub/b.flt"), above = folder.path("models/a.flt");
    faultlessDatabase().save(below);
    faultlessDatabase().save(above);
    ProgramRun const run("fltcheck", folder / "models");
    EXPECT_EQ(run.output,
              above + ": nothing found\n" + below + ": nothing found\n2 files checked: nothing found\n");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(Json::parse(ProgramRun("fltcheck", "--json " + (folder / "models")).output)["files"].size(),
              2U);
    std::filesystem::create_directories(folder / "empty");
    ProgramRun const empty("fltcheck", folder / "empty");
    EXPECT_EQ(empty.exitCode, 1);
    EXPECT_TRUE(holds(empty.errors, "empty: holds no database")) << empty.errors;
}

TEST_F(Fltcheck, ignoresKindsByCodeOrNumber)
{
    std::string const file = faulty(601);
    EXPECT_EQ(ProgramRun("fltcheck", "--ignore FLT-601 " + file).output, file + ": nothing found\n");
    EXPECT_EQ(ProgramRun("fltcheck", "--ignore 101 --ignore 601 " + file).output, file + ": nothing found\n");
    ProgramRun const unknown("fltcheck", "--ignore FLT-999 " + file);
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_EQ(unknown.output, "");
    EXPECT_EQ(unknown.errors,
              "fltcheck: there is no code FLT-999; --codes lists them. Try: fltcheck --help\n");
}

TEST_F(Fltcheck, saysWhatTheExactConversionLosesOnRequest)
{
    std::string const file = faulty(813);
    EXPECT_FALSE(holds(ProgramRun("fltcheck", "--fast " + file).output, "FLT-813"));
    EXPECT_TRUE(holds(ProgramRun("fltcheck", "--exact " + file).output, "FLT-813"));
}

TEST_F(Fltcheck, showsErrorsAloneWhenQuiet)
{
    EXPECT_EQ(ProgramRun("fltcheck", "-q " + faulty(601)).output, "");
    std::string const errors = ProgramRun("fltcheck", "-q " + faulty(101)).output;
    EXPECT_EQ(std::count(errors.begin(), errors.end(), '\n'), 1);
}

TEST_F(Fltcheck, judgesTheOtherFilesWhenOneCantBeRead)
{
    std::string const file = faultless();
    std::string const text = folder.write("text.flt", "no database");
    ProgramRun const run("fltcheck", text + " " + file);
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_TRUE(holds(run.errors, "text.flt: not an OpenFlight database"));
    EXPECT_EQ(run.output, file + ": nothing found\n1 file checked, 1 can't be read: nothing found\n");
    Json const json = Json::parse(ProgramRun("fltcheck", "--json " + text + " " + file).output);
    EXPECT_TRUE(json["files"][0]["problem"].is_string());
    EXPECT_TRUE(json["files"][1]["problem"].is_null());
}

TEST_F(Fltcheck, givesAllOfAFindingAsJson)
{
    Json const file = Json::parse(ProgramRun("fltcheck", "--json --fast " + faulty(506)).output)["files"][0];
    EXPECT_EQ(file["counts"], Json::parse(R"({"error": 1, "warning": 0, "note": 0})"));
    Json const& finding = file["findings"][0];
    EXPECT_EQ(finding["severity"], "error");
    EXPECT_EQ(finding["title"], "An instance isn't defined");
    EXPECT_EQ(finding["text"], "instance 5");
    EXPECT_EQ(finding["record"], "instance reference");
    EXPECT_EQ(finding["opcode"], 61);
    EXPECT_EQ(finding["node"], "5");
    EXPECT_EQ(finding["count"], 1);
    EXPECT_TRUE(finding["offset"].is_number_unsigned());
}

TEST_F(Fltcheck, writesSarifThatHoldsWhatTheStandardDemands)
{
    std::string const text = folder.write("a b.txt", "no database");
    static_cast<void>(text);
    ProgramRun const run("fltcheck",
                         "--sarif --fast " + faulty(506) + " " + folder.write("text.flt", "text"));
    EXPECT_EQ(run.exitCode, 1);
    Json const sarif = Json::parse(run.output);
    EXPECT_EQ(sarif["version"], "2.1.0");
    ASSERT_EQ(sarif["runs"].size(), 1U);
    Json const& driver = sarif["runs"][0]["tool"]["driver"];
    EXPECT_EQ(driver["name"], "fltcheck");
    std::set<std::string> const levels = {"none", "note", "warning", "error"};
    std::set<std::string> ids;
    for (Json const& rule : driver["rules"]) {
        EXPECT_TRUE(ids.insert(rule["id"]).second) << "twice: " << rule["id"];
        EXPECT_TRUE(rule["shortDescription"]["text"].is_string());
        EXPECT_TRUE(rule["fullDescription"]["text"].is_string());
        EXPECT_TRUE(rule["help"]["text"].is_string());
        EXPECT_EQ(levels.count(rule["defaultConfiguration"]["level"]), 1U);
    }
    Json const& results = sarif["runs"][0]["results"];
    ASSERT_EQ(results.size(), 1U);
    EXPECT_EQ(results[0]["ruleId"], "FLT-506");
    EXPECT_EQ(driver["rules"][results[0]["ruleIndex"].get<std::size_t>()]["id"], "FLT-506");
    EXPECT_EQ(levels.count(results[0]["level"]), 1U);
    EXPECT_TRUE(results[0]["message"]["text"].is_string());
    Json const& place = results[0]["locations"][0]["physicalLocation"];
    EXPECT_EQ(place["artifactLocation"]["uri"], "file://" + (folder / "database.flt"));
    EXPECT_GT(place["region"]["byteOffset"], 0);
    EXPECT_EQ(sarif["runs"][0]["invocations"][0]["executionSuccessful"], false);
    EXPECT_EQ(sarif["runs"][0]["invocations"][0]["toolExecutionNotifications"].size(), 1U);
}

TEST_F(Fltcheck, writesNamesIntoSarifAsReferences)
{
    ProgramRun const run("fltcheck", "--sarif --fast " + folder.write("100%\\ blue.flt", "text") + " no.flt");
    Json const notifications =
        Json::parse(run.output)["runs"][0]["invocations"][0]["toolExecutionNotifications"];
    EXPECT_EQ(notifications[1]["locations"][0]["physicalLocation"]["artifactLocation"]["uri"], "no.flt");
    Json const& blue = notifications[0]["locations"][0]["physicalLocation"]["artifactLocation"]["uri"];
    EXPECT_TRUE(holds(blue.get<std::string>(), "100%25%20"));
}

TEST_F(Fltcheck, showsNamesOfStrangersWithoutControls)
{
    for (std::string const control : {"\u009b", "\x9b", "\u202e"}) {
        FltWriter flt;
        flt.add("TexturePattern", {{"fileName", "t" + control + "31m.rgb"}, {"patternIndex", 1}});
        flt.push().add("LOD").add("LongID", {{"idASCII", "t" + control + "31m"}}).pop();
        std::string const file = folder.write("t" + control + ".flt", flt.bytes());
        for (char const* const options : {"", "-v", "--json", "--sarif", "--exact"}) {
            ProgramRun const run("fltcheck", std::string(options) + " " + file);
            std::string const all = run.output + run.errors;
            EXPECT_TRUE(holds(all, "t\\")) << options << all;
            EXPECT_EQ(FltText::printable(all, true), all) << options;
        }
    }
}

TEST_F(Fltcheck, explainsACodeAndListsThemAll)
{
    ProgramRun const run("fltcheck", "--explain FLT-601");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.output.substr(0, run.output.find('\n')), "# FLT-601: A level of detail has an empty range");
    EXPECT_TRUE(holds(run.output, "## How to mend it"));
    EXPECT_EQ(ProgramRun("fltcheck", "--explain FLT-1").exitCode, 2);
    std::string const codes = ProgramRun("fltcheck", "--codes").output;
    EXPECT_EQ(codes.substr(0, 44), "FLT-101  error    A record has the length ze");
    EXPECT_EQ(static_cast<std::size_t>(std::count(codes.begin(), codes.end(), '\n')),
              faultyDatabases().size() + 1);
}

TEST_F(Fltcheck, hasAPageInTheDocsForEachCode)
{
    std::string const codes = ProgramRun("fltcheck", "--codes").output;
    std::string options, pages;
    for (std::size_t line = 0; line < codes.size(); line = codes.find('\n', line) + 1) {
        std::string const code = codes.substr(line, 7);
        options += "--explain " + code + " ";
        pages += contentsOf(VELLOREADER_DOCS + ("tools/fltcheck/" + code + ".md"));
    }
    EXPECT_EQ(ProgramRun("fltcheck", options).output, pages);
}

TEST_F(Fltcheck, refusesWhatExcludesEachOther)
{
    EXPECT_EQ(ProgramRun("fltcheck", "--json --sarif " + faultless()).exitCode, 2);
    EXPECT_EQ(ProgramRun("fltcheck", "").exitCode, 2);
}
