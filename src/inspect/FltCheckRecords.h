#pragma once

#include "inspect/FltCheckFamily.h"
#include "inspect/FltTextTransfer.h"

/// Records and their framing: 1xx.
class FltCheckRecords : private FltCheckFamily
{
public:
    using FltCheckFamily::FltCheckFamily;

    void check();

private:
    void checkTextTransfer();
    void checkHeader();

    FltTextTransfer const transfer{inventory};
};
