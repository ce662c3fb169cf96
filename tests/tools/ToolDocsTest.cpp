#include "ProgramRun.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>

namespace
{

/// The lines of the shell blocks of a page.
std::vector<std::string> commandsIn(std::string const& page)
{
    std::vector<std::string> commands;
    std::istringstream lines(page);
    bool isShell = false;
    for (std::string line; std::getline(lines, line);) {
        if (line.compare(0, 3, "```") == 0)
            isShell = line == "```sh";
        else if (isShell)
            commands.push_back(line);
    }
    return commands;
}

} // namespace

TEST(ToolDocs, haveExamplesThatRun)
{
    ScratchFolder const folder;
    ASSERT_EQ(ProgramRun("make_sample", folder / "airfield.flt").exitCode, 0);
    for (char const* const page : {"fltinfo.md", "fltcheck.md", "flt2iv.md"}) {
        std::vector<std::string> const commands =
            commandsIn(contentsOf(VELLOREADER_DOCS + ("tools/" + std::string(page))));
        EXPECT_GT(commands.size(), 4U) << page;
        for (std::string const& command : commands) {
            std::string const inShell =
                "cd " + (folder / "") + " && PATH=" VELLOREADER_PROGRAMS ":$PATH && " + command;
            int const status = std::system(
                ("{ " + inShell + "\n} >" + (folder / "output") + " 2>" + (folder / "errors")).c_str());
            EXPECT_EQ(WEXITSTATUS(status), 0) << command;
            EXPECT_NE(contentsOf(folder / "output"), "") << command;
            EXPECT_EQ(contentsOf(folder / "errors"), "") << command;
        }
    }
}
