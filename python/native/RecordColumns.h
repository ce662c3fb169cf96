#pragma once

#include "PythonApi.h"

#include "loader/FltRecordReader.h"

#include <vector>

/// Columns of records as objects of Python.
namespace RecordColumns
{

/// The columns as a list of tuples, one each: what owns the values, name, type of a value as numpy has it,
/// values in a row by dimension, values, how many values each row has (None if all have as many), whether
/// each record lacks the field (None if none does). Values and numbers are address and bytes. Texts are of
/// one width, type "U12" and the like, unless that takes much more room: then they are a list, and the type
/// is "O".
/// @return null, with an exception raised, if there was no memory for it
PyObject* listOf(std::vector<FltColumn> columns);

} // namespace RecordColumns
