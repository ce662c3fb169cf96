#include "inspect/FltTextTransfer.h"

#include "support/ScratchFolder.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>

namespace
{

FltTextTransfer transferOf(std::string const& comment)
{
    ScratchFolder const folder;
    FltWriter flt;
    flt.add("Comment", {{"textDescription", comment}}).save(folder / "a.flt");
    return FltTextTransfer(FltInventory(folder / "a.flt"));
}

} // namespace

TEST(FltTextTransfer, leavesALineFeedInOneOfTheFourBytesOfANumber)
{
    FltTextTransfer const transfer = transferOf(std::string(5000, 'x'));
    for (std::int64_t const number : {0x0aLL, 0x0a00LL, 0x0a0000LL, 0x0a000000LL, 0x010a02LL})
        EXPECT_TRUE(transfer.hasTrace(number)) << number;
    for (std::int64_t const number : {0x00LL, 0x0dLL, 0xa0a0LL, 0x0a00000000LL})
        EXPECT_FALSE(transfer.hasTrace(number)) << number;
}

TEST(FltTextTransfer, isNotToBlameWhereACarriageReturnIsLeftOrTheFileIsTooShortToHaveOne)
{
    EXPECT_FALSE(transferOf(std::string(5000, 'x') + '\r').hasTrace('\n'));
    EXPECT_FALSE(transferOf("short").hasTrace('\n'));
}

TEST(FltTextTransfer, isToBlameInFilesOf4096BytesAndMore)
{
    auto const ofBytes = [](std::size_t bytes) {
        ScratchFolder const folder;
        FltWriter flt;
        flt.addBytes(std::string(bytes - flt.bytes().size(), 'x')).save(folder / "a.flt");
        return FltTextTransfer(FltInventory(folder / "a.flt"));
    };
    EXPECT_TRUE(ofBytes(4096).hasTrace('\n'));
    EXPECT_FALSE(ofBytes(4095).hasTrace('\n'));
}
