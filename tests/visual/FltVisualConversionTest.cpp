#include "visual/FltVisualConversion.h"

#include "support/CompleteDatabase.h"

#include "toolkit/RegularFile.h"

#include <Inventor/SoDB.h>
#include <Inventor/SoInput.h>
#include <Inventor/SoOutput.h>
#include <Inventor/actions/SoSearchAction.h>
#include <Inventor/actions/SoWriteAction.h>
#include <Inventor/nodes/SoFile.h>
#include <gtest/gtest.h>

using Options = FltVisualConversion::Options;
using Outcome = FltVisualConversion::Outcome;
using Fields = FltWriter::Fields;

namespace
{

CompleteDatabase squares(int count, Fields const& header = {})
{
    CompleteDatabase database(1570, header);
    std::vector<std::vector<double>> offsets;
    for (int i = 0; i < count; ++i)
        offsets.push_back(database.square(2 * i));
    database.begin();
    for (std::vector<double> const& each : offsets)
        database.object(each);
    return database;
}

} // namespace

TEST(FltVisualConversion, drawsAFaceAndWritesNothingToStandardOutput)
{
    CompleteDatabase database = squares(1);
    CompleteDatabase::Converted const result = database.convert();
    EXPECT_EQ(result.outcome, Outcome::converted);
    EXPECT_EQ(result.revision, 1570);
    EXPECT_EQ(result.root->getRefCount(), 1);
    DrawnScene const drawn(result.root.get());
    EXPECT_EQ(drawn.triangles.size(), 2U);
    EXPECT_EQ(drawn.extent(), "0 0 0 to 1 1 0");
    EXPECT_EQ(database.output, "");
    EXPECT_EQ(database.messages, "");
    EXPECT_TRUE(result.leftOut.empty());
}

TEST(FltVisualConversion, tellsWhyAFileCantBeConverted)
{
    CompleteDatabase database;
    StreamCapture const err(std::cerr);
    EXPECT_EQ(FltVisualConversion::convert(database.folder / "none.flt", {}).outcome, Outcome::cannotOpen);
    std::string const text = database.folder.write("text.flt", "hello, this is no database");
    EXPECT_EQ(FltVisualConversion::convert(text, {}).outcome, Outcome::notOpenFlight);
    EXPECT_EQ(FltVisualConversion::convert(database.folder.write("empty.flt", ""), {}).outcome,
              Outcome::notOpenFlight);
    CompleteDatabase old(10);
    EXPECT_EQ(old.convert().outcome, Outcome::oldRevision);
    EXPECT_EQ(old.convert().root.get(), nullptr);
}

TEST(FltVisualConversion, canBeCancelledWhileReadingAndWhileBuilding)
{
    CompleteDatabase database = squares(3);
    for (bool const early : {true, false}) {
        Options options;
        options.progress = [&](std::string const&, std::size_t done, std::size_t all) {
            EXPECT_LE(done, all);
            return early ? false : done <= all / 2;
        };
        CompleteDatabase::Converted const result = database.convert(options);
        EXPECT_EQ(result.outcome, Outcome::cancelled) << early;
        EXPECT_EQ(result.root.get(), nullptr);
    }
}

TEST(FltVisualConversion, convertsToMetresUnlessTheStoredUnitIsWanted)
{
    CompleteDatabase database = squares(1, {{"vertexCoordinateUnits", 4}});
    EXPECT_EQ(database.draw().extent(), "0 0 0 to 0.305 0.305 0");
    Options stored;
    stored.units = FltVisualOptions::Units::stored;
    EXPECT_EQ(database.draw(stored).extent(), "0 0 0 to 1 1 0");
    EXPECT_EQ(database.convert().metresPerUnit, 0.3048);
}

TEST(FltVisualConversion, scalesAnExternalFileInFeetOnceInAParentInFeet)
{
    CompleteDatabase child = squares(1, {{"vertexCoordinateUnits", 4}});
    CompleteDatabase parent(1570, {{"vertexCoordinateUnits", 4}});
    parent.folder.write("sub/child.flt", child.writer.bytes());
    parent.begin().add("ExternalReference", {{"asciiPath", "sub\\child.flt"}});
    EXPECT_EQ(parent.draw().extent(), "0 0 0 to 0.305 0.305 0");
}

