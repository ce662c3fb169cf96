#pragma once

#include "writer/FltWriter.h"

#include <cstddef>
#include <string>
#include <vector>

/// A database that holds every record of the format, in the order of a real one: palettes, vertices of all
/// forms, then a hierarchy in which each kind of node stands at least once, with all that may decorate it.
///
/// What has no meaning for the scene says where it was written, so that a wrong offset shows: integers hold
/// the opcode and the offset in the record, floating-point numbers the opcode before the point and the offset
/// after it, texts the name of their field.
FltWriter everyRecord(int revision);

/// The same with the long palettes cut to a part of their entries: a few kilobytes, for tests that go over it
/// byte by byte.
FltWriter everyRecordInBrief(int revision);

/// A small database about some of the records.
struct FltTopic {
    std::string name;
    std::string bytes;
    std::size_t begin; ///< Where the topic's own records stand: what is around them they need.
    std::size_t end;
};

/// The records of everyRecordInBrief() in topics, each record in the range of one.
std::vector<FltTopic> everyTopicInBrief(int revision);
