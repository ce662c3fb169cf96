#include "toolkit/TemporaryName.h"

#include "support/ScratchFolder.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace
{

namespace fs = std::filesystem;

/// A name that a process has made which is over, and the process, of which the system still has the number.
std::pair<std::string, pid_t> nameOfTheUnmourned(std::string const& target)
{
    int pipe[2];
    EXPECT_EQ(::pipe(pipe), 0);
    pid_t const child = ::fork();
    if (child == 0) {
        std::string const name = TemporaryName::beside(target);
        ::_exit(::write(pipe[1], name.data(), name.size()) > 0 ? 0 : 1);
    }
    siginfo_t ended = {};
    ::waitid(P_PID, static_cast<id_t>(child), &ended, WEXITED | WNOWAIT);
    std::string name(4096, '\0');
    ssize_t const size = ::read(pipe[0], name.data(), name.size());
    name.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    ::close(pipe[0]);
    ::close(pipe[1]);
    return {name, child};
}

/// A name that a process has made which is gone now.
std::string nameOfTheDead(std::string const& target)
{
    auto const [name, process] = nameOfTheUnmourned(target);
    ::waitpid(process, nullptr, 0);
    return name;
}

std::string made(std::string const& name)
{
    std::fclose(std::fopen(name.c_str(), "wb"));
    return name;
}

} // namespace

TEST(TemporaryName, standsBesideItsFileAndIsNewEachTime)
{
    std::string const name = TemporaryName::beside("out/a.iv");
    EXPECT_EQ(name.find("out/.velloreader-"), 0U);
    EXPECT_NE(name, TemporaryName::beside("out/a.iv"));
    EXPECT_NE(name.find("-" + std::to_string(::getpid()) + "-"), std::string::npos);
    EXPECT_EQ(TemporaryName::beside("a.iv").find("./.velloreader-"), 0U);
    EXPECT_LT(fs::path(TemporaryName::beside("out/" + std::string(250, 'x'))).filename().string().size(),
              200U);
}

TEST(TemporaryName, ofAProcessThatIsGoneIsAbandoned)
{
    ScratchFolder const folder;
    std::string const target = folder / "a.iv", other = folder / "b.iv";
    std::string const dead = made(nameOfTheDead(target)), foreign = made(nameOfTheDead(other)),
                      alive = made(TemporaryName::beside(target));
    TemporaryName::removeAbandoned({target});
    EXPECT_FALSE(fs::exists(dead));
    EXPECT_TRUE(fs::exists(alive)) << "its process may still write";
    EXPECT_TRUE(fs::exists(foreign)) << "for another file";
    TemporaryName::removeAbandoned({other, folder / "no/where"});
    EXPECT_FALSE(fs::exists(foreign));
}

TEST(TemporaryName, ofAProcessThatIsOverIsAbandonedThoughItsParentDoesntAsk)
{
    ScratchFolder const folder;
    std::string const target = folder / "a.iv";
    auto const [name, process] = nameOfTheUnmourned(target);
    made(name);
    TemporaryName::removeAbandoned({target});
    EXPECT_FALSE(fs::exists(name));
    ::waitpid(process, nullptr, 0);
}

TEST(TemporaryName, isAbandonedInADirectoryWhateverItWasFor)
{
    ScratchFolder const folder;
    std::string const dead = made(nameOfTheDead(folder / "a.png")), other = made(folder / "b.png");
    TemporaryName::removeAbandonedIn(folder / "nowhere");
    EXPECT_TRUE(fs::exists(dead));
    TemporaryName::removeAbandonedIn(folder / ".");
    EXPECT_FALSE(fs::exists(dead));
    EXPECT_TRUE(fs::exists(other));
}

TEST(TemporaryName, ofAnotherHostIsAbandonedAfterADay)
{
    ScratchFolder const folder;
    std::string const target = folder / "a.iv";
    std::string name = fs::path(nameOfTheDead(target)).filename().string();
    name.replace(name.find("velloreader-") + 12, 1, "Z");
    std::string const recent = made(folder / name);
    std::string const old = made(folder / ("." + name.substr(1, 12) + "Z" + name.substr(13)));
    fs::last_write_time(recent, fs::file_time_type::clock::now() - std::chrono::hours(23));
    fs::last_write_time(old, fs::file_time_type::clock::now() - std::chrono::hours(25));
    TemporaryName::removeAbandoned({target});
    EXPECT_TRUE(fs::exists(recent));
    EXPECT_FALSE(fs::exists(old));
}

TEST(TemporaryName, isNoOtherFilesName)
{
    ScratchFolder const folder;
    for (char const* const name :
         {".velloreader-.part", ".velloreader-a-b-c-d-e.part", "velloreader.part", ".velloreader-x"}) {
        std::string const file = made(folder / name);
        fs::last_write_time(file, fs::file_time_type::clock::now() - std::chrono::hours(25));
        TemporaryName::removeAbandoned({folder / "a.iv"});
        EXPECT_TRUE(fs::exists(file)) << name;
    }
}