TEST(FltVisualConversion, bringsExternalFilesToTheUnitOfTheirParent)
{
    CompleteDatabase child = squares(1, {{"vertexCoordinateUnits", 1}});
    CompleteDatabase parent(1570, {{"vertexCoordinateUnits", 8}});
    parent.folder.write("child.flt", child.writer.bytes());
    parent.begin().add("ExternalReference", {{"asciiPath", "child.flt"}});
    EXPECT_EQ(parent.draw().extent(), "0 0 0 to 1000 1000 0");
    Options stored;
    stored.units = FltVisualOptions::Units::stored;
    EXPECT_EQ(parent.draw(stored).extent(), "0 0 0 to 0.54 0.54 0");
}

TEST(FltVisualConversion, convertsAnExternalFileOnceAndSharesIt)
{
    CompleteDatabase child = squares(1);
    CompleteDatabase parent;
    parent.folder.write("child.flt", child.writer.bytes());
    parent.begin().add("ExternalReference", {{"asciiPath", "child.flt"}});
    parent.writer.add("ExternalReference", {{"asciiPath", "./child.flt"}});
    CompleteDatabase::Converted const result = parent.convert();
    auto const contentOf = [&](int which) {
        auto const* group = static_cast<SoGroup*>(result.root->getChild(which));
        return group->getChild(group->getNumChildren() - 1);
    };
    EXPECT_EQ(contentOf(0), contentOf(1));
    ASSERT_EQ(result.references.size(), 2U);
    EXPECT_EQ(result.references[1].name, "./child.flt");
    EXPECT_NE(result.references[1].path, "");
}

TEST(FltVisualConversion, leavesExternalFilesOutThatLeadBackAreMissingOrRefused)
{
    CompleteDatabase database = squares(1);
    database.writer.add("ExternalReference", {{"asciiPath", "model.flt"}});
    database.writer.add("ExternalReference", {{"asciiPath", "missing.flt"}});
    CompleteDatabase::Converted const result = database.convert();
    EXPECT_EQ(result.leftOut.at("external reference that can't be read"), 2);
    EXPECT_NE(database.messages.find("leads back to a file"), std::string::npos);
    EXPECT_EQ(DrawnScene(result.root.get()).triangles.size(), 2U);

    CompleteDatabase parent;
    parent.folder.write("child.flt", squares(1).writer.bytes());
    parent.begin().add("ExternalReference", {{"asciiPath", "child.flt"}});
    Options refused;
    refused.open = [](std::string const&) { return std::nullopt; };
    EXPECT_EQ(parent.draw(refused).triangles.size(), 0U);
    EXPECT_EQ(parent.draw().triangles.size(), 2U);
}

TEST(FltVisualConversion, findsExternalFilesWhateverTheCaseOfTheirLetters)
{
    CompleteDatabase parent;
    std::string const child = parent.folder.write("Sub/Child.flt", squares(1).writer.bytes());
    parent.begin().add("ExternalReference", {{"asciiPath", "SUB\\child.FLT"}});
    EXPECT_EQ(parent.draw().triangles.size(), 2U);
    EXPECT_EQ(parent.see().references.at(0).path, child);
    Options named;
    named.references = FltVisualOptions::References::asFile;
    EXPECT_TRUE(parent.convert(named).leftOut.empty());
}

namespace
{

/// A house that is moved by 10, with a door at its left that is moved by 2, and a tree. The door stands in a
/// switch that shows nothing.
std::string village()
{
    CompleteDatabase database;
    std::vector<double> const square = database.square();
    auto const moveBy = [&](double x) { database.writer.add("Translate", {{"deltaX", x}}); };
    database.begin().add("Group", {{"idASCII", "house"}});
    moveBy(10);
    database.writer.push();
    database.object(square, CompleteDatabase::face(), "wall");
    database.writer.add("Switch", {{"numberOfMasks", 1}, {"numberOf32BitWordsPerMask", 1}, {"masks", {0}}})
        .push()
        .add("Group", {{"idASCII", "cut"}})
        .add("LongID", {{"idASCII", "door of the house"}});
    moveBy(2);
    database.writer.push();
    database.object(square, CompleteDatabase::face(), "leaf")
        .object(square, CompleteDatabase::face(), "leaf");
    database.writer.pop().pop().pop();
    database.object(square, CompleteDatabase::face(), "tree");
    return database.writer.bytes();
}

/// A database that refers to nodes of the village.
CompleteDatabase referringTo(std::vector<std::string> const& nodes)
{
    CompleteDatabase parent;
    parent.folder.write("village.flt", village());
    parent.begin();
    for (std::string const& node : nodes)
        parent.writer.add("ExternalReference", {{"asciiPath", "village.flt<" + node + ">"}});
    return parent;
}

} // namespace

