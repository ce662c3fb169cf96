#include "convert/FltToInventor.h"

#include "convert/FltConversionHost.h"
#include "dump/FltDumpOutput.h"
#include "messages/FltWarningMessageConsole.h"
#include "parser/FltFileInput.h"
#include "parser/FltParser.h"
#include "records/FltRecord.h"
#include "support/ConvertedFile.h"
#include "support/ConvertedScene.h"
#include "support/FileSizeLimit.h"
#include "support/MemoryInput.h"
#include "support/OpenWatch.h"
#include "support/ProcessUsage.h"
#include "support/RecordText.h"
#include "support/SameText.h"
#include "support/ScratchFolder.h"
#include "writer/EveryRecord.h"

#include <Inventor/SbViewportRegion.h>
#include <Inventor/actions/SoGetBoundingBoxAction.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/nodes/SoLOD.h>
#include <Inventor/sensors/SoNodeSensor.h>
#include <fcntl.h>
#include <filesystem>
#include <gtest/gtest.h>
#include <sstream>
#include <sys/stat.h>

namespace
{

namespace fs = std::filesystem;

std::string const header1570 =
    "\n HEADER RECORD \n  (PRIMARY_RECORD)\n-- Opcode: 1  Length: 298 --\nformatRevisionLevel: 1570\n";

SbVec3f centreOf(ConvertedScene const& scene, char const* levelOfDetail)
{
    return static_cast<SoLOD*>(scene.find(levelOfDetail))->center.getValue();
}

/// Follows every reference, and would see a texture.
struct ListingHost : FltConversionHost {
    void beginFile(FltInput const& /*file*/) override { ++files; }
    void takeRecord(FltInput const& /*file*/, FltRecord const& /*record*/, std::size_t /*offset*/) override
    {
        ++records;
    }
    void takeConverted(FltInput const& /*file*/, std::size_t /*records*/, std::size_t /*inAll*/) override {}
    void endFile(FltInput const& /*file*/) override { --files; }
    SoNodeRef<SoTexture2> makeTexture(FltInput const& /*file*/, std::string const& /*name*/) override
    {
        ADD_FAILURE() << "a texture was asked for";
        return {};
    }
    bool beginReference(FltInput const& /*file*/, std::string const& /*name*/, std::string const& target,
                        bool isThere) override
    {
        path = target;
        return isThere;
    }
    OpenFile takeReferencedFile() override { return OpenFile(::open(path.c_str(), O_RDONLY)); }
    void endReference(bool isLoaded) override { EXPECT_FALSE(isLoaded); }

