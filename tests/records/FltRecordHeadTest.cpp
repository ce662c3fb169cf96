#include "records/FltRecordHead.h"

#include "dump/FltLogBuffer.h"
#include "records/FltOpcode.h"
#include "records/FltRecordControl.h"
#include "records/FltRecordMultitexture.h"
#include "records/FltRecordTable.h"
#include "support/ScratchFolder.h"
#include "support/StreamCapture.h"

#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <string>

namespace
{

std::string logOf(FltRecord const& record)
{
    ScratchFolder const folder;
    FltLogStream log;
    EXPECT_EQ(log.buffer.open((folder / "a.log").c_str()), SideFile::Outcome::opened);
    record.properties(log);
    EXPECT_TRUE(log.buffer.close());
    return contentsOf(folder / "a.log");
}

std::string textOf(FltRecord const& record)
{
    std::ostringstream os;
    record.properties(os);
    return os.str();
}

/// A record of a host's own, with another first line than its class has.
class Renamed : public FltRecordPushLevel
{
public:
    using FltRecordPushLevel::FltRecordPushLevel;
    std::ostream& nameOpcodeAndLength(std::ostream& os) const override
    {
        return titleOpcodeAndLength(os, "\n A LEVEL ");
    }
};

} // namespace

TEST(FltRecordHead, aLogHasTheHeadThatAnyOtherStreamGets)
{
    EXPECT_EQ(logOf(FltRecordPushLevel(4)), "\n PUSH LEVEL RECORD \n  (CONTROL_RECORD)\n"
                                            "-- Opcode: 10  Length: 4 --\n");
    EXPECT_EQ(textOf(FltRecordPushLevel(4)), logOf(FltRecordPushLevel(4)));
    EXPECT_EQ(textOf(FltRecordUVList(65535)), logOf(FltRecordUVList(65535)));
    for (int opcode = 0; opcode <= FltOpcode::last; ++opcode) {
        FltRecordRow const* const row = FltRecordTable::find(opcode);
        if (row == nullptr)
            continue;
        std::unique_ptr<FltRecord> const record(row->make(300, 1580));
        EXPECT_EQ(logOf(*record), textOf(*record)) << "opcode " << opcode;
    }
}

TEST(FltRecordHead, aClassBelowMayHaveAHeadOfItsOwn)
{
    std::string const expected = "\n A LEVEL \n  (CONTROL_RECORD)\n-- Opcode: 10  Length: 4 --\n";
    EXPECT_EQ(logOf(Renamed(4)), expected);
    EXPECT_EQ(textOf(Renamed(4)), expected);
}
