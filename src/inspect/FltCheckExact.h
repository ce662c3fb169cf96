#pragma once

#include "inspect/FltCheckFamily.h"

/// What the exact conversion loses: 8xx.
class FltCheckExact : private FltCheckFamily
{
public:
    using FltCheckFamily::FltCheckFamily;

    void check();

private:
    void checkExactFaces();
    void checkExactSwitches();
    void checkExactInstances();
    void checkExactOpcodes();
};
