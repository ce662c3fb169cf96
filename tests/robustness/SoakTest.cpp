#include "robustness/Endurance.h"
#include "support/ScratchFolder.h"
#include "writer/EveryRecord.h"

#include "convert/FltToInventor.h"

#include <Inventor/nodes/SoSeparator.h>
#include <gtest/gtest.h>

#include <cstddef>
#include <iostream>
#include <new>
#include <string>

namespace
{

constexpr int conversions = 1000;
constexpr int warmUp = 100;

/// The log streams that stay alive cost a few hundred bytes each, a kept message some more.
constexpr std::size_t mostGrowth = 8U << 20;

class SoakTest : public testing::Test
{
protected:
    SoakTest() : out(std::cout.rdbuf()), err(std::cerr.rdbuf(&swallowed)) {}
    ~SoakTest() override
    {
        std::cout.rdbuf(out);
        std::cerr.rdbuf(err);
        std::cout.clear();
    }

    static void convert(std::string const& path)
    {
        try {
            SoSeparator* const root = FltToInventor::convertFromFile(path.c_str());
            root->ref();
            while (root->getRefCount() > 1)
                root->unrefNoDelete();
            root->unref();
        } catch (std::bad_array_new_length const&) {
            // a switch with a negative number of mask words
        }
    }

    void soak(std::string const& bytes, bool isPutBack)
    {
        ScratchFolder const folder;
        std::string const path = folder.write("soak.flt", bytes);
        std::size_t memory = 0;
        std::size_t files = 0;
        for (int i = 0; i < conversions; ++i) {
            if (i == warmUp) {
                memory = memoryInUse();
                files = openFiles();
            }
            convert(path);
            if (isPutBack)
                std::cout.rdbuf(out);
        }
        EXPECT_LE(openFiles(), files);
        EXPECT_LT(memoryInUse(), memory + mostGrowth);
        std::cout.rdbuf(out);
    }

    static FltWriter withNegativeSwitch()
    {
        FltWriter flt(1570);
        flt.push().add("Switch", {{"numberOfMasks", -1}, {"numberOf32BitWordsPerMask", 4}}).pop();
        return flt;
    }

    QuietToolkit const quiet;
    CountingBuffer swallowed;
    std::streambuf* out;
    std::streambuf* err;
};

} // namespace

TEST_F(SoakTest, ThousandConversionsGrowNeitherMemoryNorFilesWhenTheHostPutsItsOutputBack)
{
    SmallVertexPalettes const small(1000);
    soak(everyRecordInBrief(1570).bytes(), true);
}

TEST_F(SoakTest, ThousandConversionsGrowNeitherMemoryNorFilesWhenOutputStaysOnTheLog)
{
    soak(FltWriter(1570).push().add("Group", {{"idASCII", "g"}}).push().pop().pop().bytes(), false);
}

TEST_F(SoakTest, ThousandFilesOfTooOldARevisionGrowNeitherMemoryNorFiles)
{
    SmallVertexPalettes const small(1000);
    soak(FltWriter(10).push().add("Group", {{"idASCII", "g"}}).push().pop().pop().bytes(), true);
    soak(FltWriter(10).push().add("Group", {{"idASCII", "g"}}).push().pop().pop().bytes(), false);
}

TEST_F(SoakTest, ThousandRefusedSwitchesGrowNeitherMemoryNorFiles)
{
    SmallVertexPalettes const small(1000);
    soak(withNegativeSwitch().bytes(), true);
    soak(withNegativeSwitch().bytes(), false);
}

TEST_F(SoakTest, ThousandReferencesToAMissingFileGrowNeitherMemoryNorFiles)
{
    SmallVertexPalettes const small(1000);
    FltWriter flt(1570);
    flt.push().add("ExternalReference", {{"asciiPath", "missing.flt"}}).addRaw(55).pop();
    soak(flt.bytes(), true);
    soak(flt.bytes(), false);
}
