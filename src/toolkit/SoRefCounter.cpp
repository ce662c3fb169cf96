#include "toolkit/SoRefCounter.h"

SoRefCounter::~SoRefCounter() = default;

void SoRefCounter::ref() const
{
    ++references;
}

void SoRefCounter::unref() const
{
    if (--references <= 0)
        delete this;
}

void SoRefCounter::unrefNoDelete() const
{
    --references;
}
