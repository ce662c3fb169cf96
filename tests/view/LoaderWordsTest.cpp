#include "view/LoaderWords.h"

#include "loader/FltLoader.h"

#include <QDir>
#include <gtest/gtest.h>

namespace
{

TEST(LoaderWordsTest, AreNoneForALoaderAsItIsAtFirst)
{
    EXPECT_EQ(QStringList(), LoaderWords::of(FltLoader()));
}

TEST(LoaderWordsTest, SayWhatWasChosen)
{
    FltLoader loader;
    loader.texturePath = {"/data/one", "two"};
    loader.time = FltLoader::TimeOfDay::dusk;
    loader.levelsOfDetail = FltLoader::LevelsOfDetail::lowest;
    loader.exact = true;
    loader.names = FltLoader::Names::unique;
    loader.log = FltLoader::besideDatabase;    // isn't written again
    loader.origin = FltLoader::Origin::centre; // no program that draws has a choice
    EXPECT_EQ((QStringList{"--texture-path", "/data/one", "--texture-path", QDir::current().filePath("two"),
                           "--lod", "lowest", "--time", "dusk", "--exact", "--names", "unique"}),
              LoaderWords::of(loader));
}

} // namespace
