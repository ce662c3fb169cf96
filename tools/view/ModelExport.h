#pragma once

#include "loader/FltLoader.h"

#include <QString>
#include <optional>
#include <string>

/// Writes a database, or a part of it, into a file that other programs read: with its own zero, and switches
/// and degrees of freedom as they are stored.
struct ModelExport {
    FltLoader loader;                   ///< By which it is shown.
    std::string database;               ///< Its file.
    std::optional<FltRecordPlace> part; ///< The record of the part; none for the whole.

    /// Loads the database, and writes it. The ending of the name says in which form.
    /// @return what isn't in the file, a sentence; empty if nothing is to be said
    /// @throw std::runtime_error with what is wrong: of the loader (a cancelled load, too), or of the file
    QString write(std::string const& path) const;

    /// "Open Inventor (*.iv);;…", for a dialog.
    static QString filters();

    /// A name with the ending of a form in place of that of another one. @param filter one of filters()
    static QString withEnding(QString const& name, QString const& filter);
};
