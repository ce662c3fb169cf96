#include "records/FltRecordFields.h"

#include "support/ScratchFolder.h"
#include "writer/EveryRecord.h"

#include "parser/FltRecordScan.h"
#include "records/FltJsonText.h"
#include "records/FltRecordUnknown.h"

#include <gtest/gtest.h>

TEST(FltRecordFields, giveTheSameToAReceiverThatTheLibraryKnowsAndToAnyOther)
{
    ScratchFolder const folder;
    for (int const revision : {11, 1420, 1580}) {
        everyRecord(revision).save(folder / "every.flt");
        for (FltRecordScan scan(folder / "every.flt"); scan.next();) {
            FltJsonText known;
            FltRecordFields::giveWhole(*scan.record(), scan.offset(), known);
            FltJsonText any;
            FltFieldReceiver& receiver = any;
            FltRecordFields::giveWhole(*scan.record(), scan.offset(), receiver);
            EXPECT_EQ(known.written(), any.written());
            EXPECT_FALSE(known.written().empty());
        }
    }
}

TEST(FltRecordFields, giveTheCategoryThatAnUnknownRecordWasTold)
{
    FltRecordUnknown record(777, 4);
    FltJsonText json;
    FltRecordFields::giveWhole(record, 12, json);
    EXPECT_EQ(json.written(), R"({"opcode":777,"class":"FltRecordUnknown","category":"","length":4,)"
                              R"("offset":12,"fields":{}})");
    record.setRecordCategory("of its own");
    json.clear();
    FltRecordFields::giveWhole(record, 12, json);
    EXPECT_NE(json.written().find(R"("category":"of its own")"), std::string_view::npos);
}
