#pragma once

#include "ProgramRun.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <vector>

/// The commands in the shell blocks of a page of documentation.
class PageExamples
{
public:
    /// @param page its bytes
    explicit PageExamples(std::string const& page)
    {
        std::istringstream lines(page);
        bool isShell = false;
        for (std::string line; std::getline(lines, line);) {
            if (line.compare(0, 3, "```") == 0)
                isShell = line == "```sh";
            else if (isShell)
                commands.push_back(line);
        }
    }

    /// Runs all in a folder with the sample database: each has to succeed in silence on standard error, and
    /// to print something unless it writes a file.
    void expectThatAllRun() const
    {
        ScratchFolder const folder;
        ASSERT_EQ(ProgramRun("make_sample", folder / "airfield.flt").exitCode, 0);
        EXPECT_GT(commands.size(), 4U);
        for (std::string const& command : commands) {
            std::string const inShell =
                "cd " + (folder / "") + " && PATH=" VELLOREADER_PROGRAMS ":$PATH && " + command;
            int const status = std::system(
                ("{ " + inShell + "\n} >" + (folder / "output") + " 2>" + (folder / "errors")).c_str());
            bool const writesFile = command.find(" -o ") != std::string::npos;
            EXPECT_EQ(WEXITSTATUS(status), 0) << command;
            EXPECT_TRUE(writesFile || !contentsOf(folder / "output").empty()) << command;
            EXPECT_EQ(contentsOf(folder / "errors"), "") << command;
        }
    }

private:
    std::vector<std::string> commands;
};
