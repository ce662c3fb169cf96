#include "parser/FltFraming.h"

#include <algorithm>

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
