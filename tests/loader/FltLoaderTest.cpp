#include "loader/FltLoader.h"

#include "support/ConvertedFile.h"
#include "support/FileSizeLimit.h"
#include "support/MadeAttributes.h"
#include "support/MadePictures.h"
#include "support/NameTable.h"
#include "support/ObjectDatabase.h"
#include "support/OpenWatch.h"
#include "support/ProcessUsage.h"
#include "support/ScratchFolder.h"
#include "support/SmallPictures.h"
#include "support/StreamCapture.h"
#include "support/ToolkitReads.h"
#include "toolkit/SoNodeRef.h"
#include "writer/FltWriter.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoPath.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/errors/SoDebugError.h>
#include <Inventor/misc/SoChildList.h>
#include <Inventor/nodes/SoSeparator.h>
#include <Inventor/nodes/SoTexture2.h>
#include <atomic>
#include <cerrno>
#include <gtest/gtest.h>
#include <map>
#include <thread>

#include <filesystem>
#include <iostream>
#include <utility>

namespace
{

using Kind = FltLoadError::Kind;

class FltLoaderTest : public testing::Test
{
protected:
    std::string save(FltWriter const& flt, std::string const& name = "a.flt") const
    {
        flt.save(folder.path(name));
        return folder.path(name);
    }

    FltLoadError errorOf(std::string const& path) const
    {
        try {
            static_cast<void>(loader.load(path));
        } catch (FltLoadError const& error) {
            return error;
        }
        ADD_FAILURE() << path << " was loaded";
        return {Kind::failed, path, "was loaded"};
    }

    ScratchFolder folder;
    FltLoader loader;
};

FltWriter oneGroup()
{
    FltWriter flt;
    flt.push().add("Group", {{"idASCII", "group"}}).pop();
    return flt;
}

/// A triangle with a texture, and a texture that no face uses.
FltWriter texturedTriangle(std::string const& texture)
{
    FltWriter flt;
    flt.add("TexturePattern", {{"fileName", texture}, {"patternIndex", 3}});
    flt.add("TexturePattern", {{"fileName", "unused.rgb"}, {"patternIndex", 4}});
    flt.vertexPalette();
    std::vector<double> corners;
    for (double const y : {0.0, 0.0, 1.0})
        corners.push_back(static_cast<double>(flt.vertex("VertexColorUv", corners.empty() ? 0 : 1, y, 0)));
    beginObject(flt);
    flt.face(corners, {{"texturePatternIndex", 3}, {"materialIndex", -1}});
    endObject(flt);
    return flt;
}

/// The only texture of a scene.
SoTexture2* textureOf(FltScene const& scene)
{
    SoSearchAction search;
    search.setType(SoTexture2::getClassTypeId());
    search.apply(scene.root());
    return search.getPath() != nullptr ? static_cast<SoTexture2*>(search.getPath()->getTail()) : nullptr;
}

FltWriter reference(std::string const& path)
{
    FltWriter flt;
    flt.push().add("ExternalReference", {{"asciiPath", path}}).pop();
    return flt;
}

FltWriter manyGroups(int count)
{
    FltWriter flt;
    flt.push();
    for (int i = 0; i < count; ++i)
        flt.add("Group", {{"idASCII", "g"}}).push().pop();
    flt.pop();
    return flt;
}

} // namespace

TEST_F(FltLoaderTest, GivesTheSceneWithOneReferenceThatIsHandedOverOnRequest)
{
    FltScene scene = loader.load(save(oneGroup()));
    ASSERT_NE(scene.root(), nullptr);
    EXPECT_EQ(scene.root()->getRefCount(), 1);
    EXPECT_STREQ(scene.root()->getName().getString(), "root");

    FltScene moved = std::move(scene);
    SoSeparator* const root = moved.release();
    EXPECT_EQ(moved.root(), nullptr);
    EXPECT_EQ(root->getRefCount(), 1);
    root->unref();
}

TEST_F(FltLoaderTest, TellsTheNumberOfTheSystemWhereAFileCannotBeOpened)
{
    std::string const text = folder.write("text.flt", "nothing of the kind");
    EXPECT_EQ(errorOf(folder / "none.flt").systemError(), ENOENT);
    EXPECT_EQ(errorOf("").systemError(), ENOENT);
    EXPECT_EQ(errorOf(folder / "").systemError(), EISDIR);
    EXPECT_EQ(errorOf(text + "/a.flt").systemError(), ENOTDIR);
    EXPECT_EQ(errorOf(folder / std::string(300, 'a')).systemError(), ENAMETOOLONG);
    EXPECT_EQ(errorOf(text).systemError(), 0);
    EXPECT_EQ(errorOf("/dev/null").systemError(), 0);
}

