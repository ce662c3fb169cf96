#include "parser/FltRawData.h"

FltRawData::~FltRawData()
{
    freeBlock();
}

void FltRawData::freeBlock()
{
    if (!isElsewhere)
        delete[] data;
    isElsewhere = false;
    data = nullptr;
    capacity = 0;
}

void FltRawData::makeRoom(std::size_t wanted)
{
    freeBlock();
    data = new char[wanted];
    capacity = wanted;
}
