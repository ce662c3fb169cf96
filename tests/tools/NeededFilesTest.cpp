#include "convert/NeededFiles.h"

#include "support/ScratchFolder.h"

#include <chrono>
#include <filesystem>
#include <gtest/gtest.h>

namespace
{

/// Waits until the clock that marks files has gone on by more than its step.
void letFilesGrowOld(ScratchFolder const& folder)
{
    std::string const first = folder.write("clock", "");
    auto const begin = std::filesystem::last_write_time(first);
    while (std::filesystem::last_write_time(folder.write("clock", "")) <
           begin + std::chrono::milliseconds(20)) {
    }
}

} // namespace

TEST(NeededFiles, areKnownBySizeAndTime)
{
    ScratchFolder const folder;
    std::string const file = folder.write("a.flt", "bytes");
    letFilesGrowOld(folder);
    NeededFiles needed;
    needed.add(file);
    needed.add(file);
    needed.add(folder / "nowhere");
    needed.add(folder / ".");
    ASSERT_EQ(needed.files().size(), 1U);
    EXPECT_EQ(needed.files()[0].stamp.size, 5U);
    EXPECT_EQ(FileStamp::of(file), needed.files()[0].stamp);
    EXPECT_FALSE(FileStamp::of(folder / "."));
    EXPECT_FALSE(FileStamp::of(folder / "nowhere"));
}

TEST(NeededFiles, areSettledUnlessOneWasChangedMeanwhile)
{
    ScratchFolder const folder;
    std::string const still = folder.write("still.flt", "bytes"),
                      changed = folder.write("changed.flt", "bytes");
    letFilesGrowOld(folder);
    NeededFiles needed;
    needed.add(still);
    EXPECT_TRUE(needed.areSettled());
    static_cast<void>(folder.write("changed.flt", "bytes"));
    needed.add(changed);
    EXPECT_FALSE(needed.areSettled());
}

TEST(NeededFiles, noticeAChangeThatGivesAFileItsOldTime)
{
    ScratchFolder const folder;
    std::string const file = folder.write("a.flt", "bytes");
    auto const time = std::filesystem::last_write_time(file);
    letFilesGrowOld(folder);
    NeededFiles needed;
    static_cast<void>(folder.write("a.flt", "other"));
    std::filesystem::last_write_time(file, time);
    needed.add(file);
    EXPECT_FALSE(needed.areSettled());
}
