// A host that links the shared library and uses its classes.

#include "support/ScratchFolder.h"
#include "support/StreamCapture.h"
#include "writer/FltWriter.h"

#include "convert/FltToInventor.h"
#include "loader/FltLoader.h"
#include "loader/FltRecordReader.h"
#include "messages/FltWarningMessageConsole.h"
#include "parser/FltFileInput.h"
#include "parser/FltParser.h"
#include "plugin/Plugin.h"
#include "plugin/SoInputFltReader.h"
#include "records/FltRecord.h"
#include "statistics/FltStatisticsTool.h"
#include "toolkit/SbFileHelper.h"

#include <Inventor/SoInput.h>
#include <Inventor/nodes/SoSeparator.h>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>
#include <string>

namespace
{

/// Whether a function is there; one that the library keeps to itself would stop the linker.
template <class Function>
bool isThere(Function function)
{
    return function != nullptr;
}

/// Counts what it is shown.
class RecordCounter : public FltRecordObserver
{
public:
    void update(FltRecord const* record) override { records += record->getOpcode() > 0 ? 1 : 0; }
    int records = 0;
};

class PublicClassesTest : public testing::Test
{
protected:
    std::string saveDatabase()
    {
        FltWriter flt;
        flt.push().add("Group", {{"idASCII", "hangar"}}).pop();
        flt.save(folder.path("hangar.flt"));
        return folder.path("hangar.flt");
    }

    ScratchFolder folder;
    StreamCapture const out{std::cout};
    StreamCapture const err{std::cerr};
};

} // namespace

TEST_F(PublicClassesTest, HaveEveryOperationOfTheConversion)
{
    using Conversion = FltToInventor;
    using Box = void (Conversion::*)(FltRecordBoundingBox const*);
    using OldBox = void (Conversion::*)(FltRecordOldBoundingBox const*);
    bool const operations[] = {
        isThere(&Conversion::convertFromFile),
        isThere(&Conversion::getProductNameString),
        isThere(&Conversion::getVersionString),
        isThere(&Conversion::internalInit),
        isThere(&Conversion::update),
        isThere(&Conversion::setResult),
        isThere(&Conversion::getResult),
        isThere(&Conversion::setFltParser),
        isThere(&Conversion::deleteCurrentFltParser),
        isThere(&Conversion::convert),
        isThere(&Conversion::setFltInputToconvert),
        isThere(&Conversion::setHost),
        isThere(&Conversion::isAllFltRecordsVisited),
        isThere(&Conversion::visitAllFltRecords),
        isThere(&Conversion::destroyAllFltRecords),
        isThere(&Conversion::getRelativePath),
        isThere(&Conversion::setRelativePath),
        isThere(&Conversion::enableFileLogging),
        isThere(&Conversion::disableFileLogging),
        isThere(&Conversion::makeStats),
        isThere(&Conversion::getFaceResources),
        isThere(&Conversion::visitPrimaryRecord),
        isThere(&Conversion::visitAncillaryRecord),
        isThere(&Conversion::visitControlRecord),
        isThere(&Conversion::visitPaletteRecord),
        isThere(&Conversion::visitUnknownCategoryFltRecord),
        isThere(&Conversion::visitPushLevel),
        isThere(&Conversion::visitPopLevel),
        isThere(&Conversion::visitAncillaryRecords),
        isThere(&Conversion::iterator2VectorOfAncillaryElements),
        isThere(&Conversion::visitGroupChildren),
        isThere(&Conversion::visitHeader),
        isThere(&Conversion::visitVertexPalette),
        isThere(&Conversion::visitVertexColor),
        isThere(&Conversion::visitVertexColorNormal),
        isThere(&Conversion::visitVertexColorUV),
        isThere(&Conversion::visitVertexColorNormalUV),
        isThere(&Conversion::getIndexVertexFromOffset),
        isThere(&Conversion::getSizeVertexFromOffset),
        isThere(&Conversion::getSoVertexPropertyFromOffset),
        isThere(&Conversion::getVertexPropertyFromIntId),
        isThere(&Conversion::getIntIdFromVertexProperty),
        isThere(&Conversion::copyVertexToVertexColorNormalUV),
        isThere(&Conversion::showOffsetToVertexEntryMap),
        isThere(&Conversion::visitGroup),
        isThere(&Conversion::visitObject),
        isThere(&Conversion::visitLOD),
        isThere(&Conversion::visitOLDLOD),
        isThere(&Conversion::visitSwitch),
        isThere(&Conversion::visitDOF),
        isThere(&Conversion::visitClipRegion),
        isThere(&Conversion::visitText),
        isThere(&Conversion::visitUnknownPrimaryRecord),
        isThere(&Conversion::visitNextSuccessiveFaces),
        isThere(&Conversion::visitObjectFaceRecords),
        isThere(&Conversion::visitComment),
        isThere(&Conversion::visitLongID),
        isThere(&Conversion::visitMatrix),
        isThere(&Conversion::visitTranslate),
        isThere(&Conversion::visitScaleNonUniform),
        isThere(&Conversion::visitRotateAboutPoint),
        isThere(static_cast<Box>(&Conversion::visitBoundingBox)),
        isThere(static_cast<OldBox>(&Conversion::visitBoundingBox)),
        isThere(&Conversion::visitBoundingVolumeSphere),
        isThere(&Conversion::visitBoundingVolumeCylinder),
        isThere(&Conversion::visitBoundingVolumeCenter),
        isThere(&Conversion::visitBoundingVolumeOrientation),
        isThere(&Conversion::addSoGroupToNodesStackTop),
        isThere(&Conversion::setFltSwitchPropertiesToSoInfo),
        isThere(&Conversion::getInfoStringFromAConvertedFltSwitch),
        isThere(&Conversion::currentNumberOfSwitchChildren),
        isThere(&Conversion::isSoSwitchTraverseHisChildren),
        isThere(&Conversion::visitInstanceDefinition),
        isThere(&Conversion::visitInstanceReference),
        isThere(&Conversion::visitReplicate),
        isThere(&Conversion::visitExternalReference),
        isThere(&Conversion::visitColorPalette),
        isThere(&Conversion::visitMaterial),
        isThere(&Conversion::visitOLDMaterialPalette),
        isThere(&Conversion::visitTexturePattern),
        isThere(&Conversion::visitLineStylePalette),
        isThere(&Conversion::visitNamePalette),
        isThere(&Conversion::visitLightSourcePalette),
        isThere(&Conversion::visitTextureMapping),
    };
    for (bool const operation : operations)
        EXPECT_TRUE(operation);
}

