#include "loader/FltLoaderOption.h"

#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <type_traits>

namespace
{

using Kind = FltLoaderOption::Kind;
using Programs = FltLoaderOption::Programs;
using Word = FltLoaderOption::Word;

template <class Enum>
Word word(Enum value, std::string_view name, std::string_view inPrograms)
{
    return {static_cast<int>(value), name, inPrograms};
}

template <class Enum>
Word word(Enum value, std::string_view name)
{
    return word(value, name, name);
}

std::vector<FltLoaderOption> makeTable()
{
    using References = FltLoader::References;
    using LevelsOfDetail = FltLoader::LevelsOfDetail;
    using Units = FltLoader::Units;
    using Origin = FltLoader::Origin;
    using Names = FltLoader::Names;
    using TimeOfDay = FltLoader::TimeOfDay;
    return {
        {"textures",
         "--texture-path",
         Programs::all,
         Kind::directories,
         "DIR",
         &FltLoader::texturePath,
         {},
         "Look for textures in this directory too."},
        {"levels",
         "--lod",
         Programs::all,
         Kind::word,
         "WHICH",
         &FltLoader::levelsOfDetail,
         {word(LevelsOfDetail::all, "all"), word(LevelsOfDetail::highest, "highest"),
          word(LevelsOfDetail::lowest, "lowest")},
         "Levels of detail: all of them, one of which shows at each distance, or the finest or the coarsest "
         "alone."},
        {"time",
         "--time",
         Programs::all,
         Kind::word,
         "WHEN",
         &FltLoader::time,
         {word(TimeOfDay::day, "day"), word(TimeOfDay::dusk, "dusk"), word(TimeOfDay::night, "night")},
         "The time of day: what a database hides at that time isn't shown."},
        {"exact",
         "--exact",
         Programs::all,
         Kind::flag,
         "",
         &FltLoader::exact,
         {},
         "Convert by the rules of the plug-in, rather than show as much as possible."},
        {"merge",
         "--merge",
         Programs::all,
         Kind::flag,
         "",
         &FltLoader::merge,
         {},
         "Join shapes that look alike, so that a scene of many Objects is drawn faster."},
        {"names",
         "--names",
         Programs::all,
         Kind::word,
         "WHICH",
         &FltLoader::names,
         {word(Names::all, "all"), word(Names::unique, "unique"), word(Names::none, "none")},
         "The nodes of a scene that bear their names: all of them, those whose name no other has, or none, "
         "so that a scene of very many nodes is let go fast."},
        {"log",
         "--log",
         Programs::all,
         Kind::log,
         "PATH",
         &FltLoader::log,
         {},
         "Write a listing of every record into PATH, or beside the database."},
        {"references",
         "--xref",
         Programs::converters,
         Kind::word,
         "HOW",
         &FltLoader::references,
         {word(References::follow, "follow", "inline"), word(References::asFile, "file"),
          word(References::skip, "skip")},
         "What becomes of databases that a database refers to: they become part of the result, or files of "
         "their own that the result names, or their places stay empty."},
        {"units",
         "--units",
         Programs::converters,
         Kind::word,
         "UNIT",
         &FltLoader::units,
         {word(Units::metres, "metres"), word(Units::stored, "stored")},
         "The unit of the result: metres, or that of the database."},
        {"origin",
         "--origin",
         Programs::converters,
         Kind::word,
         "WHERE",
         &FltLoader::origin,
         {word(Origin::stored, "stored"), word(Origin::centre, "centre")},
         "The zero of the result: that of the database, or the middle of a database that lies far away from "
         "its zero."},
        {"salvage",
         "",
         Programs::none,
         Kind::flag,
         "",
         &FltLoader::salvage,
         {},
         "Look for records again after damage. The exact conversion never does."},
        {"largest_file",
         "",
         Programs::none,
         Kind::number,
         "BYTES",
         &FltLoader::largestFile,
         {},
         "Refuse a database of more bytes, and leave larger files and pictures out that it refers to."},
        {"only_below",
         "",
         Programs::none,
         Kind::directory,
         "DIR",
         &FltLoader::onlyBelow,
         {},
         "Read nothing outside this directory but the database itself, wherever links lead."},
        {"texture_names_from",
         "",
         Programs::none,
         Kind::directory,
         "DIR",
         &FltLoader::textureNamesFrom,
         {},
         "Name textures from this directory, in which the scene is going to be written."},
    };
}

std::string inWords(std::vector<Word> const& words)
{
    std::string text;
    for (Word const& word : words)
        text += (text.empty() ? "" : ", ") + std::string(word.name);
    return text;
}

[[noreturn]] void refuse(FltLoaderOption const& option, std::string const& value, std::string const& wanted)
{
    throw std::invalid_argument(std::string(option.name) + ": '" + value + "' isn't " + wanted);
}

std::uint64_t numberOf(FltLoaderOption const& option, std::string const& value, std::uint64_t largest)
{
    std::uint64_t number = 0;
    auto const [end, problem] = std::from_chars(value.data(), value.data() + value.size(), number);
    if (problem != std::errc() || end != value.data() + value.size() || number > largest)
        refuse(option, value, "a number from 0 to " + std::to_string(largest));
    return number;
}

int wordOf(FltLoaderOption const& option, std::string const& value)
{
    auto const known = std::find_if(option.words.begin(), option.words.end(), [&](Word const& word) {
        return word.name == value || word.inPrograms == value;
    });
    if (known == option.words.end())
        refuse(option, value, "one of " + inWords(option.words));
    return known->value;
}

} // namespace

std::vector<FltLoaderOption> const& FltLoaderOption::table()
{
    static std::vector<FltLoaderOption> const table = makeTable();
    return table;
}

FltLoaderOption const& FltLoaderOption::named(std::string_view name)
{
    for (FltLoaderOption const& option : table())
        if (option.name == name)
            return option;
    throw std::invalid_argument("there is no option '" + std::string(name) + "'");
}

void FltLoaderOption::set(FltLoader& loader, std::string const& value) const
{
    auto const give = [&](auto place) {
        auto& target = loader.*place;
        using Value = std::remove_reference_t<decltype(target)>;
        if constexpr (std::is_same_v<Value, bool>)
            target = numberOf(*this, value, 1) != 0;
        else if constexpr (std::is_same_v<Value, std::uint64_t>)
            target = numberOf(*this, value, UINT64_MAX);
        else if constexpr (std::is_enum_v<Value>)
            target = static_cast<Value>(wordOf(*this, value));
        else if constexpr (std::is_same_v<Value, std::vector<std::string>>)
            target.push_back(value);
        else
            target = value;
    };
    std::visit(give, member);
}

std::optional<std::uint64_t> FltLoaderOption::defaultNumber() const
{
    static FltLoader const loader;
    auto const take = [&](auto place) -> std::optional<std::uint64_t> {
        using Value = std::remove_cv_t<std::remove_reference_t<decltype(loader.*place)>>;
        if constexpr (std::is_integral_v<Value> || std::is_enum_v<Value>)
            return static_cast<std::uint64_t>(loader.*place);
        else
            return std::nullopt;
    };
    std::optional<std::uint64_t> const number = std::visit(take, member);
    return kind == Kind::number && number == UINT64_MAX ? std::nullopt : number;
}

FltLoaderOption::Word const& FltLoaderOption::defaultWord() const
{
    std::uint64_t const value = defaultNumber().value();
    return *std::find_if(words.begin(), words.end(),
                         [&](Word const& word) { return static_cast<std::uint64_t>(word.value) == value; });
}
