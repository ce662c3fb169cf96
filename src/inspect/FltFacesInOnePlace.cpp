#include "inspect/FltFacesInOnePlace.h"

#include <algorithm>
#include <utility>

FltFacesInOnePlace::FltFacesInOnePlace(FltFaceReader& reader, FltModelTree const& tree, Compared compared,
                                       Tell tell)
    : reader(reader), tree(tree), compared(std::move(compared)), tell(std::move(tell))
{
}

void FltFacesInOnePlace::compare(std::vector<Pair> found)
{
    pairs = std::move(found);
    nextPair = 0;
    std::vector<Place> places;
    std::vector<FltModelTree::Number> records;
    for (Pair const& pair : pairs) {
        places.push_back(pair.earlier);
        records.push_back(pair.earlier.record);
        records.push_back(pair.later.record);
    }
    std::sort(places.begin(), places.end());
    places.erase(std::unique(places.begin(), places.end()), places.end());
    std::sort(records.begin(), records.end());
    records.erase(std::unique(records.begin(), records.end()), records.end());
    earlier.clear();
    for (Place const& each : places)
        earlier.push_back({each, 0, {}});
    for (FltModelTree::Number const record : records) {
        place = {record, 0};
        reader.read(record, *this, {});
        reader.forgetVertices();
    }
}

FltFacesInOnePlace::Earlier* FltFacesInOnePlace::find(Place const& wanted)
{
    auto const found =
        std::lower_bound(earlier.begin(), earlier.end(), wanted,
                         [](Earlier const& each, Place const& other) { return each.place < other; });
    return found != earlier.end() && found->place == wanted ? &*found : nullptr;
}

void FltFacesInOnePlace::add(FltFaceInput const& input)
{
    Earlier* const asEarlier = find(place);
    bool const isLater = nextPair < pairs.size() && pairs[nextPair].later == place;
    if (asEarlier != nullptr || isLater) {
        FltCoincidingFaces::Face const& face = compared(input);
        if (asEarlier != nullptr) {
            asEarlier->offset = tree.recordOf(input.number).offset;
            asEarlier->face = face;
        }
        compareWithEarlier(input, face);
    }
    ++place.number;
}

void FltFacesInOnePlace::compareWithEarlier(FltFaceInput const& input, FltCoincidingFaces::Face const& face)
{
    bool isTold = false;
    for (; nextPair < pairs.size() && pairs[nextPair].later == place; ++nextPair) {
        Earlier const* const other = find(pairs[nextPair].earlier);
        if (isTold || other == nullptr || !FltCoincidingFaces::areSame(other->face, face))
            continue;
        isTold = true;
        tell(input, other->offset);
    }
}
