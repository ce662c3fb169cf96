// Sets each field of each record to other values: what changes neither the visual, nor what is left out, nor
// what a check finds has to stand in docs/complete.md, with the reason. So a field that nobody reads is found
// here, and not by somebody who misses it in a picture.

#include "inspect/FltCheck.h"
#include "records/FltRecordJson.h"
#include "support/FieldDatabase.h"
#include "support/RecordText.h"
#include "support/ScratchFolder.h"
#include "support/StreamCapture.h"
#include "support/Text.h"
#include "support/VisualDump.h"
#include "visual/FltVisualConversion.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>

namespace
{

using Field = FieldDatabase::Field;
using Json = nlohmann::ordered_json;

/// What stands in the table of the page.
struct Listed {
    std::size_t line = 0; ///< From 1.
    std::string reason;
};

/// The cells of a line of a table, without the spaces about them; none of a line that is no row.
std::vector<std::string> cellsOf(std::string const& line)
{
    std::vector<std::string> cells;
    if (line.rfind("| ", 0) != 0)
        return cells;
    for (std::size_t from = 2, to = line.find(" |", from); to != std::string::npos;
         to = line.find(" |", from)) {
        cells.push_back(line.substr(from, to - from));
        from = std::min(to + 3, line.size());
    }
    return cells;
}

/// What stands between `marks` in a text.
std::vector<std::string> quotedIn(std::string const& text)
{
    std::vector<std::string> quoted;
    std::istringstream parts(text);
    std::string part;
    for (bool isQuoted = false; std::getline(parts, part, '`'); isQuoted = !isQuoted)
        if (isQuoted)
            quoted.push_back(part);
    return quoted;
}

std::map<std::string, Listed> fieldsOfThePage()
{
    std::map<std::string, Listed> listed;
    std::istringstream page(contentsOf(VELLOREADER_DOCS "complete.md"));
    bool isInTable = false;
    std::string line;
    for (std::size_t number = 1; std::getline(page, line); ++number) {
        if (line.rfind("## ", 0) == 0)
            isInTable = line == "## Fields without an effect";
        std::vector<std::string> const cells = cellsOf(line);
        if (!isInTable || cells.size() != 3)
            continue;
        for (std::string const& field : quotedIn(cells[1]))
            EXPECT_TRUE(listed.emplace(cells[0] + "." + field, Listed{number, cells[2]}).second)
                << "docs/complete.md has it twice: " << line;
    }
    return listed;
}

/// Values of a field in the bytes of a file, read and written.
class Bytes
{
public:
    explicit Bytes(std::string bytes) : bytes(std::move(bytes)) {}

    std::string bytes;

    std::uint64_t word(std::size_t at, std::size_t size) const
    {
        std::uint64_t word = 0;
        for (std::size_t i = 0; i < size; ++i)
            word = word << 8 | static_cast<unsigned char>(bytes[at + i]);
        return word;
    }
    void setWord(std::size_t at, std::size_t size, std::uint64_t word)
    {
        for (std::size_t i = size; i-- > 0; word >>= 8)
            bytes[at + i] = static_cast<char>(word & 0xff);
    }
};

double realOf(std::uint64_t word, FltKind kind)
{
    if (kind == FltKind::f64) {
        double number;
        std::memcpy(&number, &word, sizeof number);
        return number;
    }
    auto const half = static_cast<std::uint32_t>(word);
    float number;
    std::memcpy(&number, &half, sizeof number);
    return static_cast<double>(number);
}

std::uint64_t wordOf(double number, FltKind kind)
{
    std::string const bytes =
        kind == FltKind::f64 ? FltWriter::bigDouble(number) : FltWriter::bigFloat(number);
    return Bytes(bytes).word(0, bytes.size());
}

/// How many other values there are for a value.
constexpr std::size_t choices = 8;

/// One of them.
std::uint64_t otherFor(std::uint64_t word, FltKind kind, std::size_t choice)
{
    if (kind == FltKind::f32 || kind == FltKind::f64)
        return wordOf(choice == 0 ? realOf(word, kind) + 0.5
                                  : std::array{0.0, 0.0, -3.0, 5e3, 1.0, 90.0, 0.25, -0.5}[choice],
                      kind);
    constexpr std::array<int, choices> numbers = {1, 0, 2, 3, 4, 0x7000, -1, 0};
    return choice + 1 < choices ? static_cast<std::uint64_t>(numbers[choice]) : word ^ 0x80;
}

/// The effects of the fields of the database.
class FieldEffects
{
public:
    FieldEffects()
    {
        static_cast<void>(folder.write("child.flt", FieldDatabase::referencedBytes()));
        before = seen(database.bytes());
    }

    FieldDatabase const database;

    /// Where a field, or a named bit of its flags, stands in all records of its kind.
    struct Place {
        Field const* field;
        int bit; ///< none for the whole field
    };
    static constexpr int none = -1;

    /// All fields and named bits, by the names that the page has.
    std::map<std::string, std::vector<Place>> places() const
    {
        std::map<std::string, std::vector<Place>> places;
        for (Field const& field : database.fields()) {
            std::string const name = field.record + "." + std::string(field.layout.name);
            std::map<std::string, int> const bits = bitsOf(field);
            for (auto const& [bit, number] : bits)
                places[name + "." + bit].push_back({&field, number});
            if (bits.empty())
                places[name].push_back({&field, none});
        }
        return places;
    }

    /// Whether another value at one of some places has an effect.
    bool haveEffect(std::vector<Place> const& places)
    {
        return std::any_of(places.begin(), places.end(), [this](Place const& place) {
            for (std::size_t choice = 0; choice < choices; ++choice)
                if (isOtherWith({place}, choice))
                    return true;
            return false;
        });
    }

