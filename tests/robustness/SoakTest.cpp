#include "robustness/Endurance.h"
#include "support/ConvertedRoot.h"
#include "support/ProcessUsage.h"
#include "support/ScratchFolder.h"
#include "support/StreamCapture.h"
#include "writer/EveryRecord.h"

#include "convert/FltToInventor.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
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
    static void convert(std::string const& path)
    {
        try {
            ConvertedRoot const root(FltToInventor::convertFromFile(path.c_str()));
        } catch (std::bad_array_new_length const&) {
            // a switch with a negative number of mask words
        }
    }

    static void soak(std::string const& bytes, bool isPutBack)
    {
        ScratchFolder const folder;
        StreamCapture const out(std::cout, CaptureBuffer::nothing);
        StreamCapture const err(std::cerr, CaptureBuffer::nothing);
        std::streambuf* const host = std::cout.rdbuf();
        std::string const path = folder.write("soak.flt", bytes);
        std::size_t memory = 0;
        std::size_t files = 0;
        for (int i = 0; i < conversions; ++i) {
            if (i == warmUp) {
                memory = ProcessUsage::memoryInUse();
                files = ProcessUsage::openFiles();
            }
            convert(path);
            if (isPutBack)
                std::cout.rdbuf(host);
            // To empty a file costs a wait for the disk on many file systems; to make one doesn't.
            std::filesystem::remove(path + ".log");
        }
        EXPECT_LE(ProcessUsage::openFiles(), files);
        EXPECT_LT(ProcessUsage::memoryInUse(), memory + mostGrowth);
    }

    QuietToolkit const quiet;
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