TEST(FltVisualConversion, showsTheNodeThatAReferenceNames)
{
    EXPECT_EQ(referringTo({"house"}).draw().extent(), "10 0 0 to 11 1 0") << "with its own transformation";
    EXPECT_EQ(referringTo({"door of the house"}).draw().extent(), "2 0 0 to 3 1 0")
        << "without those above it, nor the switch that hides it";
    EXPECT_EQ(referringTo({"leaf"}).draw().triangles.size(), 2U) << "the first of that name";
    EXPECT_EQ(referringTo({"leaf"}).draw().extent(), "0 0 0 to 1 1 0");
    EXPECT_EQ(referringTo({""}).draw().triangles.size(), 4U) << "the whole file";
    EXPECT_EQ(referringTo({"wall", "tree", "house", "wall"}).draw().triangles.size(), 8U);
}

TEST(FltVisualConversion, showsNothingForANodeThatIsntThere)
{
    CompleteDatabase database = referringTo({"nobody", "tree"});
    CompleteDatabase::Converted const result = database.convert();
    EXPECT_EQ(DrawnScene(result.root.get()).triangles.size(), 2U);
    EXPECT_EQ(result.leftOut.at("external reference to a node that isn't there"), 1);
    EXPECT_NE(database.messages.find("names a node that isn't there: nobody in "), std::string::npos);
    EXPECT_FALSE(result.references.at(0).isLoaded);
    EXPECT_TRUE(result.references.at(1).isLoaded);
}

TEST(FltVisualConversion, showsANodeInPlaceWhereWholeFilesAreOnlyNamed)
{
    Options named;
    named.references = FltVisualOptions::References::asFile;
    EXPECT_EQ(referringTo({"house"}).draw(named).triangles.size(), 2U);
}

TEST(FltVisualConversion, readsAFileOnceForAllOfItsNodes)
{
    CompleteDatabase database = referringTo(std::vector<std::string>(50, "tree"));
    for (char const* const node : {"wall", "house", "leaf"})
        database.writer.add("ExternalReference", {{"asciiPath", std::string("village.flt<") + node + ">"}});
    int opened = 0;
    Options options;
    options.open = [&](std::string const& file) {
        ++opened;
        return RegularFile::open(file.c_str());
    };
    EXPECT_EQ(database.draw(options).triangles.size(), 2U * 53);
    EXPECT_EQ(opened, 1);
}

/// Each of nested groups by its name would be the square of their number in nodes.
TEST(FltVisualConversion, showsNoMorePartsOfAFileThanItsSizeExplains)
{
    constexpr int levels = 400;
    CompleteDatabase child;
    std::vector<double> const square = child.square();
    child.begin();
    for (int i = 0; i < levels; ++i)
        child.writer.addRaw(199, std::string(1500, 'x'))
            .add("Group", {{"idASCII", "g" + std::to_string(i)}})
            .push();
    child.object(square);
    CompleteDatabase parent;
    parent.folder.write("child.flt", child.writer.bytes());
    parent.begin();
    for (int i = 0; i < levels; ++i)
        parent.writer.add("ExternalReference", {{"asciiPath", "child.flt<g" + std::to_string(i) + ">"}});
    FltVisualConversion::Result const result = parent.see();
    EXPECT_GT(result.leftOut.at("external reference that can't be read"), levels / 2);
    EXPECT_NE(parent.messages.find("Too many parts of external files"), std::string::npos);
}

TEST(FltVisualConversion, skipsExternalFilesOrNamesThemIfThatIsWanted)
{
    CompleteDatabase parent;
    parent.folder.write("child.flt", squares(1).writer.bytes());
    parent.begin().add("ExternalReference", {{"asciiPath", "child.flt"}});
    Options skipped;
    skipped.references = FltVisualOptions::References::skip;
    CompleteDatabase::Converted const without = parent.convert(skipped);
    EXPECT_EQ(DrawnScene(without.root.get()).triangles.size(), 0U);
    EXPECT_EQ(without.leftOut.at("external reference"), 1);

    Options named;
    named.references = FltVisualOptions::References::asFile;
    CompleteDatabase::Converted const result = parent.convert(named);
    SoSearchAction search;
    search.setType(SoFile::getClassTypeId());
    search.apply(result.root.get());
    ASSERT_NE(search.getPath(), nullptr);
    auto const* file = static_cast<SoFile*>(search.getPath()->getTail());
    EXPECT_NE(std::string(file->name.getValue().getString()).find("/child.flt"), std::string::npos);
}

