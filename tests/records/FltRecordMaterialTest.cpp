#include "records/FltRecordMaterial.h"

#include "support/RecordText.h"
#include "support/ShortRecords.h"

#include <gtest/gtest.h>

namespace
{

std::string const palette = "PALETTE_RECORD";
std::string const title = "\n MATERIAL PALETTE RECORD ";
std::string const oldTitle = "\n OLD MATERIAL PALETTE RECORD (OBSOLETE)";

FltWriter::Fields const materialFields = {
    {"index", 12},
    {"name", "brass"},
    {"ambient", {0.25, 0.5, 0.75}},
    {"diffuse", {1, 0.125, 0}},
    {"specular", {0.0625, 2, 3}},
    {"emissive", {-1, 0.5, 1e-10}},
    {"shininess", 64.5},
    {"alpha", 0.875},
};

/// The bytes of one entry of an old palette.
struct OldEntry {
    std::vector<double> numbers = std::vector<double>(14, 0.0);
    long flags = 0;
    std::string name;
    std::string spare;

    std::string bytes() const
    {
        std::string bytes;
        for (double const number : numbers)
            bytes += FltWriter::bigFloat(number);
        bytes += FltWriter::big32(flags);
        bytes += name + std::string(12 - name.size(), '\0');
        return bytes + spare + std::string(112 - spare.size(), '\0');
    }
};

OldEntry someEntry(std::string const& name, std::string const& spare = {})
{
    return {{0.5, 1, 1.5, 2, 2.5, 3, 3.5, 4, 4.5, 5, 5.5, 6, 127, 0.25}, 0x80000000L, name, spare};
}

/// A whole old palette with one entry that isn't empty.
FltWriter oldPalette(int revision, int position, OldEntry const& entry)
{
    std::string entries(11776, '\0');
    entries.replace(static_cast<std::size_t>(position) * 184, 184, entry.bytes());
    return FltWriter(revision).add("OLDMaterialPalette", {{"entries", entries}});
}

std::string const emptyOldLines = " ambientRed: 0\n"
                                  " ambientGreen : 0\n"
                                  " ambientBlue: 0\n"
                                  " diffuseRed: 0\n"
                                  " diffuseGreen: 0\n"
                                  " diffuseBlue: 0\n"
                                  " specularRed : 0\n"
                                  " specularGreen: 0\n"
                                  " specularBlue: 0\n"
                                  " emissiveRed: 0\n"
                                  " emissiveGreen: 0\n"
                                  " emissiveBlue: 0\n"
                                  "shininess: 0\n"
                                  "alpha: 0\n"
                                  "flags: \n"
                                  "      material used: 0\n";

std::string const someOldLines = " ambientRed: 0.5\n"
                                 " ambientGreen : 1\n"
                                 " ambientBlue: 1.5\n"
                                 " diffuseRed: 2\n"
                                 " diffuseGreen: 2.5\n"
                                 " diffuseBlue: 3\n"
                                 " specularRed : 3.5\n"
                                 " specularGreen: 4\n"
                                 " specularBlue: 4.5\n"
                                 " emissiveRed: 5\n"
                                 " emissiveGreen: 5.5\n"
                                 " emissiveBlue: 6\n"
                                 "shininess: 127\n"
                                 "alpha: 0.25\n"
                                 "flags: \n"
                                 "      material used: 1\n";

/// The dump of an old palette whose entry at @p position has these lines, and every other is empty.
std::string oldDump(int position, std::string const& lines, std::string const& emptyNameLine)
{
    std::string dump = frame(oldTitle, palette, 66, 11780);
    for (int i = 0; i < 64; ++i)
        dump += " Material at index: " + std::to_string(i) + "\n" +
                (i == position ? lines : emptyOldLines + emptyNameLine);
    return dump;
}

TEST(FltRecordMaterialTest, DecodesAndDumpsEveryField)
{
    auto const record = decodeLastAs<FltRecordMaterial>(FltWriter().add("Material", materialFields));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->index, 12);
    EXPECT_STREQ(record->name, "brass");
    EXPECT_EQ(record->flags, 0);
    EXPECT_EQ(record->ambient[0], 0.25F);
    EXPECT_EQ(record->ambient[2], 0.75F);
    EXPECT_EQ(record->diffuse[0], 1.0F);
    EXPECT_EQ(record->diffuse[1], 0.125F);
    EXPECT_EQ(record->specular[0], 0.0625F);
    EXPECT_EQ(record->specular[2], 3.0F);
    EXPECT_EQ(record->emissive[0], -1.0F);
    EXPECT_EQ(record->emissive[2], 1e-10F);
    EXPECT_EQ(record->shininess, 64.5F);
    EXPECT_EQ(record->alpha, 0.875F);
    EXPECT_EQ(dumpOf(*record), frame(title, palette, 113, 84) + "index: 12\n"
                                                                "name : brass\n"
                                                                "flags: material IS used\n"
                                                                "ambient  (RGB) : 0.25 0.5 0.75\n"
                                                                "diffuse  (RGB) : 1 0.125 0\n"
                                                                "specular (RGB) : 0.0625 2 3\n"
                                                                "emissive (RGB) : -1 0.5 1e-10\n"
                                                                "shininess      : 64.5\n"
                                                                "alpha          : 0.875\n");
}

