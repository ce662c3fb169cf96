#pragma once

#include "inspect/FltCheckFamily.h"
#include "inspect/FltDependencies.h"
#include "model/FltNodeNumbers.h"

#include <map>
#include <string>

/// Other files: 4xx, and levels that go on in them.
class FltCheckFiles : private FltCheckFamily
{
public:
    using FltCheckFamily::FltCheckFamily;

    void check(FltDependencies const& dependencies);

private:
    void checkReference(FltDependencies::Reference const& reference);
    bool holds(std::string const& path, std::string const& node);

    std::map<std::string, FltNodeNumbers> nodes; ///< Of referenced files, by path.
};
