#include "inspect/FltCheck.h"

#include "loader/FltLoader.h"
#include "support/FaultyDatabases.h"

#include <gtest/gtest.h>

/// In a process in which the toolkit isn't started, and in which a test fails that starts it.
TEST(UnstartedCheck, judgesAllFamilies)
{
    for (FaultyDatabase const& database : faultyDatabases()) {
        ScratchFolder const folder;
        std::string const path = database.write(folder);
        FltInventory const inventory(path);
        FltCheck check(inventory);
        check.checkRecords();
        check.checkGeometry();
        check.checkPalettes();
        check.checkFiles(FltDependencies(inventory, [](auto const&, auto const&) { return std::string(); }));
        check.checkPictures(FltLoader().loadVisual(path).distinctTextures());
        check.checkHierarchy();
        check.checkVisibility();
        check.checkExactConversion();
        EXPECT_FALSE(check.findings().empty()) << database.number;
    }
}
