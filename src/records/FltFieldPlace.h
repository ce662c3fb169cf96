#pragma once

#include "records/FltFieldReach.h"

#include <cstddef>

/// Tells where a field of a record ends, with all gates as the record's own values have them. See
/// FltFields.h.
class FltFieldPlace : public FltFieldReach
{
public:
    /// @param wanted the field: a member of the record
    /// @param knowsRevision as FltFieldReach has it
    explicit FltFieldPlace(void const* wanted, bool knowsRevision = true)
        : FltFieldReach(knowsRevision), wanted(wanted)
    {
    }

    /// Bytes from the record's first one up to the field's end; 0 if the layout doesn't have the field.
    std::size_t getEnd() const { return end; }

    template <class Member, class... Style>
    void operator()(char const* name, Member const& member, Style const&... style)
    {
        FltFieldReach::operator()(name, member, style...);
        note(&member);
    }
    template <class Member, class Style>
    void first(int count, char const* name, Member const& member, Style const& style)
    {
        FltFieldReach::first(count, name, member, style);
        note(&member);
    }
    static bool when(bool condition) { return condition; }

private:
    void note(void const* member)
    {
        if (member == wanted)
            end = place();
    }

    void const* wanted;
    std::size_t end = 0;
};