TEST(FltVisualConversion, takesOverThePalettesThatAReferenceNames)
{
    CompleteDatabase child;
    std::vector<double> const offsets = child.square();
    child.writer.add("Material", {{"index", 0}, {"diffuse", {0, 1, 0}}, {"alpha", 1}});
    child.begin();
    child.object(offsets, CompleteDatabase::face({{"materialIndex", 0}}));
    CompleteDatabase parent;
    parent.folder.write("child.flt", child.writer.bytes());
    parent.writer.add("Material", {{"index", 0}, {"diffuse", {1, 0, 0}}, {"alpha", 1}});
    parent.begin().add("ExternalReference", {{"asciiPath", "child.flt"}});
    parent.writer.add("ExternalReference", {{"asciiPath", "child.flt"}, {"Flags", 0x40000000}});
    DrawnScene const drawn = parent.draw();
    ASSERT_EQ(drawn.triangles.size(), 4U);
    EXPECT_EQ(drawn.triangles[0].color(), "0 255 0 255");
    EXPECT_EQ(drawn.triangles[2].color(), "255 0 0 255");
}

TEST(FltVisualConversion, listsTheTexturesThatAreUsed)
{
    CompleteDatabase database;
    std::vector<double> const offsets = database.square();
    database.writer.add("TexturePattern", {{"fileName", "used.rgb"}, {"patternIndex", 3}});
    database.writer.add("TexturePattern", {{"fileName", "unused.rgb"}, {"patternIndex", 4}});
    database.begin();
    database.object(offsets, CompleteDatabase::face({{"texturePatternIndex", 3}}));
    FltVisualConversion::Result const result = database.see();
    ASSERT_EQ(result.textures.size(), 1U);
    EXPECT_EQ(result.textures[0].name, "used.rgb");
    EXPECT_NE(result.textures[0].database.find("model.flt"), std::string::npos);
}

TEST(FltVisualConversion, makesScenesThatSurviveCopyingWritingAndReading)
{
    CompleteDatabase database = squares(3);
    database.writer.add("LOD", {{"switchInDistance", 50}, {"idASCII", "l"}}).push().pop();
    CompleteDatabase::Converted const result = database.convert();
    SoNodeRef<SoNode> const copy(result.root->copy());
    EXPECT_EQ(DrawnScene(copy.get()).extent(), DrawnScene(result.root.get()).extent());

    std::string const path = database.folder / "scene.iv";
    SoOutput output;
    ASSERT_TRUE(output.openFile(path.c_str()));
    SoWriteAction(&output).apply(result.root.get());
    output.closeFile();
    SoInput input;
    ASSERT_TRUE(input.openFile(path.c_str()));
    SoNodeRef<SoSeparator> const again(SoDB::readAll(&input));
    ASSERT_NE(again.get(), nullptr);
    EXPECT_EQ(DrawnScene(again.get()).triangles.size(), 6U);
    EXPECT_EQ(DrawnScene(again.get()).extent(), DrawnScene(result.root.get()).extent());
}

TEST(FltVisualConversion, goesOnAfterDamageUnlessThatIsNotWanted)
{
    CompleteDatabase database;
    std::vector<double> const first = database.square();
    std::vector<double> const second = database.square(2);
    database.begin();
    database.object(first);
    database.writer.addBytes(std::string("\xde\xad\xbe\xef", 4) + "lost");
    database.object(second);
    EXPECT_EQ(database.draw().triangles.size(), 4U);
    EXPECT_NE(database.messages.find("reading goes on at byte offset"), std::string::npos);
    Options options;
    options.salvage = false;
    EXPECT_EQ(database.draw(options).triangles.size(), 2U);
    EXPECT_NE(database.messages.find("is left out"), std::string::npos);
}

TEST(FltVisualConversion, listsWhatIsLeftOut)
{
    CompleteDatabase database = squares(1);
    database.writer.add("Sound", {{"idASCII", "s"}});
    database.writer.addRaw(199, "what is this");
    CompleteDatabase::Converted const result = database.convert();
    EXPECT_EQ(result.leftOut.at("sound"), 1);
    EXPECT_EQ(result.leftOut.at("record 199"), 1);
}
