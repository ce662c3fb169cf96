#pragma once

#include "model/FltModelTree.h"

#include <Inventor/SbVec3d.h>
#include <cstddef>
#include <cstdint>
#include <tuple>
#include <vector>

/// Finds faces that show the same side in the same place. Of each side only a hash is kept, 16 bytes; those
/// whose hashes meet have to be compared.
class FltCoincidingFaces
{
public:
    /// What faces have in common that are drawn over one another.
    struct Layer {
        std::uint32_t scope = 0;
        int level = 0;    ///< How many faces it lies on.
        int priority = 0; ///< Of the face.

        bool operator==(Layer const& other) const
        {
            return scope == other.scope && level == other.level && priority == other.priority;
        }
    };

    /// What is compared of a face.
    struct Face {
        Layer layer;
        std::vector<SbVec3d> corners; ///< Three or more.
        bool isTwoSided = false;
    };

    /// Which face it is, in the order of reading.
    struct Place {
        FltModelTree::Number record = FltModelTree::none; ///< With which it is read.
        std::uint32_t number = 0;                         ///< Among those that are read with the record.

        bool operator==(Place const& other) const { return record == other.record && number == other.number; }
        bool operator<(Place const& other) const
        {
            return std::tie(record, number) < std::tie(other.record, other.number);
        }
    };

    struct Pair {
        Place later;
        Place earlier; ///< The first of all those that the later one meets by one of its sides.
        bool isAtBack; ///< Of the later one.
    };

    /// @param expected how many faces there are likely to be
    explicit FltCoincidingFaces(std::size_t expected) { sides.reserve(expected); }

    /// Adds a face. They come in the order of their places.
    void add(Face const& face, Place const& place);

    /// The pairs of faces whose hashes meet, by the place of the later one, its front first. The hashes are
    /// gone then.
    std::vector<Pair> takePairs();

    /// Whether a side of one face is the same as one of the other.
    static bool areSame(Face const& left, Face const& right);

private:
    struct Side {
        std::uint64_t hash;
        FltModelTree::Number record;
        std::uint32_t number : 31;
        std::uint32_t isBack : 1;

        Place place() const { return {record, number}; }
        bool operator<(Side const& other) const;
    };

    std::vector<Side> sides;
};