TEST(FltRecordMaterialTest, OnlyBit31OfTheFlagsCountsAndSetItPrintsAsNotUsed)
{
    auto const line = [](unsigned flags) {
        std::string const lines = linesOf(FltWriter().add("Material", {{"flags", flags}}));
        std::size_t const begin = lines.find("flags: ");
        return lines.substr(begin, lines.find('\n', begin) - begin);
    };
    EXPECT_EQ(line(0), "flags: material IS used");
    EXPECT_EQ(line(0x7fffffffU), "flags: material IS used");
    EXPECT_EQ(line(0x80000000U), "flags: material IS NOT used");
    EXPECT_EQ(line(0xffffffffU), "flags: material IS NOT used");
}

TEST(FltRecordMaterialTest, ANameWithoutAZeroRunsOnIntoTheMembersBehindIt)
{
    std::string const lines =
        linesOf(FltWriter().add("Material", {{"name", "twelve chars"}, {"flags", 0x21}}));
    EXPECT_EQ(lines.substr(0, lines.find("flags")), "index: 0\nname : twelve chars!\n");
}

TEST(FltRecordMaterialTest, ANameThatMeetsNoZeroAtAllEndsWithTheLastMember)
{
    std::string const lines = linesOf(FltWriter().addRaw(113, std::string(80, '@')));
    EXPECT_EQ(lines.substr(0, lines.find("flags")),
              "index: 1077952576\nname : " + std::string(76, '@') + "\n");
}

TEST(FltRecordMaterialTest, AShortRecordReadsOnIntoWhatFollowsIt)
{
    expectShortRecordsToReadOn(FltWriter().add("Material", materialFields));
}

TEST(FltRecordMaterialTest, ARecordOfLength8BeforeACommentTakesItsNameFromTheComment)
{
    auto const record = decodeLastAs<FltRecordMaterial>(
        FltWriter()
            .add("Material", {{"index", 5}})
            .resizeLast(8)
            .addBytes(FltWriter().addRaw(0x4142, std::string(0x4344 - 4, 'x')).lastRecord().substr(0, 8)));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->index, 5);
    EXPECT_STREQ(record->name, "ABCDxxxx");
    EXPECT_EQ(record->flags, 0);
    EXPECT_EQ(record->alpha, 0.0F);
}

