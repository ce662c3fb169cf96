#include "robustness/StructuralDamage.h"

#include "robustness/Mutations.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace
{

constexpr std::size_t headSize = 4; // opcode and length

using Records = std::vector<std::string>;
using Damage = void (*)(Records& records, std::size_t at, RandomValues& random);

void leaveOut(Records& records, std::size_t at, RandomValues& /*random*/)
{
    records.erase(records.begin() + static_cast<std::ptrdiff_t>(at));
}

void insert(Records& records, std::size_t at, std::string const& record)
{
    records.insert(records.begin() + static_cast<std::ptrdiff_t>(at), record);
}

void repeat(Records& records, std::size_t at, RandomValues& random)
{
    for (unsigned times = 1 + random.below(4); times > 0; --times)
        insert(records, at, std::string(records[at]));
}

void exchange(Records& records, std::size_t at, RandomValues& random)
{
    std::swap(records[at], records[random.below(static_cast<unsigned>(records.size()))]);
}

void addLevel(Records& records, std::size_t at, RandomValues& random)
{
    static constexpr int levels[] = {10, 11, 19, 20, 21, 22};
    for (unsigned times = 1 + random.below(4); times > 0; --times)
        insert(records, at, FltWriter::big16(random.oneOf(levels)) + FltWriter::big16(4));
}

void changeLength(Records& records, std::size_t at, RandomValues& random)
{
    auto const length = static_cast<long>(records[at].size());
    long const lengths[] = {0, 1, 2, 3, 4, 8, length - 4, length - 1, length + 1, length + 4, 0x7fff, 0xffff};
    records[at].replace(2, 2, FltWriter::big16(random.oneOf(lengths)));
}

/// Cuts or lengthens a record, with a length that says so.
void resize(Records& records, std::size_t at, RandomValues& random)
{
    std::string& record = records[at];
    record.resize(headSize + random.below(static_cast<unsigned>(record.size()) + 16), '\0');
    record.replace(2, 2, FltWriter::big16(static_cast<long>(record.size())));
}

void changeBytes(Records& records, std::size_t at, RandomValues& random)
{
    for (unsigned times = 1 + random.below(6); times > 0; --times)
        records[at][random.below(static_cast<unsigned>(records[at].size()))] =
            static_cast<char>(random.below(256));
}

void changeWord(Records& records, std::size_t at, RandomValues& random)
{
    static constexpr long words[] = {0, 1, 0x7ffffffe, 0x7fffffff, 0x80000000, 0xfffffffe, 0xffffffff};
    std::string const word = FltWriter::big32(random.oneOf(words));
    auto const wordCount = static_cast<unsigned>(records[at].size() / 4);
    if (wordCount > 1)
        records[at].replace(4 + 4 * random.below(wordCount - 1), 4, word);
}

void addJunk(Records& records, std::size_t at, RandomValues& random)
{
    insert(records, at, random.bytes(1 + random.below(40)));
}

constexpr Damage damages[] = {leaveOut, repeat,       exchange,    addLevel,   addLevel,
                              resize,   changeLength, changeBytes, changeWord, addJunk};

} // namespace

std::string StructuralDamage::damaged(std::string const& database, RandomValues& random)
{
    Records records = recordsOf(database);
    for (unsigned times = 1 + random.below(4); times > 0; --times) {
        // The header stays in most of them, so that there is something to load.
        unsigned const first = records.size() > 1 && !random.oneIn(20) ? 1 : 0;
        if (records.size() <= first)
            break;
        std::size_t const at = first + random.below(static_cast<unsigned>(records.size()) - first);
        if (records[at].size() >= headSize) // no junk of before
            random.oneOf(damages)(records, at, random);
    }
    std::string bytes;
    for (std::string const& record : records)
        bytes += record;
    if (random.oneIn(5))
        bytes.resize(random.below(static_cast<unsigned>(bytes.size()) + 1));
    return bytes;
}
