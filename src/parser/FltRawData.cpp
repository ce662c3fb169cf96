#include "parser/FltRawData.h"

#include "records/FltUtils.h"

#include <algorithm>
#include <cstring>

FltRawData::~FltRawData()
{
    delete[] data;
}

void FltRawData::assign(char const* begin, char const* end, std::size_t recordLength, std::size_t reach)
{
    std::size_t const wanted = std::max(recordLength, reach);
    if (wanted > capacity) {
        delete[] data;
        data = nullptr;
        capacity = 0;
        data = new char[wanted];
        capacity = wanted;
    }
    std::size_t const there = std::min(wanted, static_cast<std::size_t>(end - begin));
    std::memcpy(data, begin, there);
    if (there < wanted)
        std::memset(data + there, 0, wanted - there);
    opcode = FltUtils::word16At(begin);
    length = static_cast<unsigned short>(recordLength);
}
