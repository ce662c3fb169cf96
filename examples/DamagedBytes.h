#pragma once

#include <string>

/// What can happen to a database on its way.
enum class Damage {
    cut,        ///< The second half is missing.
    zeroLength, ///< In the middle stands a record that says to have no length.
    text,       ///< Something else has its name.
    empty,      ///< Nothing was written.
};

/// A database after such damage. Of those that are cut or have a bad length the first half can be read.
std::string damagedBytes(std::string const& database, Damage damage);
