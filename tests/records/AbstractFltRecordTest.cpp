#include "records/AbstractFltRecord.h"

#include "dump/FltLogBuffer.h"
#include "support/ScratchFolder.h"
#include "support/StreamCapture.h"

#include <gtest/gtest.h>
#include <sstream>
#include <string>

namespace
{

/// A record whose head is as it was told.
class Headed : public AbstractFltRecord
{
public:
    Headed(int opcode, unsigned int length, FltRecordCategory category, std::string title)
        : AbstractFltRecord(length), opcode(opcode), category(category), title(std::move(title))
    {
    }
    int getOpcode() const override { return opcode; }
    std::string getRecordCategory() const override
    {
        return category == FltRecordCategory::unknown ? title : std::string(nameOf(category));
    }
    FltRecordCategory getCategory() const override { return category; }
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override
    {
        return titleOpcodeAndLength(os, title);
    }
    std::ostream& properties(std::ostream& os) const override { return nameOpcodeAndLength(os); }
    void getPropertiesFromData(char* /*data*/) override {}

private:
    int opcode;
    FltRecordCategory category;
    std::string title;
};

using Category = FltRecordCategory;

/// Pairs of records that differ in one thing, so that a head of one isn't taken for that of the other.
void writeHeads(std::ostream& os)
{
    auto const write = [&](int opcode, unsigned int length, Category category, std::string const& title) {
        Headed(opcode, length, category, title).nameOpcodeAndLength(os);
    };
    for (int round = 0; round < 2; ++round) {
        write(2, 44, Category::primary, "GROUP");
        write(2, 44, Category::primary, "GROUPS");
        write(2, 44, Category::primary, "GROUQ");
        write(2, 44, Category::palette, "GROUP");
        write(2, 45, Category::primary, "GROUP");
        write(3, 44, Category::primary, "GROUP");
        write(2 + 256, 44, Category::primary, "GROUP");
        write(2, 44 + 256, Category::primary, "GROUP");
        write(2, 44, Category::unknown, "one");
        write(2, 44, Category::unknown, "two");
        write(2, 44, Category::primary, std::string(300, 'x'));
        write(-1, 0, Category::unknown, "");
    }
}

} // namespace

TEST(AbstractFltRecord, TheHeadsOfALogAreThoseOfAnyOtherStream)
{
    ScratchFolder const folder;
    std::ostringstream expected;
    writeHeads(expected);
    FltLogStream log;
    ASSERT_EQ(log.buffer.open((folder / "a.log").c_str()), SideFile::Outcome::opened);
    writeHeads(log);
    EXPECT_TRUE(log.buffer.close());
    EXPECT_EQ(contentsOf(folder / "a.log"), expected.str());
}
