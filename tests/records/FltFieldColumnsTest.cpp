#include "records/FltFieldColumns.h"

#include "support/RecordText.h"
#include "writer/FltWriter.h"

#include "records/FltFieldLister.h"
#include "records/FltRecordFields.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>

namespace
{

using Columns = std::vector<FltColumn>;
using Length = FltFieldColumns::Length;
using Type = FltColumn::Type;

/// The columns of records whose fields functions give.
template <class... Gives>
Columns columnsOf(Gives const&... gives)
{
    FltFieldColumns columns(sizeof...(gives));
    std::uint64_t offset = 100;
    auto const add = [&](auto const& give) {
        columns.beginRecord(offset++);
        FltFieldLister fields(columns);
        give(fields);
        columns.endRecord();
    };
    (add(gives), ...);
    return columns.take();
}

FltColumn const& named(Columns const& columns, std::string const& name)
{
    static FltColumn const none;
    auto const found = std::find_if(columns.begin(), columns.end(),
                                    [&](FltColumn const& column) { return column.name == name; });
    EXPECT_NE(found, columns.end()) << name;
    return found != columns.end() ? *found : none;
}

std::vector<std::string> namesOf(Columns const& columns)
{
    std::vector<std::string> names;
    for (FltColumn const& column : columns)
        names.push_back(column.name);
    return names;
}

template <class Value>
std::vector<Value> valuesIn(FltColumnBytes const& bytes)
{
    std::vector<Value> values(bytes.size() / sizeof(Value));
    if (!values.empty())
        std::memcpy(values.data(), bytes.data(), bytes.size());
    return values;
}

std::vector<std::int64_t> integersOf(Columns const& columns, std::string const& name)
{
    EXPECT_EQ(named(columns, name).type, Type::integer);
    return valuesIn<std::int64_t>(named(columns, name).values);
}

std::vector<std::uint64_t> countsOf(Columns const& columns, std::string const& name)
{
    EXPECT_TRUE(named(columns, name).isCounted);
    return valuesIn<std::uint64_t>(named(columns, name).counts);
}

using Integers = std::vector<std::int64_t>;
using Counts = std::vector<std::uint64_t>;
using Absences = std::vector<std::uint8_t>;
using Shape = std::vector<std::size_t>;

} // namespace

TEST(FltFieldColumns, haveARowForEachRecord)
{
    auto const record = [](std::uint16_t number, double real) {
        return [=](auto& visit) {
            visit("number", number);
            visit("real", real);
        };
    };
    Columns const columns = columnsOf(record(65535, 0.1), record(2, -1));
    EXPECT_EQ(namesOf(columns), (std::vector<std::string>{"offset", "number", "real"}));
    EXPECT_EQ(integersOf(columns, "offset"), (Integers{100, 101}));
    EXPECT_EQ(integersOf(columns, "number"), (Integers{65535, 2}));
    EXPECT_EQ(named(columns, "real").type, Type::real);
    EXPECT_EQ(valuesIn<double>(named(columns, "real").values), (std::vector<double>{0.1, -1}));
    EXPECT_TRUE(named(columns, "number").absences.empty());
}

TEST(FltFieldColumns, markWhatARecordLacksWhereverItComes)
{
    auto const record = [](bool hasFirst, bool hasLast) {
        return [=](auto& visit) {
            if (hasFirst)
                visit("first", 7);
            visit("always", 1);
            if (hasLast)
                visit("last", 9);
        };
    };
    Columns const columns =
        columnsOf(record(false, true), record(true, true), record(true, false), record(false, true));
    EXPECT_EQ(namesOf(columns), (std::vector<std::string>{"offset", "always", "last", "first"}));
    EXPECT_EQ(integersOf(columns, "first"), (Integers{0, 7, 7, 0}));
    EXPECT_EQ(named(columns, "first").absences, (Absences{1, 0, 0, 1}));
    EXPECT_EQ(integersOf(columns, "last"), (Integers{9, 9, 0, 9}));
    EXPECT_EQ(named(columns, "last").absences, (Absences{0, 0, 1, 0}));
    EXPECT_EQ(integersOf(columns, "always"), (Integers{1, 1, 1, 1}));
}

TEST(FltFieldColumns, takeArraysAsRowsOfOneOrTwoDimensions)
{
    auto const record = [](auto& visit) {
        std::uint8_t const colour[4] = {1, 2, 3, 255};
        float const matrix[2][3] = {{1, 2, 3}, {4, 5, 6}};
        visit("colour", colour);
        visit("matrix", matrix);
    };
    Columns const columns = columnsOf(record, record);
    EXPECT_EQ(named(columns, "colour").shape, Shape{4});
    EXPECT_EQ(integersOf(columns, "colour"), (Integers{1, 2, 3, 255, 1, 2, 3, 255}));
    EXPECT_EQ(named(columns, "matrix").shape, (Shape{2, 3}));
    EXPECT_EQ(named(columns, "matrix").type, Type::single);
    EXPECT_EQ(valuesIn<float>(named(columns, "matrix").values),
              (std::vector<float>{1, 2, 3, 4, 5, 6, 1, 2, 3, 4, 5, 6}));
}

