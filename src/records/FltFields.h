#pragma once

#include "records/FltFieldDecoder.h"
#include "records/FltFieldDump.h"
#include "records/FltFieldPlace.h"
#include "records/FltFieldReach.h"
#include "records/FltRecordHead.h"
#include "records/FltVersion.h"

#include <iosfwd>
#include <type_traits>
#include <typeinfo>

/// A record's layout stands once: in its class's
///
///     template <class Self, class Visitor>
///     static void fields(Self& self, Visitor& visit);
///
/// one line a field, in the order of the bytes after opcode and length:
///
///     visit("switchInDistance", self.switchInDistance);        // dumped as "switchInDistance: value"
///     visit("maxPitch", self.maxPitch, "maxPitch : ");         // with a label of its own
///     visit("reserved", self.reserved, dumpAs::nothing);       // read, not dumped
///     visit("idASCII", self.idASCII, dumpAs::text(&self + 1)); // in another form: see FltDumpStyles.h
///
/// The type of the member is the type of the field: integers and floats are big-endian, char arrays and
/// characters are copied as they stand, an array is its values one after the other.
///
/// Five visitors go over it: FltFieldDecoder reads the fields, FltFieldDump writes them, FltFieldReach counts
/// the bytes that a decoder may read, FltFieldPlace tells where a field stands, and FltFieldLister
/// hands over names and values. What only the complete conversion reads has a layout without a class of the
/// factory. Where a layout needs code of its own for one of them, it asks for it by `if constexpr
/// (Visitor::decodes)`, `Visitor::dumps` or `Visitor::lists`. Besides fields, a layout may say:
///
/// | Call                              | What it does                                                          |
/// |-----------------------------------|-----------------------------------------------------------------------|
/// | flag(name, word, bit, label)      | names a bit of the flags; the dump has a line for it                  |
/// | from(revision, first)             | whether the fields of a revision and all later ones are there         |
/// | when(condition)                   | the same by any other condition                                       |
/// | preset(member, value)             | what a decoder puts into a field that the file doesn't have           |
/// | skip(count)                       | bytes that nobody reads                                               |
/// | first(count, name, member, style) | an array of which the file has so many values                         |
/// | rest(name, text, length)          | text that goes on to the record's end                                 |
/// | values(name, pointer, count)      | a list whose length was made sure of                                  |
/// | text(name, pointer, count)        | text of a length that was made sure of, which isn't dumped            |
/// | bytes(name, pointer, count)       | the same of plain bytes                                               |
/// | place(), goTo(place)              | to read bytes a second time                                           |
/// | show(label), show(label, number)  | a line of the dump that is no field                                   |
/// | showColor(label, byte)            | the same, with a colour byte as a fraction of 255                     |
/// | endLine()                         | ends a line of pieces                                                 |
/// | number(name, value)               | a number for lists that no field holds                                |
/// | open(name), close()               | what stands between belongs together under a name                     |
/// | openElement(name), close()        | the same, as the next of several                                      |
namespace FltFields
{

/// Decodes a layout. All of it becomes one function, so that the place in the data stays in a register.
/// @param first the first field
template <class Layout>
[[gnu::flatten]] void decodeFrom(Layout& layout, char* first)
{
    FltFieldDecoder decoder(first);
    Layout::fields(layout, decoder);
}

/// Decodes a record.
/// @param data the record's first byte
template <class Record>
[[gnu::flatten]] void decode(Record& record, char* data)
{
    decodeFrom(record, data + 4);
}

/// Dumps a record's frame and all its fields. @return @p os
template <class Record>
std::ostream& dump(Record const& record, std::ostream& os)
{
    bool const isOfThisClass = typeid(record) == typeid(Record);
    if (!isOfThisClass) // one below may have a head of its own
        record.nameOpcodeAndLength(os);
    FltFieldDump dump(os);
    if (isOfThisClass)
        FltRecordHead::write(record, dump.dump);
    Record::fields(record, dump);
    return os;
}

/// Bytes of a layout as these very values have it, after opcode and length.
template <class Layout>
std::size_t sizeOf(Layout const& layout)
{
    FltFieldPlace place(nullptr);
    Layout::fields(layout, place);
    return place.place() - FltFieldReach::head;
}

/// Bytes that the decoder of this very record reads at the most, from the record's first byte on.
template <class Record>
std::size_t bytesReadBy(Record const& record)
{
    FltFieldReach reach(std::is_base_of_v<FltVersion, Record>);
    Record::fields(record, reach);
    return reach.getReach();
}

/// Where a field of this very record ends, counted from the record's first byte; 0 if the layout doesn't have
/// it at the record's revision.
template <class Record>
std::size_t endOf(Record const& record, void const* field)
{
    FltFieldPlace place(field);
    Record::fields(record, place);
    return place.getEnd();
}

/// How many bytes the decoder of a class reads in a file of a revision, counted from the record's first byte,
/// whatever the record's length says. A class that doesn't take the revision from the file reads as far as
/// any revision does.
template <class Record>
std::size_t reachOf([[maybe_unused]] int revision)
{
    Record record(4);
    if constexpr (std::is_base_of_v<FltVersion, Record>)
        record.revision = revision;
    return bytesReadBy(record);
}

} // namespace FltFields