    /// Whether other values at all of some places at once have one.
    bool haveEffectTogether(std::vector<Place> const& places)
    {
        for (std::size_t choice = 0; choice < choices; ++choice)
            if (isOtherWith(places, choice))
                return true;
        return false;
    }

private:
    /// All that is to be known of a database with these bytes.
    std::string seen(std::string const& bytes) const
    {
        StreamCapture const out(std::cout);
        StreamCapture const err(std::cerr);
        std::string const path = folder.write("model.flt", bytes);
        FltVisualConversion::Result const visual = FltVisualConversion::convert(path, {});
        std::ostringstream text;
        if (visual.root != nullptr)
            text << VisualDump::of(*visual.root, visual.textures);
        for (auto const& [kind, count] : visual.leftOut)
            text << kind << ' ' << count << '\n';
        addFindings(path, text);
        return text.str();
    }

    static void addFindings(std::string const& path, std::ostream& text)
    {
        try {
            FltInventory const inventory(path);
            FltCheck check(inventory);
            check.checkRecords();
            check.checkGeometry();
            check.checkPalettes();
            check.checkFiles(
                FltDependencies(inventory, [](std::string const&, std::string const&) { return ""; }));
            check.checkHierarchy();
            check.checkVisibility();
            for (FltFinding const& finding : check.findings())
                text << finding.kind->number << ' ' << finding.offset << ' ' << finding.text << ' '
                     << finding.count << '\n';
        } catch (std::runtime_error const& problem) {
            text << problem.what() << '\n';
        }
    }

    /// Whether it is seen that some places have the values of a choice.
    bool isOtherWith(std::vector<Place> const& places, std::size_t choice) const
    {
        Bytes changed(database.bytes());
        for (Place const& place : places) {
            Field const& field = *place.field;
            auto const size = static_cast<std::size_t>(sizeOf(field.layout.kind));
            for (std::size_t value = 0; value < field.count; ++value) {
                std::size_t const at = field.offset + value * size;
                std::uint64_t const word = changed.word(at, size);
                if (place.bit != none)
                    changed.setWord(at, size, word ^ std::uint64_t(1) << place.bit);
                else if (value == 0 || value % 3 == choice % 3)
                    changed.setWord(at, size, otherFor(word, field.layout.kind, choice));
            }
        }
        return changed.bytes != database.bytes() && seen(changed.bytes) != before;
    }

    /// The named bits of a word of flags.
    std::map<std::string, int> bitsOf(Field const& field) const
    {
        std::map<std::string, int> bits;
        if (field.layout.kind != FltKind::u32 || field.count != 1)
            return bits;
        std::string const record = database.bytes().substr(field.recordOffset, field.recordSize);
        Json const before = flagsOf(field, record);
        for (int bit = 31; before.is_object() && bit >= 0; --bit) {
            Bytes changed(record);
            std::size_t const at = field.offset - field.recordOffset;
            changed.setWord(at, 4, changed.word(at, 4) ^ std::uint64_t(1) << bit);
            Json const after = flagsOf(field, changed.bytes);
            for (auto const& [name, value] : before.items())
                if (name != "word" && value != after[name])
                    bits[name] = bit;
        }
        return bits;
    }

    /// A field of flags as JSON; null if the record has no class.
    static Json flagsOf(Field const& field, std::string const& record)
    {
        FltWriter writer(1580);
        writer.addRaw(static_cast<int>(Bytes(record).word(0, 2)), record.substr(4));
        Json const fields = Json::parse(FltRecordJson::of(*decodeLast(writer), 0))["fields"];
        std::string const name(field.layout.name);
        return fields.contains(name) ? fields[name] : Json();
    }

    ScratchFolder folder;
    std::string before;
};

/// The name in the table: what stands after the first dot.
std::string inTheTable(std::string const& field)
{
    return field.substr(0, field.find('.')) + ": `" + field.substr(field.find('.') + 1) + "`";
}

} // namespace

TEST(FieldEffects, everyFieldCountsOrIsSaidNotTo)
{
    FieldEffects effects;
    std::vector<FieldEffects::Place> without;
    std::map<std::string, Listed> listed = fieldsOfThePage();
    std::map<std::string, Listed> known;
    for (auto const& [field, places] : effects.places()) {
        auto const found = listed.find(field);
        if (found != listed.end()) {
            without.insert(without.end(), places.begin(), places.end());
            known.insert(listed.extract(found));
        } else {
            EXPECT_TRUE(effects.haveEffect(places))
                << inTheTable(field)
                << " changes nothing. Have it read, or say in the table of docs/complete.md why not.";
        }
    }
    for (auto const& [field, row] : listed)
        ADD_FAILURE() << inTheTable(field) << " is no field. Take it out of line " << row.line
                      << " of docs/complete.md.";
    if (!effects.haveEffectTogether(without))
        return;
    for (auto const& [field, row] : known)
        EXPECT_FALSE(effects.haveEffect(effects.places().at(field)))
            << inTheTable(field) << " has an effect. Take it out of line " << row.line
            << " of docs/complete.md.";
    ADD_FAILURE() << "what docs/complete.md says to be without an effect has one";
}

TEST(FieldEffects, arePassedOverForAReason)
{
    for (auto const& [field, row] : fieldsOfThePage())
        EXPECT_GE(row.reason.size(), 3U) << "line " << row.line << " of docs/complete.md";
}

/// So that no record is forgotten.
TEST(FieldEffects, areTriedOnEveryRecordThatHasFields)
{
    std::set<std::string> const there = FieldDatabase().records();
    for (FltLayout const& layout : fltLayouts())
        EXPECT_TRUE(layout.fields.empty() || there.count(std::string(layout.name)) == 1) << layout.name;
}
