#pragma once

/// Revisions of the format, as files store them: 1570 stands for 15.7, 11 to 14 are old.
namespace FltRevision
{

/// The oldest that can be converted.
constexpr int oldest = 11;

/// The last in which the header's multiplier counts beside its unit.
constexpr int lastWithMultiplier = 12;

} // namespace FltRevision
