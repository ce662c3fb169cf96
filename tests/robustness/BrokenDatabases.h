#pragma once

#include "robustness/Mutations.h"
#include "writer/EveryRecord.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

/// Revisions at which the format changes.
inline constexpr int changingRevisions[] = {11, 13, 14, 1420, 1421, 1500, 1510, 1540, 1550, 1570, 1580};

/// Broken databases in any number, the same in each run.
///
/// The seeds are small databases of each kind of record and of each feature of the conversion, at each
/// revision at which the format changes. Their small changes are taken evenly; what is wanted beyond all of
/// them has several changes at a time, chosen at random.
class BrokenDatabases
{
public:
    explicit BrokenDatabases(std::size_t wanted);
    ~BrokenDatabases();

    std::size_t size() const { return wanted; }
    std::string operator[](std::size_t index) const;

    std::size_t countSeeds() const { return seeds.size(); }
    std::size_t countSmallChanges() const { return smallChanges; }

private:
    struct Seed;

    std::string withSmallChange(std::size_t index) const;
    std::string withSeveralChanges(std::size_t number) const;

    std::size_t wanted;
    std::vector<std::unique_ptr<Seed>> seeds;
    std::size_t smallChanges = 0;
};