    int files = 0;
    int records = 0;
    std::string path;
};

TEST(FltToInventorTest, AListingMakesNoNodeAndNoTexture)
{
    ScratchFolder const folder;
    everyRecord(1570).save(folder.path("other.flt"));
    FltWriter flt = everyRecord(1570);
    flt.push().add("ExternalReference", {{"asciiPath", "other.flt"}}).pop();
    std::string const path = folder.write("a.flt", flt.bytes());
    ConvertedFile const scene(path);
    std::stringstream listing;
    ListingHost host;
    {
        FltDumpOutput::Redirect const redirect(nullptr);
        FltFileInput input(path.c_str());
        FltDumpOutput::Redirect const toListing(&listing);
        SbUniqueId const before = SoNode::getNextNodeId();
        EXPECT_EQ(FltToInventor::list(input, host), 0);
        EXPECT_EQ(SoNode::getNextNodeId(), before);
    }
    expectSameText(withoutAddress(listing.str()), withoutAddress(contentsOf(path + ".log")));
    EXPECT_EQ(host.files, 0);
    EXPECT_GT(host.records, 200);
}

TEST(FltToInventorTest, AHostHearsOfEachQuarterOfAThousandRecords)
{
    struct CountingHost : ListingHost {
        void takeConverted(FltInput const& /*file*/, std::size_t records, std::size_t inAll) override
        {
            converted.push_back(records);
            all.push_back(inAll);
        }
        std::vector<std::size_t> converted;
        std::vector<std::size_t> all;
    };
    FltWriter flt;
    flt.push();
    for (int i = 0; i < 200; ++i)
        flt.add("Group").push().pop();
    flt.pop();
    MemoryInput input(flt.bytes());
    CountingHost host;
    FltDumpOutput::Redirect const noDump(nullptr);
    EXPECT_EQ(FltToInventor::list(input, host), 0);
    EXPECT_EQ(host.converted, (std::vector<std::size_t>{256, 512}));
    EXPECT_EQ(host.all, (std::vector<std::size_t>(2, 604))) << "the null entry at the end among them";
}

TEST(FltToInventorTest, AListingOfNoWholeRecordOrOfAnOldRevisionFails)
{
    for (std::string const& bytes :
         {FltWriter(10).bytes(), FltWriter().bytes().substr(0, 20), std::string()}) {
        MemoryInput input(bytes);
        ListingHost host;
        FltDumpOutput::Redirect const noDump(nullptr);
        StreamCapture const err(std::cerr);
        EXPECT_EQ(FltToInventor::list(input, host), 1) << bytes.size();
    }
}

TEST(FltToInventorTest, NamesTheProductAndItsVersion)
{
    EXPECT_STREQ(FltToInventor::getProductNameString(), "VelloReader");
    EXPECT_STREQ(FltToInventor::getVersionString(), "9.6.1");
    EXPECT_NE(FltToInventor::internalInit(), 0);
}

TEST(FltToInventorTest, AnEmptyFileNameYieldsNullAndNoLog)
{
    ScratchFolder const folder;
    fs::path const before = fs::current_path();
    fs::current_path(fs::path(folder.path("x")).parent_path());
    EXPECT_EQ(FltToInventor::convertFromFile(""), nullptr);
    EXPECT_EQ(FltToInventor::convertFromFile(nullptr), nullptr);
    EXPECT_FALSE(fs::exists(".log"));
    fs::current_path(before);
}

TEST(FltToInventorTest, AFileThatDoesNotExistStillCreatesTheLogAndYieldsAnEmptySeparator)
{
    ScratchFolder const folder;
    std::string const path = folder.path("missing.flt");
    ConvertedFile const file(path);
    ASSERT_NE(file.root, nullptr);
    EXPECT_EQ(file.root->getNumChildren(), 0);
    EXPECT_EQ(file.rootReferences, 0);
    EXPECT_TRUE(fs::exists(path + ".log"));
    EXPECT_EQ(contentsOf(path + ".log"), "");
    EXPECT_EQ(file.messages, "Error in opening file: " + path +
                                 "\nERROR ! FltParser has no INPUT !\n(Warning Level: 3)\n\n");
}

TEST(FltToInventorTest, ADirectoryIsRefusedAsAFileThatCannotBeOpened)
{
    ScratchFolder const folder;
    fs::create_directory(folder.path("folder.flt"));
    ConvertedFile const file(folder.path("folder.flt"));
    EXPECT_EQ(file.root->getNumChildren(), 0);
    EXPECT_NE(file.messages.find("Error in opening file: "), std::string::npos);
}

TEST(FltToInventorTest, AFileOfRevision10YieldsAnEmptySeparatorWithItsRecordsLeftAlive)
{
    ScratchFolder const folder;
    std::string const path = folder.path("old.flt");
    FltWriter(10).add("Group").save(path);
    StreamCapture const out(std::cout);
    StreamCapture const err(std::cerr);
    FltFileInput input(path.c_str());
    FltParser parser(&input);
    FltToInventor converter;
    converter.setFltParser(&parser);
    converter.setResult(nullptr);
    SoSeparator* const root = converter.getResult();
    root->ref();
    EXPECT_EQ(converter.convert(), 1);
    EXPECT_EQ(root->getNumChildren(), 0);
    ASSERT_EQ(parser.getFltRecords().size(), 2U);
    EXPECT_EQ(parser.getFltRecords()[0]->getOpcode(), 1);
    EXPECT_EQ(parser.getFltRecords()[1]->getOpcode(), 2);
    EXPECT_EQ(err.str(), "ERROR ! Openflight Format Revision not supported !\n(Warning Level: 3)\n\n");
    converter.destroyAllFltRecords();
    converter.setFltParser(nullptr);
    parser.setInput(nullptr);
    root->unref();
}

TEST(FltToInventorTest, RecordsLeftAliveDoNotPileUpOverConversions)
{
    for (int i = 0; i < 100; ++i)
        EXPECT_EQ(ConvertedScene(FltWriter(10).add("ColorPalette")).result, 1);
}

TEST(FltToInventorTest, ConvertWithoutAParserReportsAndMakesNoRecord)
{
    StreamCapture const err(std::cerr);
    FltToInventor converter;
    EXPECT_EQ(converter.convert(), 1);
    ASSERT_NE(converter.getResult(), nullptr);
    converter.getResult()->ref();
    converter.getResult()->unref();
    EXPECT_EQ(err.str(), "ERROR ! The field fltParser is NULL\n(Warning Level: 3)\n\n");
}

TEST(FltToInventorTest, ConvertWithoutAnInputReports)
{
    StreamCapture const err(std::cerr);
    FltToInventor converter;
    converter.setFltInputToconvert(nullptr);
    converter.setResult(nullptr);
    converter.getResult()->ref();
    EXPECT_EQ(converter.convert(), 1);
    converter.getResult()->unref();
    EXPECT_EQ(err.str(), "ERROR ! FltParser has no INPUT !\n(Warning Level: 3)\n\n");
}

TEST(FltToInventorTest, SetResultOfNullMakesASeparatorAtOnce)
{
    FltToInventor converter;
    converter.setResult(nullptr);
    ASSERT_NE(converter.getResult(), nullptr);
    EXPECT_EQ(converter.getResult()->getRefCount(), 0);
    converter.getResult()->ref();
    converter.getResult()->unref();
}

TEST(FltToInventorTest, AFileWithNothingButAHeaderCompletes)
{
    ConvertedScene const scene{FltWriter()};
    EXPECT_EQ(scene.result, 0);
    EXPECT_EQ(scene.rootReferences, 1);
    EXPECT_EQ(scene.text(), rootWith(""));
    EXPECT_EQ(scene.messages, "");
}

TEST(FltToInventorTest, TheRootOfAConvertedFileHasOneReferenceForTheCaller)
{
    ScratchFolder const folder;
    FltWriter().push().pop().save(folder.path("a.flt"));
    EXPECT_EQ(ConvertedFile(folder.path("a.flt")).rootReferences, 1);
}

TEST(FltToInventorTest, TheLogHoldsTheParseAndMessagesAreNotInIt)
{
    ScratchFolder const folder;
    std::string const path = folder.path("a.flt");
    FltWriter().pop().save(path);
    ConvertedFile const file(path);
    std::string const log = contentsOf(path + ".log");
    EXPECT_EQ(log.substr(0, 21 + header1570.size()), "beginning of parsing\n" + header1570);
    std::string const end = "\n\nOpenFlight file version: 1570\nRGB mode: false\n\n POP LEVEL RECORD \n  "
                            "(CONTROL_RECORD)\n-- Opcode: 11  Length: 4 --\nend of parsing\n";
    EXPECT_EQ(log.substr(log.size() - end.size()), end);
    EXPECT_EQ(file.messages,
              "WARNING ! trying a pop() but stack is empty! (File corrupted ?)\n(Warning Level: 2)\n\n");
    EXPECT_EQ(file.beforeTheLog, "\nSuccess in opening file: " + path + "\n");
}

TEST(FltToInventorTest, TheLogOfAFileThatIsNotOpenFlightExistsAndIsEmpty)
{
    ScratchFolder const folder;
    std::string const path = folder.path("a.flt");
    FltWriter().save(path);
    std::string bytes = contentsOf(path);
    bytes[1] = 2;
    std::ofstream(path) << bytes;
    ConvertedFile const file(path);
    EXPECT_EQ(file.root->getNumChildren(), 0);
    EXPECT_EQ(file.rootReferences, 0);
    EXPECT_EQ(contentsOf(path + ".log"), "");
    EXPECT_EQ(file.messages, "ERROR! Not an Openflight Input !\n(Warning Level: 3)\n\n");
}

TEST(FltToInventorTest, ALogThatCannotBeMadeDoesNotFailTheConversion)
{
    ScratchFolder const folder;
    std::string const path = folder.path("a.flt");
    FltWriter().save(path);
    fs::create_directory(path + ".log");
    ConvertedFile const file(path);
    EXPECT_EQ(file.root->getNumChildren(), 3);
    EXPECT_EQ(file.messages, "");
}

std::string refusedLog(std::string const& path)
{
    return "WARNING ! No log is written: what stands at its place is a link, has a second name, or isn't a "
           "plain file. "
           "Remove it, or convert a copy: " +
           path + ".log\n(Warning Level: 2)\n\n";
}

TEST(FltToInventorTest, ALogThatIsASymbolicLinkIsRefusedAndWhatItNamesIsKept)
{
    ScratchFolder const folder;
    std::string const path = folder.path("a.flt");
    FltWriter().save(path);
    std::string const other = folder.write("precious", "kept");
    fs::create_symlink(other, path + ".log");
    ConvertedFile const file(path);
    EXPECT_EQ(contentsOf(other), "kept");
    EXPECT_EQ(file.messages, refusedLog(path));
    EXPECT_EQ(file.root->getNumChildren(), 3);
}

TEST(FltToInventorTest, ALogThatIsAnotherNameOfTheDatabaseIsRefusedAndTheDatabaseKept)
{
    ScratchFolder const folder;
    std::string const path = folder.path("a.flt");
    FltWriter().save(path);
    fs::create_hard_link(path, path + ".log");
    ConvertedFile const file(path);
    EXPECT_EQ(contentsOf(path), FltWriter().bytes());
    EXPECT_EQ(file.messages, refusedLog(path));
}

TEST(FltToInventorTest, ALogThatIsAPipeIsRefusedAndNotWaitedFor)
{
    ScratchFolder const folder;
    std::string const path = folder.path("a.flt");
    FltWriter().save(path);
    ASSERT_EQ(::mkfifo((path + ".log").c_str(), 0600), 0);
    OpenWatch watch(path + ".log");
    ConvertedFile const file(path);
    EXPECT_EQ(file.messages, refusedLog(path));
    EXPECT_FALSE(watch.wasOpened());
}

TEST(FltToInventorTest, AFailedLogThrowsNothingWhereTheHostHasSwitchedExceptionsOn)
{
    ScratchFolder const folder;
    std::string const path = folder.path("a.flt");
    FltWriter().save(path);
    fs::create_directory(path + ".log");
    std::cout.exceptions(std::ios_base::badbit | std::ios_base::failbit);
    EXPECT_NO_THROW(ConvertedFile file(path));
    fs::remove(path + ".log");
    {
        FileSizeLimit const limit(10);
        EXPECT_NO_THROW(ConvertedFile file(path));
    }
    std::cout.exceptions(std::ios_base::goodbit);
    std::cout.clear();
}

TEST(FltToInventorTest, StandardOutputStaysOnTheClosedLogAndIsLostHarmlessly)
{
    ScratchFolder const folder;
    std::string const path = folder.path("a.flt");
    FltWriter().save(path);
    std::streambuf* const before = std::cout.rdbuf();
    for (int i = 0; i < 20; ++i) {
        SoSeparator* const root = FltToInventor::convertFromFile(path.c_str());
        EXPECT_NE(std::cout.rdbuf(), before);
        std::size_t const logged = contentsOf(path + ".log").size();
        std::cout << "lost " << i << std::endl;
        EXPECT_EQ(contentsOf(path + ".log").size(), logged);
        root->unref();
    }
    std::cout.rdbuf(before);
    EXPECT_TRUE(std::cout.good());
}

TEST(FltToInventorTest, DisableFileLoggingCalledTwiceDoesItsWorkOnce)
{
    ScratchFolder const folder;
    std::streambuf* const before = std::cout.rdbuf();
    {
        FltToInventor converter;
        converter.enableFileLogging(folder.path("log").c_str());
        std::cout << "kept" << std::endl;
        converter.disableFileLogging();
        converter.disableFileLogging();
    }
    std::cout.rdbuf(before);
    EXPECT_EQ(contentsOf(folder.path("log")), "kept\n");
}

TEST(FltToInventorTest, TheRecordsAreDestroyedOnceAlsoWhenOneStandsInTwoEntries)
{
    FltWriter flt;
    flt.add("SoundPaletteTable").add("SoundPaletteNames", {{"dataLength", 3}, {"packedData", "abc"}});
    StreamCapture const out(std::cout);
    ScratchFolder const folder;
    flt.save(folder.path("a.flt"));
    FltFileInput input(folder.path("a.flt").c_str());
    FltToInventor converter;
    converter.setFltInputToconvert(&input);
    converter.setResult(nullptr);
    SoSeparator* const root = converter.getResult();
    EXPECT_EQ(converter.convert(), 0);
    converter.destroyAllFltRecords(); // a second time: nothing is left to destroy
    root->unref();
}

TEST(FltToInventorTest, ARecordOfAnUnknownCategoryIsPassedOver)
{
    ConvertedScene const scene(FltWriter().addRaw(115, "body").push().pop());
    EXPECT_EQ(scene.result, 0);
    EXPECT_EQ(scene.text(), rootWith(""));
}

TEST(FltToInventorTest, AnExceptionOfTheAllocatorLeavesWithNothingLost)
{
    ScratchFolder const folder;
    std::string const path = folder.path("a.flt");
    FltWriter().add("Switch", {{"numberOfMasks", -1}, {"numberOf32BitWordsPerMask", 1}}).save(path);
    StreamCapture const out(std::cout);
    EXPECT_THROW(FltToInventor::convertFromFile(path.c_str()), std::bad_alloc);
    EXPECT_NE(contentsOf(path + ".log").find("RGB mode: false"), std::string::npos);
}

TEST(FltToInventorTest, ALevelOpenedAgainBelowAFinishedLODCountsInTheCentreOfTheOuterOne)
{
    FltWriter flt;
    flt.vertexPalette();
    double const a = flt.vertex("VertexColor", 1, 1, 1);
    double const b = flt.vertex("VertexColor", 3, 1, 1);
    double const far = flt.vertex("VertexColor", 11, 21, 31);
    flt.push().add("LOD", {{"idASCII", "outer"}}).push();
    flt.add("LOD", {{"idASCII", "inner"}}).push().add("Group", {{"idASCII", "last"}}).push();
    flt.face({a, b, b}).pop().pop();
    flt.push().add("Group").push().face({far, far, far}).pop().pop(); // below "last"
    flt.pop().pop();
    ConvertedScene const scene(flt);
    EXPECT_EQ(centreOf(scene, "inner"), SbVec3f(2, 1, 1));
    EXPECT_EQ(centreOf(scene, "outer"), SbVec3f(6, 11, 16));
    SoGetBoundingBoxAction again{SbViewportRegion()};
    again.apply(scene.root);
    EXPECT_EQ(again.getBoundingBox().getCenter(), SbVec3f(6, 11, 16));
}

TEST(FltToInventorTest, ALevelOpenedAgainBelowTwoFinishedLODsCountsInTheCentreAroundBoth)
{
    FltWriter flt;
    flt.vertexPalette();
    double const near = flt.vertex("VertexColor", 2, 2, 2);
    double const far = flt.vertex("VertexColor", 12, 22, 32);
    flt.push().add("LOD", {{"idASCII", "around"}}).push();
    flt.add("LOD", {{"idASCII", "outer"}}).push().add("LOD", {{"idASCII", "inner"}}).push();
    flt.add("Group", {{"idASCII", "last"}}).push().face({near, near, near}).pop();
    flt.pop().pop();                                                  // both are finished
    flt.push().add("Group").push().face({far, far, far}).pop().pop(); // below "last"
    flt.pop().pop();
    ConvertedScene const scene(flt);
    EXPECT_EQ(centreOf(scene, "inner"), SbVec3f(2, 2, 2));
    EXPECT_EQ(centreOf(scene, "outer"), SbVec3f(2, 2, 2));
    EXPECT_EQ(centreOf(scene, "around"), SbVec3f(7, 12, 17));
}

TEST(FltToInventorTest, ALevelOpenedAgainBelowAReplicatedLODCountsInTheCentreOfTheOuterOne)
{
    FltWriter flt;
    flt.vertexPalette();
    double const near = flt.vertex("VertexColor", 2, 2, 2);
    double const far = flt.vertex("VertexColor", 12, 22, 32);
    flt.push().add("LOD", {{"idASCII", "outer"}}).push();
    flt.add("LOD", {{"idASCII", "inner"}}).add("Replicate").push();
    flt.add("Group", {{"idASCII", "last"}}).push().face({near, near, near}).pop();
    flt.pop();
    flt.push().add("Group").push().face({far, far, far}).pop().pop(); // below "last"
    flt.pop().pop();
    ConvertedScene const scene(flt);
    EXPECT_NE(scene.find("Replications"), nullptr);
    EXPECT_EQ(centreOf(scene, "inner"), SbVec3f(2, 2, 2));
    EXPECT_EQ(centreOf(scene, "outer"), SbVec3f(7, 12, 17));
}

TEST(FltToInventorTest, AfterAConversionEveryNodeTellsOfItsChangesAgain)
{
    FltWriter flt;
    flt.vertexPalette();
    double const a = flt.vertex("VertexColor", 1, 1, 1);
    flt.push().add(
        "Switch", {{"idASCII", "s"}, {"numberOfMasks", 1}, {"numberOf32BitWordsPerMask", 1}, {"masks", {1}}});
    flt.push().add("LOD", {{"idASCII", "l"}}).push().add("Object", {{"idASCII", "o"}}).push().face({a, a, a});
    ConvertedScene const scene(flt.pop().pop().pop().pop());
    SoSearchAction search;
    search.setInterest(SoSearchAction::ALL);
    search.setType(SoNode::getClassTypeId());
    search.setSearchingAll(TRUE);
    search.apply(scene.root);
    for (int i = 0; i < search.getPaths().getLength(); ++i)
        EXPECT_TRUE(search.getPaths()[i]->getTail()->isNotifyEnabled())
            << search.getPaths()[i]->getTail()->getTypeId().getName().getString();
    EXPECT_GT(search.getPaths().getLength(), 12);
}

TEST(FltToInventorTest, AHostThatWatchesItsRootHearsOfTheConversionOnceAndOfEachChangeAfterIt)
{
    FltWriter flt;
    flt.vertexPalette();
    double const a = flt.vertex("VertexColor", 1, 1, 1);
    flt.push().add("Group").push().add("LOD", {{"idASCII", "l"}}).push();
    flt.add("Object").push().face({a, a, a}).pop().pop().pop().pop();
    MemoryInput input(flt.bytes());
    ConvertedRoot const root(new SoSeparator);
    int heard = 0;
    SoNodeSensor sensor([](void* data, SoSensor* /*sensor*/) { ++*static_cast<int*>(data); }, &heard);
    sensor.setPriority(0); // at once
    sensor.attach(root.get());
    {
        StreamCapture const out(std::cout);
        FltToInventor converter;
        converter.setFltInputToconvert(&input);
        converter.setResult(root.get());
        EXPECT_EQ(converter.convert(), 0);
    }
    EXPECT_EQ(heard, 1);
    SoSearchAction search;
    search.setType(SoLOD::getClassTypeId());
    search.apply(root.get());
    ASSERT_NE(search.getPath(), nullptr);
    static_cast<SoLOD*>(search.getPath()->getTail())->center.setValue(7, 8, 9);
    EXPECT_EQ(heard, 2);
}

TEST(FltToInventorTest, ManyConversionsLeaveNoFileOpen)
{
    ScratchFolder const folder;
    std::string const path = folder.path("a.flt");
    FltWriter flt;
    flt.vertexPalette();
    int const a = flt.vertex("VertexColor", 0, 0, 0);
    flt.push().add("Object").push().face({double(a), double(a), double(a)}).pop().pop().save(path);
    {
        ConvertedFile const first(path);
    }
    std::size_t const before = ProcessUsage::openFiles();
    for (int i = 0; i < 50; ++i)
        ConvertedFile const again(path);
    EXPECT_EQ(ProcessUsage::openFiles(), before);
}

} // namespace
