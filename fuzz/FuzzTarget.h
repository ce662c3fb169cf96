#pragma once

#include <string>

/// What one of the fuzzers does with any bytes: parse, dump or convert. Each fuzzer has its own definition.
void useDatabase(std::string const& bytes);