TEST(FltFieldColumns, countListsAndLeaveOutThoseThatNoRecordHasAValueOf)
{
    auto const record = [](int count) {
        return [=](auto& visit) {
            std::int32_t const values[] = {5, -6, 7};
            visit.values("list", values, count);
            visit.values("empty", values, 0);
        };
    };
    Columns const columns = columnsOf(record(0), record(2), record(0), record(3));
    EXPECT_EQ(namesOf(columns), (std::vector<std::string>{"offset", "list"}));
    EXPECT_EQ(countsOf(columns, "list"), (Counts{0, 2, 0, 3}));
    EXPECT_EQ(integersOf(columns, "list"), (Integers{5, -6, 5, -6, 7}));
    EXPECT_TRUE(named(columns, "list").absences.empty());
    EXPECT_TRUE(named(columns, "list").shape.empty());
}

TEST(FltFieldColumns, keepTextsOneBehindTheOther)
{
    auto const record = [](std::string const& text) {
        return [=](auto& visit) { visit.text("text", text); };
    };
    Columns const columns = columnsOf(record("ab"), record(""), record("caf\xe9"));
    FltColumn const& texts = named(columns, "text");
    EXPECT_EQ(texts.type, Type::text);
    EXPECT_EQ(std::string(texts.values.data(), texts.values.size()), "abcaf\xc3\xa9");
    EXPECT_EQ(countsOf(columns, "text"), (Counts{2, 0, 5}));
}

TEST(FltFieldColumns, nameFieldsOfABlockAndBitsOfFlagsAfterIt)
{
    auto const record = [](auto& visit) {
        visit.open("put");
        visit("type", 1);
        visit.close();
        visit.open("radial");
        visit("type", 5);
        visit.close();
        visit("flags", 3);
        visit("after", 4);
        visit.flag("hidden", 3, 0, "");
        visit.flag("terrain", 3, 7, "");
    };
    Columns const columns = columnsOf(record, record);
    EXPECT_EQ(namesOf(columns), (std::vector<std::string>{"offset", "put.type", "radial.type", "flags",
                                                          "after", "flags.hidden", "flags.terrain"}));
    EXPECT_EQ(integersOf(columns, "put.type"), (Integers{1, 1}));
    EXPECT_EQ(integersOf(columns, "radial.type"), (Integers{5, 5}));
    EXPECT_EQ(named(columns, "flags.hidden").type, Type::flag);
    EXPECT_EQ(valuesIn<char>(named(columns, "flags.hidden").values), (std::vector<char>{1, 1}));
    EXPECT_EQ(valuesIn<char>(named(columns, "flags.terrain").values), (std::vector<char>{0, 0}));
}

TEST(FltFieldColumns, leaveOutBytesAndBlocksOfWhichThereAreSeveral)
{
    auto const record = [](auto& visit) {
        char const reserved[4] = {};
        visit("reserved", reserved);
        for (int i = 0; i < 2; ++i) {
            visit.openElement("entries");
            visit("flags", i);
            visit.flag("used", 1, 0, "");
            visit.open("inner");
            visit("value", i);
            visit.close();
            visit.close();
        }
        visit("after", 8);
    };
    Columns const columns = columnsOf(record, record);
    EXPECT_EQ(namesOf(columns), (std::vector<std::string>{"offset", "after"}));
    EXPECT_EQ(integersOf(columns, "after"), (Integers{8, 8}));
}

TEST(FltFieldColumns, takeNoValueOfAnotherFormIntoAColumn)
{
    auto const whole = [](auto& visit) { visit("value", 3); };
    auto const real = [](auto& visit) { visit("value", 2.5F); };
    auto const block = [](auto& visit) {
        visit.open("value");
        visit("x", 1);
        visit.close();
        visit("after", 1);
    };
    Columns const columns = columnsOf(whole, real, block, whole);
    EXPECT_EQ(integersOf(columns, "value"), (Integers{3, 0, 0, 3}));
    EXPECT_EQ(named(columns, "value").absences, (Absences{0, 1, 1, 0}));
    EXPECT_EQ(namesOf(columns), (std::vector<std::string>{"offset", "value", "after"}));
}

TEST(FltFieldColumns, refuseMoreRecordsThanTheyHaveRoomFor)
{
    FltFieldColumns columns(0);
    EXPECT_THROW(columns.beginRecord(0), std::length_error);
}

TEST(FltFieldColumns, areThoseOfARecordsClass)
{
    FltWriter flt;
    flt.add("Face", {{"idField", "f1"}, {"colorNameIndex", 12}, {"flags", 0x04000000}});
    FltFieldColumns columns(1);
    columns.beginRecord(flt.lastOffset());
    FltRecordFields::give(*decodeLast(flt), columns);
    columns.endRecord();
    Columns const taken = columns.take();
    EXPECT_EQ(integersOf(taken, "colorNameIndex"), Integers{12});
    EXPECT_EQ(valuesIn<char>(named(taken, "flags.hidden").values), std::vector<char>{1});
    EXPECT_EQ(named(taken, "packedColor").shape, Shape{4});
}
