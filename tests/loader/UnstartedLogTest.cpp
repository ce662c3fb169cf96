#include "loader/FltLoader.h"
#include "support/ScratchFolder.h"
#include "support/Text.h"
#include "writer/EveryRecord.h"

#include <gtest/gtest.h>
#include <string>

namespace
{

TEST(UnstartedLogTest, ALogBesideAVisualNeedsNoToolkit)
{
    ScratchFolder const folder;
    everyRecord(1570).save(folder.path("other.flt"));
    FltWriter flt = everyRecord(1570);
    flt.push().add("ExternalReference", {{"asciiPath", "other.flt"}}).pop();
    FltLoader loader;
    loader.log = folder / "a.log";
    static_cast<void>(loader.loadVisual(folder.write("a.flt", flt.bytes())));
    EXPECT_EQ(countOf(contentsOf(folder / "a.log"), "end of parsing\n"), 2);
}

} // namespace