TEST_F(FltLoaderTest, SaysWhyAFileCannotBeLoaded)
{
    EXPECT_EQ(errorOf(folder / "none.flt").kind(), Kind::cannotOpen);
    EXPECT_EQ(errorOf("").kind(), Kind::cannotOpen);
    EXPECT_EQ(errorOf(folder / "").kind(), Kind::cannotOpen);
    EXPECT_EQ(errorOf("/dev/null").kind(), Kind::cannotOpen);
    EXPECT_EQ(errorOf(folder.write("empty.flt", "")).kind(), Kind::notOpenFlight);
    EXPECT_EQ(errorOf(folder.write("text.flt", "#Inventor V2.1 ascii")).kind(), Kind::notOpenFlight);
    EXPECT_EQ(errorOf(folder.write("short.flt", std::string("\0\1\1\0", 4))).kind(), Kind::damaged);
    EXPECT_EQ(errorOf(folder.write("cut.flt", FltWriter().bytes().substr(0, 100))).kind(), Kind::damaged);
    EXPECT_EQ(errorOf(save(FltWriter(10))).kind(), Kind::revision);
}

TEST_F(FltLoaderTest, LeavesTheStandardStreamsAndTheFolderAlone)
{
    FltWriter flt = oneGroup();
    flt.add("ExternalReference", {{"asciiPath", "none.flt"}});
    std::string const path = save(flt);
    StreamCapture cout(std::cout);
    StreamCapture cerr(std::cerr);
    FltScene const scene = loader.load(path);
    EXPECT_EQ(cout.str() + cerr.str(), "");
    EXPECT_FALSE(std::filesystem::exists(path + ".log"));
    ASSERT_EQ(scene.messages().size(), 1U);
    EXPECT_EQ(scene.messages()[0].level, FltMessage::Level::error);
}

TEST_F(FltLoaderTest, RefusesWhatOnlyTheCompleteConversionCan)
{
    std::string const path = save(oneGroup());
    loader.exact = true;
    loader.references = FltLoader::References::asFile;
    EXPECT_EQ(errorOf(path).kind(), Kind::refused);
    loader = {};
    loader.exact = true;
    loader.levelsOfDetail = FltLoader::LevelsOfDetail::highest;
    EXPECT_EQ(errorOf(path).kind(), Kind::refused);
    loader = {};
    loader.exact = true;
    loader.units = FltLoader::Units::stored;
    EXPECT_EQ(errorOf(path).kind(), Kind::refused);
    loader = {};
    loader.exact = true;
    loader.time = FltLoader::TimeOfDay::dusk;
    EXPECT_EQ(errorOf(path).kind(), Kind::refused);
    loader = {};
    loader.exact = true;
    loader.merge = true;
    EXPECT_EQ(errorOf(path).kind(), Kind::refused);
    loader = {};
    loader.exact = true;
    loader.names = FltLoader::Names::none;
    EXPECT_EQ(errorOf(path).kind(), Kind::refused);
}

TEST_F(FltLoaderTest, GivesTheSameSceneAndLogAsTheConversionOfAFile)
{
    EXPECT_EQ(save(oneGroup(), "other.flt"), folder / "other.flt");
    FltWriter flt = texturedTriangle("");
    flt.push().add("ExternalReference", {{"asciiPath", "other.flt"}}).pop();
    std::string const path = save(flt);
    ConvertedFile const plain(path);
    std::string const log = contentsOf(path + ".log");
    EXPECT_NE(log.find("end of parsing"), std::string::npos);

    loader.log = folder / "mine.txt";
    StreamCapture const cout(std::cout);
    for (bool const exact : {false, true}) {
        loader.exact = exact;
        FltScene const scene = loader.load(path);
        EXPECT_EQ(sceneText(scene.root()) == plain.text(), exact);
        EXPECT_EQ(contentsOf(folder / "mine.txt"), log);
    }
    EXPECT_EQ(cout.str(), "");
    loader.log = FltLoader::besideDatabase;
    static_cast<void>(loader.load(path));
    EXPECT_EQ(contentsOf(path + ".log"), log);
}

TEST_F(FltLoaderTest, ReplacesNothingByALogThatIsNoLog)
{
    std::string const path = save(oneGroup(), "notes");
    std::string const notes = folder.write("notes.log", "my notes");
    loader.log = FltLoader::besideDatabase;
    EXPECT_EQ(errorOf(path).kind(), Kind::refused);
    EXPECT_EQ(contentsOf(notes), "my notes");
    std::string const before = contentsOf(path);
    for (std::string const& target :
         {path, folder / "", std::string("/dev/null"), folder / "no/such/folder"}) {
        loader.log = target;
        EXPECT_EQ(errorOf(path).kind(), Kind::refused) << target;
    }
    EXPECT_EQ(contentsOf(path), before);
    std::filesystem::create_symlink("notes.log", folder / "link.log");
    loader.log = folder / "link.log";
    EXPECT_EQ(errorOf(path).kind(), Kind::refused);
    EXPECT_EQ(contentsOf(notes), "my notes");
}

TEST_F(FltLoaderTest, ReplacesAnOlderLog)
{
    std::string const path = save(manyGroups(10));
    loader.log = FltLoader::besideDatabase;
    static_cast<void>(loader.load(path));
    std::size_t const size = contentsOf(path + ".log").size();
    save(oneGroup());
    static_cast<void>(loader.load(path));
    EXPECT_LT(contentsOf(path + ".log").size(), size);
}

