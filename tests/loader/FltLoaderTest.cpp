#include "loader/FltLoader.h"

#include "support/ScratchFolder.h"
#include "support/StreamCapture.h"
#include "writer/FltWriter.h"

#include <Inventor/nodes/SoSeparator.h>
#include <gtest/gtest.h>

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
