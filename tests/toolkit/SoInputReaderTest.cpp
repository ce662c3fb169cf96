#include "toolkit/SoInputReader.h"

#include "plugin/SoInputFltReader.h"
#include "support/ScratchFolder.h"
#include "writer/FltWriter.h"

#include <Inventor/SoInput.h>
#include <gtest/gtest.h>
#include <memory>

namespace
{

class SoInputReaderTest : public testing::Test
{
protected:
    SoInputReaderTest() { SoInputFltReader::initClass(); }
    ~SoInputReaderTest() override { SoInputFltReader::exitClass(); }

    /// An input that stands at the start of a new file.
    SoInput& inputOf(std::string const& bytes)
    {
        std::ofstream(folder.path("a.flt"), std::ios::binary) << bytes;
        EXPECT_TRUE(input.openFile(folder.path("a.flt").c_str()));
        return input;
    }

    ScratchFolder folder;
    SoInput input;
};

} // namespace

TEST_F(SoInputReaderTest, isAnAbstractTypeOfTheToolkit)
{
    SoType const type = SoInputReader::getClassTypeId();
    EXPECT_STREQ(type.getName().getString(), "InputReader");
    EXPECT_FALSE(type.canCreateInstance());
}

TEST_F(SoInputReaderTest, isRegisteredOnce)
{
    SoType const before = SoInputReader::getClassTypeId();
    SoInputReader::initClass();
    EXPECT_TRUE(SoInputReader::getClassTypeId() == before);
}

TEST_F(SoInputReaderTest, findsTheReaderThatAcceptsAnInput)
{
    std::unique_ptr<SoInputReader> const reader(
        SoInputReader::createReaderFor(&inputOf(FltWriter().bytes())));
    ASSERT_NE(reader, nullptr);
    EXPECT_TRUE(reader->getTypeId() == SoInputFltReader::getClassTypeId());
    EXPECT_EQ(reader->getRefCount(), 0);
}

TEST_F(SoInputReaderTest, findsNoReaderForAnUnknownFormat)
{
    EXPECT_EQ(SoInputReader::createReaderFor(&inputOf("#Inventor V2.1 ascii\n")), nullptr);
}

TEST_F(SoInputReaderTest, findsNoReaderOnceItIsTakenOut)
{
    SoInput& flt = inputOf(FltWriter().bytes());
    SoInputFltReader::exitClass();
    EXPECT_EQ(SoInputReader::createReaderFor(&flt), nullptr);
}
