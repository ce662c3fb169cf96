#pragma once

#include "inspect/FltCheckFamily.h"

/// Levels of detail, switches, degrees of freedom and matrices: 6xx.
class FltCheckVisibility : private FltCheckFamily
{
public:
    using FltCheckFamily::FltCheckFamily;

    void check();

private:
    void checkRanges();
    void checkSwitches();
    void checkDegreesOfFreedom();
};
