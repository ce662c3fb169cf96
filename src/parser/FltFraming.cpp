#include "parser/FltFraming.h"

#include "records/FltUtils.h"

#include <algorithm>

bool FltFraming::next()
{
    if (fault != Fault::none)
        return false;
    offset += length;
    opcode = 0;
    length = 0;
    std::size_t const rest = size - offset;
    if (rest == 0)
        return false;
    if (rest < 4) {
        fault = Fault::cutHead;
        return false;
    }
    opcode = FltUtils::word16At(data());
    length = FltUtils::word16At(data() + 2);
    if (length == 0)
        fault = Fault::zeroLength;
    else if (length > rest)
        fault = Fault::pastEnd;
    return fault == Fault::none;
}

void FltFraming::goTo(std::size_t newOffset)
{
    offset = std::min(newOffset, size);
    length = 0;
    fault = Fault::none;
}

std::string FltFraming::faultText() const
{
    switch (fault) {
    case Fault::none:
        break;
    case Fault::cutHead:
        return "The file ends inside the first four bytes of a record";
    case Fault::zeroLength:
        return "A record has the length zero";
    case Fault::pastEnd:
        return "A record ends after the file does";
    }
    return "";
}

std::string FltFraming::restFrom(std::size_t offset, std::size_t size)
{
    return "the rest of the file, " + std::to_string(size - offset) + " bytes from byte offset " +
           std::to_string(offset) + " on";
}
