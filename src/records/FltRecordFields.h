#pragma once

#include <cstdint>

class FltFieldColumns;
class FltFieldReceiver;
class FltJsonText;
class FltRecord;

/// Hands all that a record holds to a receiver, in the order of the file.
namespace FltRecordFields
{

/// Gives the fields of any record, as members of the object that is open.
/// @{
void give(FltRecord const& record, FltFieldReceiver& receiver);
void give(FltRecord const& record, FltFieldColumns& columns);
/// @}

/// Gives any record as an object: opcode, class, category, length, offset and fields.
/// @param byteOffset where the record begins in its file
/// @{
void giveWhole(FltRecord const& record, std::uint64_t byteOffset, FltFieldReceiver& receiver);
void giveWhole(FltRecord const& record, std::uint64_t byteOffset, FltJsonText& json);
/// @}

} // namespace FltRecordFields
