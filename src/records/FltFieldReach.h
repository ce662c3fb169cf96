#pragma once

#include "records/FltDumpStyles.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>

/// Counts how many bytes of a record its decoder may read whatever the record's length says: all gates count
/// as open. See FltFields.h.
class FltFieldReach
{
public:
    static constexpr bool decodes = false;
    static constexpr bool dumps = false;
    static constexpr bool lists = false;

    static constexpr std::size_t head = 4; ///< Bytes of opcode and length.

    /// @param knowsRevision whether the gates of revisions stand as the record's own revision has them
    explicit FltFieldReach(bool knowsRevision) : knowsRevision(knowsRevision) {}

    /// Bytes from the record's first one on.
    std::size_t getReach() const { return farthest; }

    template <class Member, class... Style>
    void operator()(char const* /*name*/, Member const& /*member*/, Style const&... /*style*/)
    {
        skip(sizeof(Member));
    }
    template <class Value, std::size_t size, class Style>
    void first(int count, char const* /*name*/, Value const (&/*values*/)[size], Style const& /*style*/)
    {
        skip(static_cast<std::size_t>(count) * sizeof(Value));
    }
    void skip(std::size_t count)
    {
        at += count;
        farthest = std::max(farthest, at);
    }
    std::size_t place() const { return at; }
    void goTo(std::size_t place) { at = place; }

    bool from(int revision, int first) const { return !knowsRevision || revision >= first; }
    static bool when(bool /*condition*/) { return true; }

    /// @name What a file counts is bounded by the record's own length
    /// @{
    void rest(char const* /*name*/, std::unique_ptr<char[]> const& /*text*/, unsigned int /*length*/) {}
    void text(char const* /*name*/, char const* /*text*/, int /*count*/) {}
    void bytes(char const* /*name*/, char const* /*bytes*/, unsigned int /*count*/) {}
    template <class Value>
    void values(char const* /*name*/, Value const* /*values*/, int /*count*/)
    {
    }
    /// @}

    template <class Member, class Value>
    void preset(Member const& /*member*/, Value /*value*/)
    {
    }
    void flag(char const* /*name*/, std::uint32_t /*word*/, int /*bit*/, char const* /*label*/) {}
    template <class... Values>
    void show(Values const&... /*values*/)
    {
    }
    void showColor(char const* /*label*/, std::uint8_t /*value*/) {}
    void number(char const* /*name*/, int /*value*/) {}
    void endLine() {}
    void open(char const* /*name*/) {}
    void openElement(char const* /*name*/) {}
    void close() {}

private:
    bool knowsRevision;
    std::size_t at = head;
    std::size_t farthest = head;
};
