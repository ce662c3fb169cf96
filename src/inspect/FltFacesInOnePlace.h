#pragma once

#include "inspect/FltCoincidingFaces.h"
#include "visual/FltFaceReader.h"

#include <cstdint>
#include <functional>
#include <vector>

/// Reads faces once more that seem to lie where others do, and compares their corners. Each record is read
/// once, however many of its faces meet others.
class FltFacesInOnePlace : private FltFaceReceiver
{
public:
    /// Gives what is compared of a face. It stays valid until the next call.
    using Compared = std::function<FltCoincidingFaces::Face const&(FltFaceInput const& face)>;

    /// Is told of a face, and at which byte the earlier one begins where it lies.
    using Tell = std::function<void(FltFaceInput const& face, std::uint64_t earlier)>;

    FltFacesInOnePlace(FltFaceReader& reader, FltModelTree const& tree, Compared compared, Tell tell);

    /// Tells of those of the pairs that are in one place, in their order.
    /// @param found what FltCoincidingFaces::takePairs() gives
    void compare(std::vector<FltCoincidingFaces::Pair> found);

private:
    using Place = FltCoincidingFaces::Place;
    using Pair = FltCoincidingFaces::Pair;

    struct Earlier {
        Place place;
        std::uint64_t offset = 0; ///< Of its record.
        FltCoincidingFaces::Face face;
    };

    void add(FltFaceInput const& input) override;
    void compareWithEarlier(FltFaceInput const& input, FltCoincidingFaces::Face const& face);
    Earlier* find(Place const& place);

    FltFaceReader& reader;
    FltModelTree const& tree;
    Compared compared;
    Tell tell;
    std::vector<Pair> pairs;
    std::size_t nextPair = 0;
    std::vector<Earlier> earlier; ///< By ascending place.
    Place place;                  ///< Of the face that is read next.
};
