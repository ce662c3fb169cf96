#include "view/TextureList.h"

#include "LoadedViewDatabase.h"
#include "support/SmallPictures.h"

#include <QImage>
#include <fstream>

namespace
{

class TextureListTest : public LoadedViewDatabase
{
protected:
    std::string savePicture(std::string const& name) const
    {
        QImage picture(8, 4, QImage::Format_RGB32);
        picture.fill(Qt::red);
        EXPECT_TRUE(picture.save(QString::fromStdString(folder.path(name))));
        return folder.path(name);
    }
};

TEST_F(TextureListTest, ListsAMissingTexture)
{
    ASSERT_EQ(1U, loaded.textures.textures().size());
    EXPECT_EQ("nowhere/poster.png", loaded.textures.textures()[0].name);
    EXPECT_TRUE(loaded.textures.textures()[0].isMissing());
    EXPECT_EQ(1, loaded.textures.missingCount());
}

TEST_F(TextureListTest, TakesTheFileThatIsChosen)
{
    ASSERT_TRUE(loaded.textures.setImage(0, savePicture("other.png")));
    EXPECT_EQ(8, loaded.textures.textures()[0].width);
    EXPECT_EQ(4, loaded.textures.textures()[0].height);
    EXPECT_EQ(0, loaded.textures.missingCount());
}

TEST_F(TextureListTest, LeavesTheTextureAloneIfTheFileIsNoImage)
{
    std::ofstream(folder.path("text.png")) << "no image";
    EXPECT_FALSE(loaded.textures.setImage(0, folder.path("text.png")));
    EXPECT_FALSE(loaded.textures.setImage(0, folder.path("nothing.png")));
    std::string const tga = SmallPictures::compressedTga(20, 5);
    EXPECT_FALSE(loaded.textures.setImage(0, folder.write("cut.tga", tga.substr(0, tga.size() - 1))));
    EXPECT_TRUE(loaded.textures.textures()[0].isMissing());
}

TEST_F(TextureListTest, FindsMissingTexturesInADirectoryWithoutRegardToCase)
{
    savePicture("POSTER.PNG");
    EXPECT_EQ(1, loaded.textures.findIn(folder.path("")));
    EXPECT_EQ(0, loaded.textures.missingCount());
    EXPECT_EQ(0, loaded.textures.findIn(folder.path("")));
}

TEST_F(TextureListTest, FindsNothingInADirectoryThatIsNotThere)
{
    EXPECT_EQ(0, loaded.textures.findIn(folder.path("nowhere")));
}

} // namespace
