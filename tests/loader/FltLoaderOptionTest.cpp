#include "loader/FltLoaderOption.h"

#include <gtest/gtest.h>
#include <set>
#include <stdexcept>

namespace
{

using Kind = FltLoaderOption::Kind;

FltLoader loaderWith(std::string_view name, std::string const& value)
{
    FltLoader loader;
    FltLoaderOption::named(name).set(loader, value);
    return loader;
}

std::string refusalOf(std::string_view name, std::string const& value)
{
    try {
        loaderWith(name, value);
    } catch (std::invalid_argument const& problem) {
        return problem.what();
    }
    return "taken";
}

TEST(FltLoaderOption, setsTheMemberOfItsRow)
{
    EXPECT_TRUE(loaderWith("exact", "1").exact);
    EXPECT_TRUE(loaderWith("merge", "1").merge);
    EXPECT_EQ(loaderWith("names", "unique").names, FltLoader::Names::unique);
    EXPECT_FALSE(loaderWith("salvage", "0").salvage);
    EXPECT_EQ(loaderWith("largest_file", "18446744073709551614").largestFile, UINT64_MAX - 1);
    EXPECT_EQ(loaderWith("only_below", "/data").onlyBelow, "/data");
    EXPECT_EQ(loaderWith("texture_names_from", "out").textureNamesFrom, "out");
    EXPECT_EQ(loaderWith("log", "").log, FltLoader::besideDatabase);
    EXPECT_EQ(loaderWith("levels", "lowest").levelsOfDetail, FltLoader::LevelsOfDetail::lowest);
    EXPECT_EQ(loaderWith("time", "night").time, FltLoader::TimeOfDay::night);
    EXPECT_EQ(loaderWith("units", "stored").units, FltLoader::Units::stored);
    EXPECT_EQ(loaderWith("origin", "centre").origin, FltLoader::Origin::centre);
}

TEST(FltLoaderOption, addsOneOfSeveralDirectories)
{
    FltLoader loader = loaderWith("textures", "a");
    FltLoaderOption::named("textures").set(loader, "b");
    EXPECT_EQ(loader.texturePath, (std::vector<std::string>{"a", "b"}));
}

TEST(FltLoaderOption, takesAWordByTheNameOfEitherSide)
{
    using References = FltLoader::References;
    for (auto const& [word, value] : {std::pair("follow", References::follow),
                                      {"inline", References::follow},
                                      {"file", References::asFile},
                                      {"skip", References::skip}})
        EXPECT_EQ(loaderWith("references", word).references, value) << word;
}

TEST(FltLoaderOption, refusesWhatIsNoValueOfIt)
{
    EXPECT_EQ(refusalOf("levels", "finest"), "levels: 'finest' isn't one of all, highest, lowest");
    EXPECT_EQ(refusalOf("largest_file", "-1"),
              "largest_file: '-1' isn't a number from 0 to 18446744073709551615");
    EXPECT_EQ(refusalOf("largest_file", "18446744073709551616").substr(0, 12), "largest_file");
    EXPECT_EQ(refusalOf("largest_file", ""),
              "largest_file: '' isn't a number from 0 to 18446744073709551615");
    EXPECT_EQ(refusalOf("exact", "2"), "exact: '2' isn't a number from 0 to 1");
    EXPECT_EQ(refusalOf("colour", "red"), "there is no option 'colour'");
}

TEST(FltLoaderOption, tellsTheDefaultsOfALoader)
{
    EXPECT_EQ(FltLoaderOption::named("exact").defaultNumber(), 0U);
    EXPECT_EQ(FltLoaderOption::named("salvage").defaultNumber(), 1U);
    EXPECT_EQ(FltLoaderOption::named("largest_file").defaultNumber(), std::nullopt);
    EXPECT_EQ(FltLoaderOption::named("log").defaultNumber(), std::nullopt);
    EXPECT_EQ(FltLoaderOption::named("references").defaultWord().name, "follow");
    EXPECT_EQ(FltLoaderOption::named("references").defaultWord().inPrograms, "inline");
    EXPECT_EQ(FltLoaderOption::named("levels").defaultWord().name, "all");
    EXPECT_EQ(FltLoaderOption::named("units").defaultWord().name, "metres");
    EXPECT_EQ(FltLoaderOption::named("time").defaultWord().name, "day");
}

TEST(FltLoaderOption, hasAWholeRowForEach)
{
    std::set<std::string_view> names;
    for (FltLoaderOption const& option : FltLoaderOption::table()) {
        EXPECT_TRUE(names.insert(option.name).second) << option.name;
        EXPECT_EQ(option.help.back(), '.') << option.name;
        EXPECT_EQ(option.flag.empty(), option.programs == FltLoaderOption::Programs::none) << option.name;
        EXPECT_EQ(option.placeholder.empty(), option.kind == Kind::flag) << option.name;
        EXPECT_EQ(option.words.empty(), option.kind != Kind::word) << option.name;
    }
    EXPECT_EQ(names.size(), 14U);
}

} // namespace
