#pragma once

#include "inspect/FltCheckFamily.h"
#include "inspect/FltDependencies.h"

/// Other files: 4xx, and levels that go on in them.
class FltCheckFiles : private FltCheckFamily
{
public:
    using FltCheckFamily::FltCheckFamily;

    void check(FltDependencies const& dependencies);
};
