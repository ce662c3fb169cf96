#include "toolkit/ImageSearch.h"

#include "support/ScratchFolder.h"

#include <Inventor/SbImage.h>
#include <Inventor/SoInput.h>
#include <Inventor/lists/SbStringList.h>
#include <algorithm>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace
{

class ImageSearchTest : public testing::Test
{
protected:
    ImageSearchTest()
    {
        for (char const* const name :
             {"plain.rgb", "sub/below.rgb", "texture/inTexture.rgb", "textures/inTextures.rgb",
              "images/inImages.rgb", "pics/inPics.rgb", "pictures/inPictures.rgb", "with:colon.rgb",
              "colon.rgb", "back.rgb", "other/plain.rgb", "other/second.rgb"})
            folder.write(name, "image");
        SoInput::addDirectoryFirst(first.c_str());
        SoInput::addDirectoryLast(second.c_str());
    }
    ~ImageSearchTest() override
    {
        SoInput::removeDirectory(first.c_str());
        SoInput::removeDirectory(second.c_str());
    }

    /// What the toolkit itself finds.
    static std::string findByToolkit(std::string const& name)
    {
        SbStringList const& directories = SoInput::getDirectories();
        std::vector<SbString> texts;
        for (int i = 0; i < directories.getLength(); ++i)
            texts.emplace_back(*directories[i]);
        std::vector<SbString const*> list;
        for (SbString const& text : texts)
            list.push_back(&text);
        return SbImage::searchForFile(name.c_str(), list.data(), static_cast<int>(list.size())).getString();
    }

    ScratchFolder folder;
    std::string const first = folder / "";
    std::string const second = folder / "other";
};

TEST_F(ImageSearchTest, FindsWhatTheToolkitFinds)
{
    for (std::string const name : {"plain.rgb",
                                   "second.rgb",
                                   "below.rgb",
                                   "sub/below.rgb",
                                   "elsewhere/below.rgb",
                                   "/abs/plain.rgb",
                                   "inTexture.rgb",
                                   "inTextures.rgb",
                                   "a/b/inImages.rgb",
                                   "inPics.rgb",
                                   "inPictures.rgb",
                                   "with:colon.rgb",
                                   "C:colon.rgb",
                                   "C:\\a\\back.rgb",
                                   "a\\back.rgb",
                                   "back\\",
                                   "missing.rgb",
                                   "",
                                   "/",
                                   ".",
                                   "sub/"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(ImageSearch::find(name), findByToolkit(name));
    }
    EXPECT_EQ(ImageSearch::find(folder / "sub/below.rgb"), folder / "sub/below.rgb");
}

TEST_F(ImageSearchTest, AsksForEachPlaceInTheToolkitsOrder)
{
    std::vector<std::string> asked;
    EXPECT_EQ(ImageSearch::findIf("a/x.rgb",
                                  [&](std::string const& path) {
                                      asked.push_back(path);
                                      return false;
                                  }),
              "");
    ASSERT_GE(asked.size(), 4U);
    EXPECT_EQ(asked[0], "a/x.rgb");
    EXPECT_EQ(asked[1], first + "a/x.rgb");
    EXPECT_NE(std::find(asked.begin(), asked.end(), second + "/pictures/x.rgb"), asked.end());
}

} // namespace
