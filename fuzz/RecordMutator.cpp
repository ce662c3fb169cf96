#include "RecordMutator.h"

#include "records/FltOpcode.h"
#include "records/FltUtils.h"
#include "writer/EveryRecord.h"

#include <algorithm>
#include <random>
#include <string>
#include <vector>

/// Changes bytes without regard to what they mean. It belongs to the fuzzer.
extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t room); // NOLINT

namespace
{

/// The records of a database, and after the last that is framed whole what is left.
std::vector<std::string> split(std::string const& bytes)
{
    std::vector<std::string> records;
    std::size_t at = 0;
    while (at + 4 <= bytes.size()) {
        std::size_t const length = FltUtils::word16At(bytes.data() + at + 2);
        if (length < 4 || length > bytes.size() - at)
            break;
        records.push_back(bytes.substr(at, length));
        at += length;
    }
    if (at < bytes.size())
        records.push_back(bytes.substr(at));
    return records;
}

std::vector<std::string> const& catalogue()
{
    static std::vector<std::string> const all = [] {
        std::vector<std::string> records;
        for (int const revision : {11, 1420, 1570, 1580})
            for (std::string const& record : split(everyRecordInBrief(revision).bytes()))
                records.push_back(record);
        return records;
    }();
    return all;
}

void setWord16(std::string& record, std::size_t at, std::size_t value)
{
    record[at] = static_cast<char>(static_cast<unsigned char>(value >> 8 & 0xff));
    record[at + 1] = static_cast<char>(static_cast<unsigned char>(value & 0xff));
}

class Mutation
{
public:
    Mutation(std::vector<std::string>& records, unsigned seed) : records(records), random(seed) {}

    void run()
    {
        using Way = void (Mutation::*)();
        static Way const ways[] = {&Mutation::leaveOut,     &Mutation::repeat,       &Mutation::exchange,
                                   &Mutation::putIn,        &Mutation::putIn,        &Mutation::wrapInLevel,
                                   &Mutation::changeOpcode, &Mutation::changeLength, &Mutation::changeInside,
                                   &Mutation::changeInside, &Mutation::putLimitIn};
        (this->*ways[random() % std::size(ways)])();
    }

private:
    std::size_t any() { return random() % records.size(); }
    auto placeAt(std::size_t index) { return records.begin() + static_cast<std::ptrdiff_t>(index); }

    void leaveOut()
    {
        if (records.size() > 1)
            records.erase(placeAt(any()));
    }

    void repeat()
    {
        std::string const record = records[any()];
        records.insert(placeAt(any()), 1 + random() % 3, record);
    }

    void exchange() { std::swap(records[any()], records[any()]); }

    void putIn() { records.insert(placeAt(any()), catalogue()[random() % catalogue().size()]); }

    void wrapInLevel()
    {
        std::string push(4, '\0');
        setWord16(push, 2, 4);
        std::string pop = push;
        setWord16(push, 0, FltOpcode::pushLevel);
        setWord16(pop, 0, FltOpcode::popLevel);
        std::size_t const at = any();
        records.insert(placeAt(at), push);
        records.insert(placeAt(at + 1 + random() % (records.size() - at)), pop);
    }

    void changeOpcode()
    {
        std::string& record = records[any()];
        if (record.size() >= 4)
            setWord16(record, 0, random() % 151);
    }

    void changeLength()
    {
        std::string& record = records[any()];
        if (record.size() < 4)
            return;
        std::size_t const lengths[] = {
            0, 3, 4, record.size() - 1, record.size() + 1, 0x7fff, 0xffff, random() % 600};
        setWord16(record, 2, lengths[random() % std::size(lengths)]);
    }

    void changeInside()
    {
        std::string& record = records[any()];
        if (record.size() <= 4)
            return;
        std::size_t const body = record.size() - 4;
        std::size_t const room = std::min<std::size_t>(body + random() % 64, 0xffff - 4);
        record.resize(4 + room);
        auto* const bytes = reinterpret_cast<std::uint8_t*>(record.data()) + 4;
        record.resize(4 + LLVMFuzzerMutate(bytes, std::min(body, room), room));
        setWord16(record, 2, record.size());
    }

    void putLimitIn()
    {
        std::string& record = records[any()];
        if (record.size() < 8)
            return;
        static char const* const limits[] = {"\x7f\xff\xff\xff", "\x80\0\0\0", "\xff\xff\xff\xff", "\0\0\0\1",
                                             "\0\0\xff\xff"};
        std::size_t const at = 4 + random() % (record.size() - 7);
        record.replace(at, 4, limits[random() % std::size(limits)], 4);
    }

    std::vector<std::string>& records;
    std::minstd_rand random;
};

} // namespace

std::size_t mutateRecords(std::uint8_t* data, std::size_t size, std::size_t room, unsigned seed)
{
    std::vector<std::string> records = split(std::string(reinterpret_cast<char const*>(data), size));
    if (records.empty())
        records.push_back(catalogue().front());
    Mutation(records, seed).run();
    std::string bytes;
    for (std::string const& record : records)
        bytes += record;
    std::size_t const count = std::min(bytes.size(), room);
    std::copy_n(bytes.begin(), count, data);
    return count;
}
