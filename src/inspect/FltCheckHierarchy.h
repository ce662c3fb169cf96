#pragma once

#include "inspect/FltCheckFamily.h"

/// The hierarchy: 5xx.
class FltCheckHierarchy : private FltCheckFamily
{
public:
    using FltCheckFamily::FltCheckFamily;

    void check();

private:
    void checkLevels();
    void checkNames();
    void checkInstances();
    void checkReferencesOfInstances();
};
