#include "loader/FltDatabaseFile.h"

#include "support/ScratchFolder.h"

#include <gtest/gtest.h>
#include <limits>

namespace
{

using Kind = FltLoadError::Kind;

/// Why a file that begins with some bytes isn't converted.
class FltDatabaseFileTest : public testing::Test
{
protected:
    FltLoadError errorOf(std::string const& bytes)
    {
        folder.write("a.flt", bytes);
        return FltDatabaseFile(folder / "a.flt", std::numeric_limits<std::uint64_t>::max()).whyNotConverted();
    }

    /// The first bytes of a header record.
    static std::string header(char revision, char length = 64)
    {
        std::string bytes(64, '\0');
        bytes[1] = 1;
        bytes[3] = length;
        bytes[15] = revision;
        return bytes;
    }

private:
    ScratchFolder folder;
};

} // namespace

TEST_F(FltDatabaseFileTest, tellsWhereAHeaderIsDamaged)
{
    EXPECT_EQ(errorOf(header(11).substr(0, 15)).kind(), Kind::damaged);
    EXPECT_EQ(errorOf(header(11).substr(0, 15)).offset(), 15);
    EXPECT_EQ(errorOf(header(11).substr(0, 1)).kind(), Kind::damaged);
    EXPECT_EQ(errorOf(header(11).substr(0, 1)).offset(), 1);
    EXPECT_EQ(errorOf(header(11, 0)).kind(), Kind::damaged);
    EXPECT_EQ(errorOf(header(11, 0)).offset(), 2);
    EXPECT_EQ(errorOf(header(11)).kind(), Kind::damaged) << "the oldest revision is supported";
    EXPECT_EQ(errorOf(header(11)).offset(), 0);
}

TEST_F(FltDatabaseFileTest, tellsOtherFilesFromOlderRevisions)
{
    EXPECT_EQ(errorOf("").kind(), Kind::notOpenFlight);
    EXPECT_EQ(errorOf("PNG").kind(), Kind::notOpenFlight);
    EXPECT_EQ(errorOf(header(10)).kind(), Kind::revision);
    EXPECT_EQ(errorOf(header(10)).offset(), 12);
    EXPECT_NE(std::string(errorOf(header(10)).what()).find("revision 10 "), std::string::npos);
}
