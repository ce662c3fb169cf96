#include "convert/NeededFiles.h"
#include "support/ScratchFolder.h"

#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>
#include <thread>

namespace
{

namespace fs = std::filesystem;

/// Longer than the system's clock of files stands still.
void letTheClockGoOn()
{
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
}

} // namespace

TEST(NeededFiles, AreSettledIfNoneChangedSinceTheConversionBegan)
{
    ScratchFolder const folder;
    std::string const file = folder.write("a.flt", "one");
    letTheClockGoOn();
    NeededFiles needed;
    needed.add(file);
    EXPECT_TRUE(needed.areSettled());
    ASSERT_EQ(needed.files().size(), 1U);
    EXPECT_EQ(needed.files()[0].stamp.size, 3U);
}

TEST(NeededFiles, AreNotSettledIfOneChangedMeanwhileEvenIfItsTimeSaysOtherwise)
{
    ScratchFolder const folder;
    std::string const file = folder.write("a.flt", "one");
    fs::file_time_type const time = fs::last_write_time(file);
    letTheClockGoOn();
    NeededFiles needed;
    static_cast<void>(folder.write("a.flt", "two"));
    fs::last_write_time(file, time);
    needed.add(file);
    EXPECT_FALSE(needed.areSettled());
}

TEST(NeededFiles, AreStillNotSettledAfterOthersThatAre)
{
    ScratchFolder const folder;
    std::string const old = folder.write("old.flt", "one");
    letTheClockGoOn();
    NeededFiles needed;
    needed.add(folder.write("new.flt", "two"));
    needed.add(old);
    EXPECT_FALSE(needed.areSettled());
}

TEST(NeededFiles, StandOnceAndOnlyIfTheyAreThere)
{
    ScratchFolder const folder;
    std::string const file = folder.write("a.flt", "one");
    NeededFiles needed;
    needed.add(file);
    needed.add(file);
    needed.add(folder / "lost.flt");
    EXPECT_EQ(needed.files().size(), 1U);
}
