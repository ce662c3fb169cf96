#pragma once

#include "model/FltRecordView.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// Records of one file, of which there are millions: each is kept as its place among the file's bytes.
class FltRecordPlaces
{
public:
    /// Adds a record. Its bytes have to outlive this object.
    void add(FltRecordView const& record);

    FltRecordView operator[](std::size_t number) const;
    int opcodeOf(std::size_t number) const { return static_cast<int>(places[number].opcode); }
    std::size_t size() const { return places.size(); }

    /// Records that follow each other.
    class Range
    {
    public:
        class Iterator
        {
        public:
            Iterator(FltRecordPlaces const& all, std::size_t number) : all(&all), number(number) {}

            FltRecordView operator*() const { return (*all)[number]; }
            Iterator& operator++()
            {
                ++number;
                return *this;
            }
            bool operator!=(Iterator const& other) const { return number != other.number; }

        private:
            FltRecordPlaces const* all;
            std::size_t number;
        };

        Range(FltRecordPlaces const& all, std::size_t first, std::size_t last)
            : all(all), first(first), last(last)
        {
        }

        Iterator begin() const { return {all, first}; }
        Iterator end() const { return {all, last}; }
        bool empty() const { return first == last; }

    private:
        FltRecordPlaces const& all;
        std::size_t first, last;
    };

private:
    struct Place {
        std::uint64_t offset : 47; ///< In the file; of one that stands apart, its number among those.
        std::uint64_t isApart : 1;
        std::uint64_t opcode : 16;
    };

    char const* file = nullptr; ///< Its first byte, if a record stands in it.
    std::vector<Place> places;
    std::vector<FltRecordView> apart;
};
