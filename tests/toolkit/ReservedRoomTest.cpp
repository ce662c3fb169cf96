#include "toolkit/ReservedRoom.h"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

constexpr off_t megabyte = 1 << 20;

class ReservedRoomTest : public testing::Test
{
protected:
    ~ReservedRoomTest() override { ::close(file); }

    /// Lengthens the file with a hole, which takes no room.
    void grow(off_t to) { EXPECT_EQ(::ftruncate(file, to), 0); }

    struct stat status() const
    {
        struct stat status = {};
        EXPECT_EQ(::fstat(file, &status), 0);
        return status;
    }
    /// Bytes that the file takes on the disk.
    off_t taken() const { return status().st_blocks * 512; }

    /// In memory, where the system has room to give whatever disks there are.
    int file = ::memfd_create("file", MFD_CLOEXEC);
    ReservedRoom room;
};

TEST_F(ReservedRoomTest, SmallFilesGetNone)
{
    grow(megabyte - 1);
    room.keepFor(file, megabyte - 1, 1);
    EXPECT_EQ(taken(), 0);
}

TEST_F(ReservedRoomTest, RoomGrowsWithTheFileWhoseSizeStaysAsItIs)
{
    grow(megabyte);
    room.keepFor(file, megabyte, 1);
    EXPECT_EQ(status().st_size, megabyte);
    off_t const first = taken();
    EXPECT_GE(first, 4 * megabyte);
    room.keepFor(file, megabyte, 4 * megabyte);
    EXPECT_EQ(taken(), first) << "there is room for it already";
    grow(16 * megabyte);
    room.keepFor(file, 16 * megabyte, 1);
    EXPECT_GE(taken(), first + 16 * megabyte);
}

TEST_F(ReservedRoomTest, WhatIsLeftIsGivenBack)
{
    grow(megabyte);
    room.keepFor(file, megabyte, 1);
    room.giveBack(file, megabyte);
    EXPECT_EQ(status().st_size, megabyte);
    EXPECT_EQ(taken(), 0);
}

TEST_F(ReservedRoomTest, WhereThereIsNoneNothingIsAskedForAgain)
{
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    room.keepFor(ends[1], megabyte, 1);
    grow(megabyte);
    room.keepFor(file, megabyte, 1);
    EXPECT_EQ(taken(), 0);
    room.giveBack(file, megabyte);
    room.keepFor(file, megabyte, 1);
    EXPECT_GE(taken(), 4 * megabyte) << "the next file is asked anew";
    ::close(ends[0]);
    ::close(ends[1]);
}

TEST_F(ReservedRoomTest, WhatFitsExactlyAsksForNoMoreAndAByteMoreDoes)
{
    grow(megabyte);
    room.keepFor(file, megabyte, 1); // as far as five megabytes
    off_t const first = taken();
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    room.keepFor(ends[1], megabyte, 4 * megabyte); // which has none to give
    room.keepFor(file, megabyte, 4 * megabyte + 1);
    EXPECT_GT(taken(), first);
    ::close(ends[0]);
    ::close(ends[1]);
}

} // namespace