TEST_F(PublicClassesTest, HaveEveryOperationOfTheParserItsInputTheConsoleAndTheStatistics)
{
    using Console = FltWarningMessageConsole;
    bool const operations[] = {
        isThere(&FltParser::attachFltObserver),
        isThere(&FltParser::detachFltObserver),
        isThere(&FltParser::notify),
        isThere(&FltParser::getInput),
        isThere(&FltParser::setInput),
        isThere(&FltParser::getFltCreationVisitor),
        isThere(&FltParser::setFltCreationVisitor),
        isThere(&FltParser::setDefaultFltCreationVisitor),
        isThere(&FltParser::setAdditionalDirPath),
        isThere(&FltParser::getNumberOfFltRawData),
        isThere(&FltParser::isAllFltRecordsCreated),
        isThere(&FltParser::getFltRecords),
        isThere(&FltParser::showAllFltRecords),
        isThere(&FltParser::isAnOpenFlightInput),
        isThere(&FltParser::fltRecordsVectorBuild),
        isThere(&FltParser::setHost),
        isThere(&FltParser::run),
        isThere(&FltFileInput::getAdditionalDirName),
        isThere(&FltFileInput::reportOpening),
        isThere(&FltFileInput::calculFileSize),
        isThere(&FltFileInput::fileToBuffer),
        isThere(&FltFileInput::dropBytesWhenParsed),
        isThere(&FltFileInput::dropBytesFrom),
        isThere(&FltFileInput::dropBytesBefore),
        isThere(&FltFileInput::dropBytes),
        isThere(&FltFileInput::showBuffer),
        isThere(&Console::getInstance),
        isThere(&Console::notifyMessage),
        isThere(&Console::notifyUnopened),
        isThere(&Console::showMessagesConsole),
        isThere(&Console::setWarningLevel),
        isThere(&Console::setDefaultWarningLevel),
        isThere(&Console::keepText),
        isThere(&Console::notifyGuard),
        isThere(&Console::beginFile),
        isThere(&Console::setPosition),
        isThere(&Console::notifyDamage),
        isThere(&Console::setListener),
        isThere(&Console::setOfMessages),
        isThere(&Console::currentWarningLevel),
        isThere(&Console::Count::finish),
        isThere(&FltStatisticsTool::setFltFile),
        isThere(&FltStatisticsTool::setStatFile),
        isThere(&FltStatisticsTool::setVectorOfFltRecords),
        isThere(&FltStatisticsTool::makeEmptyFile),
        isThere(&FltStatisticsTool::isOutputFileEmpty),
        isThere(&FltStatisticsTool::writeFltStatisticsHeader),
        isThere(&FltStatisticsTool::makeStatistics),
    };
    for (bool const operation : operations)
        EXPECT_TRUE(operation);
}

