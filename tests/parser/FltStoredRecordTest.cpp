#include "parser/FltStoredRecord.h"

#include "records/FltOpcode.h"
#include "records/FltRecordGroupAndObject.h"
#include "records/FltRecordUnknown.h"
#include "writer/FltWriter.h"

#include <gtest/gtest.h>
#include <new>

namespace
{

constexpr int revision = 1570;

FltStoredRecord stored(std::string const& bytes, int opcode)
{
    return {bytes.data(), bytes.data() + bytes.size(), opcode, static_cast<unsigned int>(bytes.size()),
            revision};
}

} // namespace

TEST(FltStoredRecord, decodesARecordOfItsClass)
{
    FltWriter flt(revision);
    std::string const bytes = flt.add("Group", {{"idASCII", "g1"}}).lastRecord();
    std::unique_ptr<FltRecord> const record = stored(bytes, FltOpcode::group).decode();
    auto const* const group = dynamic_cast<FltRecordGroup const*>(record.get());
    ASSERT_NE(group, nullptr);
    EXPECT_STREQ(group->idASCII, "g1");
}

TEST(FltStoredRecord, keepsTheBytesOfAnOpcodeWithoutAClass)
{
    FltWriter flt(revision);
    std::string const bytes = flt.addRaw(777, "abcdefgh").lastRecord();
    EXPECT_NE(dynamic_cast<FltRecordUnknown const*>(stored(bytes, 777).decode().get()), nullptr);
}

TEST(FltStoredRecord, readsZerosBeyondTheFileForWhatItsLayoutHasAndItLacks)
{
    FltWriter flt(revision);
    std::string const bytes =
        flt.addRaw(FltOpcode::group, std::string("g1\0\0\0\0\0\0\0\7", 10)).lastRecord();
    FltStoredRecord const cut = stored(bytes, FltOpcode::group);
    EXPECT_GT(cut.borrowedBytes(), 0U);
    std::unique_ptr<FltRecord> const record = cut.decode();
    auto const& group = static_cast<FltRecordGroup const&>(*record);
    EXPECT_EQ(group.relativePriority, 7);
    EXPECT_EQ(group.flags, 0U);
}

TEST(FltStoredRecord, borrowsWhatALayoutReachesBeyondTheRecord)
{
    FltWriter flt(revision);
    std::string const whole = flt.add("Group", {{"idASCII", "g1"}}).lastRecord();
    std::size_t const reach = whole.size() + stored(whole, FltOpcode::group).borrowedBytes();
    for (std::size_t const missing : {0U, 1U, 2U}) {
        FltStoredRecord const cut = stored(whole.substr(0, reach - missing), FltOpcode::group);
        EXPECT_EQ(cut.borrowedBytes(), missing);
    }
}

TEST(FltStoredRecord, refusesACountBelowZero)
{
    FltWriter flt(revision);
    std::string const bytes =
        flt.add("Switch", {{"numberOfMasks", -5}, {"numberOf32BitWordsPerMask", 1}}).lastRecord();
    EXPECT_THROW(stored(bytes, FltOpcode::switchNode).decode(), std::bad_alloc);
}