TEST_F(FltLoaderTest, SaysThatALogIsNotWholeWhicheverConversionItIsFor)
{
    std::string const path = save(manyGroups(5000));
    loader.log = folder / "full.log";
    FileSizeLimit const disk(100'000);
    for (bool const isExact : {false, true}) {
        loader.exact = isExact;
        FltScene const scene = loader.load(path);
        ASSERT_EQ(scene.messages().size(), 1U) << isExact;
        EXPECT_NE(scene.messages()[0].text.find("the log isn't whole"), std::string::npos);
        EXPECT_EQ(scene.messages()[0].file, folder / "full.log");
    }
}

TEST_F(FltLoaderTest, ReadsNoPictureForTheLogAlone)
{
    std::string const image = folder.write("tree.rgb", SmallPictures::plainSgi(4));
    std::string const path = save(texturedTriangle("tree.rgb"));
    loader.log = folder / "a.log";
    int pictures = 0;
    loader.progress = [&](std::string const& file, std::uint64_t, std::uint64_t) {
        pictures += file == image ? 1 : 0;
        return true;
    };
    static_cast<void>(loader.load(path));
    EXPECT_EQ(pictures, 1);
}

TEST_F(FltLoaderTest, RefusesANameWithABackslashWhichLeadsToAnotherFile)
{
    save(oneGroup(), "sub/a.flt");
    EXPECT_EQ(errorOf(save(oneGroup(), "sub\\a.flt")).kind(), Kind::cannotOpen);
}

TEST_F(FltLoaderTest, FindsTexturesAndNamesThemByTheirPlaces)
{
    std::string const image = folder.write("lib/textures/Tree.RGB", SmallPictures::plainSgi(4));
    std::string const path = save(texturedTriangle("C:\\art\\textures\\tree.rgb"), "db/a.flt");
    loader.texturePath = {folder / "lib"};
    FltScene const scene = loader.load(path);
    ASSERT_EQ(scene.textures().size(), 1U);
    EXPECT_EQ(scene.textures()[0].name, "C:\\art\\textures\\tree.rgb");
    EXPECT_EQ(scene.textures()[0].path, image);
    EXPECT_EQ(scene.textures()[0].database, path);
    EXPECT_TRUE(scene.messages().empty());
    SoTexture2* const texture = textureOf(scene);
    ASSERT_NE(texture, nullptr);
    EXPECT_STREQ(texture->filename.getValue().getString(), image.c_str());
    SbVec2s size;
    int components;
    EXPECT_NE(texture->image.getValue(size, components), nullptr);
    EXPECT_EQ(size, SbVec2s(4, 4));
    EXPECT_TRUE(texture->image.isDefault()) << "the name is written, not the pixels";
}

TEST_F(FltLoaderTest, NamesTexturesFromTheDirectoryThatIsAskedFor)
{
    folder.write("db/tree.rgb", SmallPictures::plainSgi(4));
    std::filesystem::create_directories(folder / "out");
    loader.textureNamesFrom = folder / "out";
    FltScene const scene = loader.load(save(texturedTriangle("tree.rgb"), "db/a.flt"));
    EXPECT_STREQ(textureOf(scene)->filename.getValue().getString(), "../db/tree.rgb");
}

TEST_F(FltLoaderTest, ReportsAMissingTextureOnceWithThePlacesTried)
{
    FltScene const scene = loader.load(save(texturedTriangle("tree.rgb")));
    ASSERT_EQ(scene.messages().size(), 1U);
    EXPECT_NE(
        scene.messages()[0].text.find("Texture tree.rgb isn't shown: it is neither " + (folder / "tree.rgb")),
        std::string::npos)
        << scene.messages()[0].text;
    ASSERT_EQ(scene.textures().size(), 1U);
    EXPECT_EQ(scene.textures()[0].path, "");
    EXPECT_FALSE(scene.textures()[0].tried.empty());
    EXPECT_STREQ(textureOf(scene)->filename.getValue().getString(), "tree.rgb");
}

TEST_F(FltLoaderTest, ReportsAMissingTextureOfSeveralFilesOnceWithItsPlaceBesideThem)
{
    static_cast<void>(save(texturedTriangle("../tex/tree.rgb"), "one/a.flt"));
    static_cast<void>(save(texturedTriangle("../tex/tree.rgb"), "two/b.flt"));
    FltWriter flt;
    flt.push()
        .add("ExternalReference", {{"asciiPath", "one/a.flt"}})
        .add("ExternalReference", {{"asciiPath", "two/b.flt"}})
        .pop();
    FltScene const scene = loader.load(save(flt));
    ASSERT_EQ(scene.messages().size(), 1U) << "it is one texture, wherever it is named";
    FltMessage const& message = scene.messages()[0];
    EXPECT_EQ(message.file, folder / "one/a.flt");
    EXPECT_EQ(message.count, 2);
    EXPECT_NE(message.text.find(" it is neither " + (folder / "one/../tex/tree.rgb") + " nor in "),
              std::string::npos)
        << message.text;
    EXPECT_EQ(scene.textures().size(), 2U);
}

TEST_F(FltLoaderTest, ReportsAnImageThatCannotBeRead)
{
    std::string const image = folder.write("tree.rgb", "no image");
    FltScene const scene = loader.load(save(texturedTriangle("tree.rgb")));
    ASSERT_EQ(scene.messages().size(), 1U);
    EXPECT_NE(scene.messages()[0].text.find(image + " is no picture of a kind that is read. Save it anew"),
              std::string::npos);
}

TEST_F(FltLoaderTest, GivesNoPictureToTheToolkitsLibrary)
{
    ToolkitReads const reads;
    for (MadePicture const& made : MadePictures::all()) {
        folder.write(made.name, made.bytes);
        std::string const path = save(texturedTriangle(made.name));
        for (bool const isExact : {false, true}) {
            loader.exact = isExact;
            FltScene const scene = loader.load(path);
            EXPECT_EQ(reads.number, 0) << made.name;
            SbVec2s size;
            int components = 0;
            EXPECT_NE(textureOf(scene)->image.getValue(size, components), nullptr) << made.name;
        }
    }
    SoNodeRef<SoTexture2> const theirs(new SoTexture2);
    theirs->filename = (folder / "grey8.png").c_str();
    EXPECT_GT(reads.number, 0) << "which is how it would be seen";
}

TEST_F(FltLoaderTest, FindsTexturesOfExternalFilesBesideThem)
{
    folder.write("sub/tree.rgb", SmallPictures::plainSgi(4));
    save(texturedTriangle("tree.rgb"), "sub/part.flt");
    FltScene const scene = loader.load(save(reference("sub/part.flt")));
    ASSERT_EQ(scene.textures().size(), 1U);
    EXPECT_EQ(scene.textures()[0].path, folder / "sub/tree.rgb");
    EXPECT_EQ(scene.textures()[0].database, folder / "sub/part.flt");
}

TEST_F(FltLoaderTest, ListsReferencesAndFollowsThemOrNot)
{
    save(oneGroup(), "part.flt");
    folder.write("text.flt", "nothing of the kind");
    FltWriter flt;
    flt.push();
    for (char const* const name : {"part.flt", "text.flt", "a.flt", "none.flt"})
        flt.add("ExternalReference", {{"asciiPath", name}}).add("Group");
    std::string const path = save(flt.pop());
    {
        FltScene const scene = loader.load(path);
        ASSERT_EQ(scene.references().size(), 4U);
        EXPECT_EQ(scene.references()[0].path, folder / "part.flt");
        EXPECT_TRUE(scene.references()[0].isLoaded);
        EXPECT_FALSE(scene.references()[1].isLoaded) << "not OpenFlight";
        EXPECT_FALSE(scene.references()[2].isLoaded) << "the file itself";
        EXPECT_EQ(scene.references()[3].path, "");
        EXPECT_FALSE(scene.references()[3].isLoaded);
    }
    loader.references = FltLoader::References::skip;
    FltScene const scene = loader.load(path);
    ASSERT_EQ(scene.references().size(), 4U);
    EXPECT_EQ(scene.references()[0].path, folder / "part.flt");
    EXPECT_FALSE(scene.references()[0].isLoaded);
}

TEST_F(FltLoaderTest, ReadsNoFileThatIsLargerThanAllowed)
{
    std::string const part = save(manyGroups(100), "part.flt");
    std::string const path = save(reference("part.flt"));
    loader.largestFile = std::filesystem::file_size(part) - 1;
    FltScene const scene = loader.load(path);
    EXPECT_FALSE(scene.references()[0].isLoaded);
    ASSERT_EQ(scene.messages().size(), 1U);
    EXPECT_EQ(errorOf(part).kind(), Kind::refused);
}

TEST_F(FltLoaderTest, FollowsNoReferenceThatLeadsOutOfTheDirectoryItIsKeptIn)
{
    save(oneGroup(), "outside.flt");
    save(oneGroup(), "inside/part.flt");
    std::filesystem::create_symlink(folder / "outside.flt", folder / "inside/link.flt");
    std::filesystem::create_symlink(folder / "inside/part.flt", folder / "back.flt");
    FltWriter flt;
    flt.push();
    for (std::string const& name :
         {std::string("../outside.flt"), std::string("link.flt"), folder / "outside.flt",
          std::string("part.flt"), std::string("../back.flt")})
        flt.add("ExternalReference", {{"asciiPath", name}}).add("Group");
    std::string const path = save(flt.pop(), "inside/a.flt");
    loader.onlyBelow = folder / "inside";
    for (bool const isExact : {false, true}) {
        loader.exact = isExact;
        OpenWatch watch(folder / "outside.flt");
        FltScene const scene = loader.load(path);
        EXPECT_FALSE(watch.wasOpened()) << isExact;
        ASSERT_EQ(scene.references().size(), 5U);
        for (std::size_t const outside : {0U, 1U, 2U})
            EXPECT_FALSE(scene.references()[outside].isLoaded) << isExact << outside;
        EXPECT_TRUE(scene.references()[3].isLoaded) << isExact;
        EXPECT_TRUE(isExact || scene.references()[4].isLoaded) << "what counts is where a file really is";
        EXPECT_NE(scene.messages().at(0).text.find("it isn't below " + (folder / "inside")),
                  std::string::npos);
    }
}

TEST_F(FltLoaderTest, FollowsNoBackslashOfAReferenceOutOfTheDirectoryItIsKeptIn)
{
    save(oneGroup(), "outside/b.flt");
    save(oneGroup(), "inside/a\\b.flt");
    std::filesystem::create_directory_symlink(folder / "outside", folder / "inside/a");
    FltWriter flt = reference("a\\b.flt");
    std::string const path = save(flt, "inside/top.flt");
    loader.onlyBelow = folder / "inside";
    for (bool const isExact : {false, true}) {
        loader.exact = isExact;
        OpenWatch watch(folder / "outside/b.flt");
        EXPECT_FALSE(loader.load(path).references().at(0).isLoaded) << isExact;
        EXPECT_FALSE(watch.wasOpened()) << isExact;
    }
}

TEST_F(FltLoaderTest, ReadsNoTextureOutsideOfTheDirectoryItIsKeptIn)
{
    std::string const outside = folder.write("tree.rgb", SmallPictures::plainSgi(8));
    std::filesystem::create_directories(folder / "inside");
    std::filesystem::create_symlink(outside, folder / "inside/link.rgb");
    loader.onlyBelow = folder / "inside";
    loader.texturePath = {folder / ""};
    for (bool const isExact : {false, true}) {
        loader.exact = isExact;
        for (std::string const& name :
             {std::string("../tree.rgb"), std::string("link.rgb"), outside, std::string("tree.rgb")}) {
            FltScene const scene = loader.load(save(texturedTriangle(name), "inside/a.flt"));
            ASSERT_EQ(scene.textures().size(), 1U);
            EXPECT_EQ(scene.textures()[0].path, "") << name;
        }
    }
    folder.write("inside/near.rgb", SmallPictures::plainSgi(8));
    EXPECT_NE(loader.load(save(texturedTriangle("near.rgb"), "inside/a.flt")).textures()[0].path, "");
}

TEST_F(FltLoaderTest, SaysOnceWhatTheToolkitCantDoWithATexture)
{
    folder.write("tree.rgb", SmallPictures::plainSgi(8));
    folder.write("tree.rgb.attr", madeAttributes({{36, 4}, {60, 4}}));
    FltScene const scene = loader.load(save(texturedTriangle("tree.rgb")));
    ASSERT_EQ(scene.omissions().size(), 2U);
    EXPECT_EQ(scene.omissions()[0].kind, "mirrored texture");
    EXPECT_EQ(scene.omissions()[0].count, 1U);
    EXPECT_EQ(scene.omissions()[1].kind, "texture whose colours are added");
    EXPECT_EQ(scene.textures()[0].attributes.wrapU, FltTextureAttributes::Wrap::mirror);
    EXPECT_TRUE(scene.messages().empty());
}

TEST_F(FltLoaderTest, FindsAReferenceInAnotherCaseOnlyInTheDirectoryItIsKeptIn)
{
    save(oneGroup(), "inside/Near.flt");
    save(oneGroup(), "outside/Far.flt");
    FltWriter flt;
    flt.push();
    for (char const* const name : {"NEAR.flt", "../outside/FAR.flt"})
        flt.add("ExternalReference", {{"asciiPath", name}});
    std::string const path = save(flt.pop(), "inside/a.flt");
    loader.onlyBelow = folder / "inside";
    FltScene const scene = loader.load(path);
    EXPECT_TRUE(scene.references().at(0).isLoaded);
    EXPECT_EQ(scene.references().at(1).path, "");
    loader.onlyBelow.reset();
    EXPECT_TRUE(loader.load(path).references().at(1).isLoaded);
}

TEST_F(FltLoaderTest, KnowsUnitsRevisionAndOrigin)
{
    FltWriter const flt(1570, {{"id", "db"},
                               {"vertexCoordinateUnits", 4},
                               {"multiplierDiviserUnit", 2},
                               {"originLatitude", 48.5},
                               {"originLongitude", 9.25},
                               {"lastRevisionDateTime", "today"}});
    FltDatabaseInfo const info = loader.load(save(flt)).info();
    EXPECT_EQ(info.name, "db");
    EXPECT_EQ(info.revision, 1570);
    EXPECT_EQ(info.unit, FltDatabaseInfo::Unit::feet);
    EXPECT_EQ(info.unitMultiplier, 2);
    EXPECT_EQ(info.originLatitude, 48.5);
    EXPECT_EQ(info.originLongitude, 9.25);
    EXPECT_EQ(info.lastChange, "today");
    EXPECT_EQ(info.records, 1U);
    EXPECT_EQ(info.bytes, flt.bytes().size());
}

TEST_F(FltLoaderTest, KnowsWhatTheHeaderSaysOfTheEarth)
{
    FltWriter const flt(1580, {{"projectionType", 4},
                               {"utmZone", -19},
                               {"earthEllipsoidModel", -1},
                               {"earthMajorAxis", 6378200},
                               {"earthMinorAxis", 6356800},
                               {"XdeltaToPlaceDatabase", 400000},
                               {"YdeltaToPlaceDatabase", 5000000}});
    FltDatabaseInfo const info = loader.load(save(flt)).info();
    EXPECT_EQ(info.projection, 4);
    EXPECT_EQ(info.utmZone, -19);
    EXPECT_EQ(info.ellipsoid, -1);
    EXPECT_EQ(info.earthMajorAxis, 6378200);
    EXPECT_EQ(info.earthMinorAxis, 6356800);
    EXPECT_EQ(info.delta[0], 400000);
    EXPECT_EQ(info.delta[1], 5000000);
}

TEST_F(FltLoaderTest, CountsWhatTheSceneDoesNotShow)
{
    FltWriter flt;
    flt.push().add("Sound").add("Sound").addRaw(84, std::string(80, '\0')).addRaw(200).pop();
    loader.exact = true;
    std::vector<FltOmission> const omissions = loader.load(save(flt)).omissions();
    ASSERT_EQ(omissions.size(), 3U);
    EXPECT_EQ(omissions[0].kind, "meshes");
    EXPECT_EQ(omissions[1].kind, "records of opcode 200");
    EXPECT_EQ(omissions[2].kind, "sounds");
    EXPECT_EQ(omissions[2].count, 2U);
}

TEST_F(FltLoaderTest, PlacesDamageInTheFile)
{
    FltWriter flt = oneGroup();
    std::size_t const size = flt.bytes().size();
    flt.addBytes("abc");
    std::string const path = save(flt);
    FltScene const scene = loader.load(path);
    ASSERT_EQ(scene.messages().size(), 1U);
    EXPECT_EQ(scene.messages()[0].file, path);
    EXPECT_EQ(scene.messages()[0].offset, static_cast<std::int64_t>(size));
    EXPECT_EQ(scene.messages()[0].text.find("WARNING"), std::string::npos);
}

TEST_F(FltLoaderTest, CountsEqualMessages)
{
    FltWriter flt;
    for (int i = 0; i < 5; ++i)
        flt.pop();
    FltScene const scene = loader.load(save(flt));
    ASSERT_EQ(scene.messages().size(), 1U);
    EXPECT_EQ(scene.messages()[0].count, 5);
}

TEST_F(FltLoaderTest, LeavesASwitchWithANegativeCountOutAndKeepsTheRest)
{
    FltWriter flt;
    flt.push().add("Switch",
                   {{"idASCII", "broken"}, {"numberOfMasks", -1}, {"numberOf32BitWordsPerMask", 1}});
    flt.add("Group", {{"idASCII", "kept"}}).pop();
    std::string const path = save(flt);
    EXPECT_NE(sceneText(loader.load(path).root()).find("DEF kept "), std::string::npos);
    loader.exact = true;
    FltScene const scene = loader.load(path);
    EXPECT_NE(sceneText(scene.root()).find("DEF kept "), std::string::npos);
    ASSERT_EQ(scene.messages().size(), 1U);
    EXPECT_EQ(scene.messages()[0].opcode, 96);
}

TEST_F(FltLoaderTest, TellsItsProgressFileByFile)
{
    std::string const part = save(manyGroups(20'000), "part.flt");
    std::string const path = save(reference("part.flt"));
    std::map<std::string, std::uint64_t> done;
    int calls = 0;
    loader.progress = [&](std::string const& file, std::uint64_t bytesDone, std::uint64_t bytesInAll) {
        ++calls;
        EXPECT_GE(bytesDone, done[file]);
        EXPECT_EQ(bytesInAll, std::filesystem::file_size(file));
        done[file] = bytesDone;
        return true;
    };
    static_cast<void>(loader.load(path));
    EXPECT_EQ(done.size(), 2U);
    EXPECT_EQ(done[path], std::filesystem::file_size(path));
    EXPECT_EQ(done[part], std::filesystem::file_size(part));
    EXPECT_GT(calls, 30);
    EXPECT_LT(calls, 1000);
}

/// The exact conversion reads a file first, and makes nodes of it then.
TEST_F(FltLoaderTest, TellsItsProgressInBothHalvesOfAnExactConversion)
{
    std::string const path = save(manyGroups(20'000));
    std::uint64_t const all = std::filesystem::file_size(path);
    int inFirst = 0;
    int inSecond = 0;
    loader.exact = true;
    loader.progress = [&](std::string const&, std::uint64_t bytesDone, std::uint64_t) {
        inFirst += bytesDone < all / 2 ? 1 : 0;
        inSecond += bytesDone > all / 2 && bytesDone < all ? 1 : 0;
        return true;
    };
    static_cast<void>(loader.load(path));
    EXPECT_GT(inFirst, 10);
    EXPECT_GT(inSecond, 10);
}

TEST_F(FltLoaderTest, CanBeCancelledAnywhereAndLeavesNothing)
{
    folder.write("tree.rgb", SmallPictures::plainSgi(4));
    FltWriter flt = texturedTriangle("tree.rgb");
    flt.push();
    for (int i = 0; i < 2000; ++i)
        flt.add("Group").add("LOD").push().add("Group").pop();
    save(flt.add("ExternalReference", {{"asciiPath", "part.flt"}}).pop());
    save(manyGroups(2000), "part.flt");
    int calls = 0;
    loader.progress = [&](std::string const&, std::uint64_t, std::uint64_t) { return ++calls > 0; };
    static_cast<void>(loader.load(folder / "a.flt"));
    int const all = calls;
    ASSERT_GT(all, 10);
    for (int last = 1; last <= all; ++last) {
        calls = 0;
        loader.progress = [&](std::string const&, std::uint64_t, std::uint64_t) { return ++calls < last; };
        EXPECT_EQ(errorOf(folder / "a.flt").kind(), Kind::cancelled) << last;
        EXPECT_EQ(calls, last);
    }
    loader.progress = nullptr;
    EXPECT_NE(loader.load(folder / "a.flt").root(), nullptr);
}

TEST_F(FltLoaderTest, ALoadThatFailsNamesNothing)
{
    folder.write("tree.rgb", SmallPictures::plainSgi(4));
    int calls = 0;
    int last = 1;
    bool throws = false;
    loader.progress = [&](std::string const&, std::uint64_t, std::uint64_t) {
        if (++calls == last && throws)
            throw 5;
        return calls != last;
    };
    auto const load = [&](std::string const& name) {
        FltWriter flt = texturedTriangle("tree.rgb");
        flt.push();
        for (char const* const record : {"Group", "LOD", "DOF", "Switch"})
            flt.add(record).add("LongID", {{"idASCII", name + record}});
        flt.add("LightSource", {{"flags", {128, 0, 0, 0}}}).add("LongID", {{"idASCII", name + "light"}});
        save(flt.add("ExternalReference", {{"asciiPath", name + ".flt"}}).pop());
        save(FltWriter().push().add("Group").add("LongID", {{"idASCII", name + "part"}}), name + ".flt");
        calls = 0;
        try {
            static_cast<void>(loader.load(folder / "a.flt"));
        } catch (FltLoadError const&) {
            return false;
        } catch (int) {
            return false;
        }
        return true;
    };
    last = 0;
    ASSERT_TRUE(load("whole")); // the toolkit learns the names of fields with their first nodes
    int const all = calls;
    ASSERT_GT(all, 5);
    for (last = 1; last <= all; ++last)
        for (bool const byException : {false, true}) {
            throws = byException;
            std::string const name = "cancelled" + std::to_string(last) + (throws ? "by" : "at");
            EXPECT_EQ(NameTable::growth([&] { EXPECT_FALSE(load(name)); }), 0U) << name;
        }
    EXPECT_GT(NameTable::growth([&] { EXPECT_TRUE(load("last")); }), 30U);
}

TEST_F(FltLoaderTest, LongNamesOfManyLoadsTakeNoMoreThan255BytesEach)
{
    constexpr std::size_t names = 16;
    auto const load = [&](std::string const& name) {
        FltWriter flt;
        flt.push();
        for (std::size_t i = 0; i < names; ++i)
            flt.add("Group").add("LongID",
                                 {{"idASCII", std::to_string(i) + name + std::string(60'000, ' ')}});
        static_cast<void>(loader.load(save(flt)));
    };
    load("first");
    for (int i = 0; i < 100; ++i) {
        EXPECT_LE(NameTable::growth([&] { load(std::to_string(i)); }), names * 256);
        ASSERT_EQ(NameTable::growth([&] { load(std::to_string(i)); }), 0U);
    }
}

TEST_F(FltLoaderTest, TheExactConversionKeepsNamesWholeAsFarAsTheToolkitHoldsThem)
{
    loader.exact = true;
    for (std::size_t const size : {60'000, 65'531}) {
        std::string const name(size, 'n');
        FltWriter flt;
        FltScene const scene =
            loader.load(save(flt.push().add("Group").add("LongID", {{"idASCII", name}}).pop()));
        SoChildList const& children = *scene.root()->getChildren();
        EXPECT_EQ(children[children.getLength() - 1]->getName().getString(), name.substr(0, 65'502));
    }
}

TEST_F(FltLoaderTest, LetsWhatTheCallbackThrowsOutAsItIs)
{
    loader.progress = [](std::string const&, std::uint64_t, std::uint64_t) -> bool { throw 5; };
    EXPECT_THROW(static_cast<void>(loader.load(save(oneGroup()))), int);
    loader.progress = nullptr;
    EXPECT_NE(loader.load(folder / "a.flt").root(), nullptr);
}

TEST_F(FltLoaderTest, MayBeCalledFromACallback)
{
    FltWriter damaged;
    damaged.push().pop().pop().addBytes("x");
    std::string const inner = save(damaged, "inner.flt");
    std::string const outer = save(manyGroups(5000).addBytes("abc"), "outer.flt");
    std::string const plain = sceneText(loader.load(outer).root());
    std::vector<std::size_t> innerMessages;
    loader.progress = [&](std::string const&, std::uint64_t, std::uint64_t) {
        innerMessages.push_back(FltLoader().load(inner).messages().size());
        return true;
    };
    FltScene const scene = loader.load(outer);
    EXPECT_EQ(sceneText(scene.root()), plain);
    ASSERT_EQ(scene.messages().size(), 1U);
    EXPECT_EQ(scene.messages()[0].file, outer);
    EXPECT_GT(innerMessages.size(), 3U);
    for (std::size_t const messages : innerMessages)
        EXPECT_EQ(messages, 2U);
}

TEST_F(FltLoaderTest, LoadsOfSeveralThreadsWaitForEachOther)
{
    std::string const path = save(manyGroups(500));
    std::string const plain = sceneText(loader.load(path).root());
    std::atomic<int> inside = 0;
    std::atomic<bool> overlapped = false;
    std::vector<FltScene> scenes[2];
    auto const work = [&](std::vector<FltScene>& result) {
        FltLoader own;
        own.progress = [&](std::string const&, std::uint64_t bytesDone, std::uint64_t bytesInAll) {
            if (bytesDone == 0 && ++inside > 1)
                overlapped = true;
            if (bytesDone == bytesInAll)
                --inside;
            return true;
        };
        for (int i = 0; i < 20; ++i)
            result.push_back(own.load(path));
    };
    std::thread first(work, std::ref(scenes[0])), second(work, std::ref(scenes[1]));
    first.join();
    second.join();
    EXPECT_FALSE(overlapped);
    for (auto const& some : scenes)
        for (FltScene const& scene : some)
            EXPECT_EQ(sceneText(scene.root()), plain);
}

TEST_F(FltLoaderTest, AThousandLoadsTakeNoMoreMemoryThanAHundred)
{
    folder.write("tree.rgb", SmallPictures::plainSgi(64));
    FltWriter flt = texturedTriangle("tree.rgb");
    flt.addRaw(1, FltWriter().lastRecord().substr(4)); // a second header
    std::string const good = save(flt.addBytes("abc"));
    std::string const bad = folder.write("bad.flt", "nothing of the kind");
    auto const loads = [&](int count) {
        for (int i = 0; i < count; ++i) {
            FltLoader own;
            EXPECT_EQ(own.load(good).root()->getRefCount(), 1);
            EXPECT_THROW(static_cast<void>(own.load(bad)), FltLoadError);
            own.progress = [](std::string const&, std::uint64_t done, std::uint64_t) { return done == 0; };
            EXPECT_THROW(static_cast<void>(own.load(good)), FltLoadError);
        }
    };
    loads(100);
    std::size_t const before = ProcessUsage::memoryInUse();
    std::size_t const files = ProcessUsage::openFiles();
    loads(1000);
    EXPECT_LT(ProcessUsage::memoryInUse(), before + (std::size_t(2) << 20));
    EXPECT_EQ(ProcessUsage::openFiles(), files);
}

TEST_F(FltLoaderTest, LeavesTheToolkitsErrorHandlerAsItWas)
{
    SoErrorCB* const before = SoDebugError::getHandlerCallback();
    static_cast<void>(loader.load(save(texturedTriangle("none.rgb"))));
    static_cast<void>(errorOf(folder / "none.flt"));
    EXPECT_EQ(SoDebugError::getHandlerCallback(), before);
}

TEST_F(FltLoaderTest, KnowsWhatItCanLoad)
{
    EXPECT_TRUE(FltLoader::canLoad(save(oneGroup())));
    EXPECT_TRUE(FltLoader::canLoad(save(FltWriter(2400))));
    EXPECT_TRUE(FltLoader::canLoad(save(FltWriter(1570, {{"multiplierDiviserUnit", 7}}))));
    EXPECT_FALSE(FltLoader::canLoad(save(FltWriter(10))));
    EXPECT_FALSE(FltLoader::canLoad(folder.write("text.flt", std::string(100, 'x'))));
    EXPECT_FALSE(FltLoader::canLoad(folder / "none.flt"));
    EXPECT_FALSE(FltLoader::canLoad("/dev/zero"));
    EXPECT_FALSE(FltLoader::canLoad(""));
}

TEST_F(FltLoaderTest, HasSwitchesShowAnotherMaskByTheirName)
{
    FltWriter flt;
    flt.push().add(
        "Switch",
        {{"idASCII", "lamp"}, {"numberOfMasks", 2}, {"numberOf32BitWordsPerMask", 1}, {"masks", {1, 2}}});
    flt.push().add("Group").add("Group").pop().pop();
    FltScene scene = loader.load(save(flt));
    ASSERT_EQ(scene.switches().size(), 1U);
    EXPECT_EQ(scene.switches()[0].name, "lamp");
    EXPECT_EQ(scene.switches()[0].maskNames.size(), 2U);
    EXPECT_EQ(scene.switches()[0].currentMask, 0);
    EXPECT_TRUE(scene.chooseMask("lamp", 1));
    EXPECT_EQ(scene.switches()[0].currentMask, 1);
    EXPECT_FALSE(scene.chooseMask("lamp", 2));
    EXPECT_FALSE(scene.chooseMask("no such lamp", 0));
}

TEST_F(FltLoaderTest, MovesDegreesOfFreedom)
{
    FltWriter flt;
    flt.push().add("DOF", {{"idASCII", "door"}}).push().add("Group").pop().pop();
    FltScene scene = loader.load(save(flt));
    ASSERT_EQ(scene.degreesOfFreedom().size(), 1U);
    FltDegreeOfFreedom door = scene.degreesOfFreedom()[0];
    EXPECT_EQ(door.name, "door");
    std::string const before = sceneText(scene.root());
    door.translation[0].current = 2.5;
    EXPECT_TRUE(scene.move(0, door));
    EXPECT_EQ(scene.degreesOfFreedom()[0].translation[0].current, 2.5);
    EXPECT_NE(sceneText(scene.root()), before);
    EXPECT_FALSE(scene.move(1, door));
}