TEST_F(PublicClassesTest, HaveEveryOperationOfTheReader)
{
    using IsFile = bool (*)(FILE*);
    using IsNamed = bool (*)(char const*);
    bool const operations[] = {
        isThere(&initPlugin),
        isThere(&exitPlugin),
        isThere(&getProductName),
        isThere(&getVersion),
        isThere(&convertFrom),
        isThere(&SoInputFltReader::getTypeId),
        isThere(&SoInputFltReader::canConvert),
        isThere(&SoInputFltReader::convert),
        isThere(static_cast<IsFile>(&SoInputFltReader::isOpenFlight)),
        isThere(static_cast<IsNamed>(&SoInputFltReader::isOpenFlight)),
        isThere(&SoInputFltReader::initClass),
        isThere(&SoInputFltReader::exitClass),
        isThere(&SoInputFltReader::getClassTypeId),
        isThere(&SoInputFltReader::createFromSoType),
        isThere(&SoInputReader::initClass),
        isThere(&SoInputReader::getClassTypeId),
        isThere(&SoInputReader::createReaderFor),
        isThere(&SoRefCounter::ref),
        isThere(&SoRefCounter::unref),
        isThere(&SoRefCounter::unrefNoDelete),
        isThere(&SoRefCounter::getRefCount),
        isThere(&SbFileHelper::getExtension),
        isThere(&SbFileHelper::open),
        isThere(&SbFileHelper::close),
    };
    for (bool const operation : operations)
        EXPECT_TRUE(operation);
}

TEST_F(PublicClassesTest, HaveEveryOperationOfTheLoader)
{
    bool const operations[] = {
        isThere(&FltLoader::load),         isThere(&FltLoader::canLoad),
        isThere(&FltScene::root),          isThere(&FltScene::release),
        isThere(&FltScene::messages),      isThere(&FltScene::textures),
        isThere(&FltScene::references),    isThere(&FltScene::omissions),
        isThere(&FltScene::info),          isThere(&FltScene::switches),
        isThere(&FltScene::chooseMask),    isThere(&FltScene::degreesOfFreedom),
        isThere(&FltScene::move),          isThere(&FltDatabaseInfo::nameOf),
        isThere(&FltLoadError::kind),      isThere(&FltLoadError::file),
        isThere(&FltLoadError::offset),    isThere(&FltRecordReader::next),
        isThere(&FltRecordReader::opcode), isThere(&FltRecordReader::offset),
        isThere(&FltRecordReader::length), isThere(&FltRecordReader::json),
        isThere(&FltRecordReader::fault),
    };
    for (bool const operation : operations)
        EXPECT_TRUE(operation);
}

TEST_F(PublicClassesTest, ThrowAnErrorThatTheHostCatchesByItsClassAndByItsBase)
{
    std::string const missing = folder.path("missing.flt");
    try {
        static_cast<void>(FltLoader().load(missing));
        FAIL() << "a missing file was loaded";
    } catch (FltLoadError const& error) {
        EXPECT_EQ(error.kind(), FltLoadError::Kind::cannotOpen);
        EXPECT_EQ(error.file(), missing);
    }
    EXPECT_THROW(static_cast<void>(FltLoader().load(missing)), std::runtime_error);
    EXPECT_THROW(FltRecordReader{missing}, FltLoadError);
}

TEST_F(PublicClassesTest, LetWhatAHostThrowInACallbackThrough)
{
    FltLoader loader;
    loader.progress = [](std::string const&, std::uint64_t, std::uint64_t) -> bool {
        throw FltLoadError(FltLoadError::Kind::cancelled, "hangar", "The host has had enough.");
    };
    EXPECT_THROW(static_cast<void>(loader.load(saveDatabase())), FltLoadError);
}

TEST_F(PublicClassesTest, TellTheirTypesAcrossTheBoundary)
{
    std::string const path = saveDatabase();
    FltFileInput input(path.c_str());
    FltParser parser(&input);
    FltRecordObservable* const observable = &parser;
    EXPECT_EQ(dynamic_cast<FltParser*>(observable), &parser);
    RecordCounter counter;
    parser.attachFltObserver(&counter);
    EXPECT_EQ(parser.run(), 0);
    EXPECT_EQ(counter.records, 4);
    for (FltRecord* const record : parser.getFltRecords()) {
        EXPECT_NE(dynamic_cast<FltRecord*>(record), nullptr);
        delete record;
    }
    parser.setInput(nullptr);

    std::unique_ptr<SoRefCounter> const reader = std::make_unique<SoInputFltReader>();
    EXPECT_NE(dynamic_cast<SoInputReader*>(reader.get()), nullptr);
    EXPECT_EQ(dynamic_cast<SoInputFltReader*>(reader.get()), reader.get());
}
