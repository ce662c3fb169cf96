#pragma once

#include <Inventor/SoInput.h>
#include <cstdio>

/// An input that has a name alone, and no open file.
class NamedInput final : public SoInput
{
public:
    explicit NamedInput(char const* name) : name(name) {}
    FILE* getCurFile() const override { return nullptr; }
    char const* getCurFileName() const override { return name; }

private:
    char const* name;
};