TEST(FltRecordOLDMaterialPaletteTest, DecodesEveryFieldOfAnEntry)
{
    auto const record = decodeLastAs<FltRecordOLDMaterialPalette>(
        oldPalette(14, 63, someEntry("gold", std::string(112, 's'))));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->revision, 14);
    FltRecordOLDMaterialPalette::Entry const& entry = record->entries[63];
    EXPECT_EQ(entry.ambientRed, 0.5F);
    EXPECT_EQ(entry.ambientGreen, 1.0F);
    EXPECT_EQ(entry.ambientBlue, 1.5F);
    EXPECT_EQ(entry.diffuseRed, 2.0F);
    EXPECT_EQ(entry.diffuseGreen, 2.5F);
    EXPECT_EQ(entry.diffuseBlue, 3.0F);
    EXPECT_EQ(entry.specularRed, 3.5F);
    EXPECT_EQ(entry.specularGreen, 4.0F);
    EXPECT_EQ(entry.specularBlue, 4.5F);
    EXPECT_EQ(entry.emissiveRed, 5.0F);
    EXPECT_EQ(entry.emissiveGreen, 5.5F);
    EXPECT_EQ(entry.emissiveBlue, 6.0F);
    EXPECT_EQ(entry.shininess, 127.0F);
    EXPECT_EQ(entry.alpha, 0.25F);
    EXPECT_EQ(entry.flags, INT32_MIN);
    EXPECT_STREQ(entry.name, "gold");
    EXPECT_EQ(std::string(entry.spare, 112), std::string(112, 's'));
    EXPECT_EQ(record->entries[62].ambientRed, 0.0F);
}

TEST(FltRecordOLDMaterialPaletteTest, Revision14DumpsAll64EntriesWithTheirNames)
{
    EXPECT_EQ(dumpOf(*decodeLast(oldPalette(14, 1, someEntry("gold")))),
              oldDump(1, someOldLines + "name : gold\n", "name : \n"));
}

TEST(FltRecordOLDMaterialPaletteTest, Revision13PrintsNoNameLinesAndReadsNamesAsEmpty)
{
    auto const record = decodeLastAs<FltRecordOLDMaterialPalette>(oldPalette(13, 0, someEntry("gold")));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(std::string(record->entries[0].name, 5), std::string("\0old\0", 5));
    EXPECT_EQ(record->entries[0].flags, INT32_MIN);
    EXPECT_EQ(dumpOf(*record), oldDump(0, someOldLines, ""));
}

TEST(FltRecordOLDMaterialPaletteTest, OnlyBit31OfTheFlagsPrintsAndSetItPrintsAOne)
{
    OldEntry entry;
    entry.flags = 0x7fffffff;
    EXPECT_EQ(dumpOf(*decodeLast(oldPalette(13, 5, entry))), oldDump(5, emptyOldLines, ""));
}

TEST(FltRecordOLDMaterialPaletteTest, ANameWithoutAZeroRunsOnIntoTheSpareBytes)
{
    EXPECT_EQ(dumpOf(*decodeLast(oldPalette(14, 2, someEntry("twelve chars", " and more")))),
              oldDump(2, someOldLines + "name : twelve chars and more\n", "name : \n"));
}

TEST(FltRecordOLDMaterialPaletteTest, TheNameOfTheLastEntryEndsWithTheEntryAtTheLatest)
{
    auto const entry = someEntry(std::string(12, 'n'), std::string(112, 's'));
    EXPECT_EQ(dumpOf(*decodeLast(oldPalette(14, 63, entry))),
              oldDump(63, someOldLines + "name : " + std::string(12, 'n') + std::string(112, 's') + "\n",
                      "name : \n"));
}

TEST(FltRecordOLDMaterialPaletteTest, AShortRecordReadsAll64EntriesFromWhatFollowsIt)
{
    std::string entries;
    for (int i = 0; i < 64; ++i)
        entries += someEntry("material " + std::to_string(i), "spare").bytes();
    FltWriter const whole = FltWriter(14).add("OLDMaterialPalette", {{"entries", entries}});
    expectShortRecordsToReadOn(whole, 389);

    auto const record = decodeLastAs<FltRecordOLDMaterialPalette>(FltWriter(whole).claimLength(4));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->getLength(), 4U);
    EXPECT_STREQ(record->entries[63].name, "material 63");
}

} // namespace
