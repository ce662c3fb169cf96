#pragma once

#include "loader/FltLoader.h"
#include "toolkit/VelloReaderExport.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// An option of FltLoader, as people give it. Command lines and the Python package make theirs from the table
/// of all options, so that a new one is a member of FltLoader and a row.
struct VELLOREADER_API FltLoaderOption {
    /// What a value is. As text it is the same for all who set it.
    enum class Kind {
        flag,        ///< "1" or "0".
        word,        ///< One of the words, by either name.
        number,      ///< In decimal digits.
        directory,   ///< Its name.
        directories, ///< A name each time.
        log,         ///< The name of a file, or FltLoader::besideDatabase.
    };

    /// Which programs offer it.
    enum class Programs { all, converters, none };

    /// A value of an option that has a few.
    struct Word {
        int value;                   ///< As an enumerator.
        std::string_view name;       ///< In Python.
        std::string_view inPrograms; ///< On command lines.
    };

    using Member =
        std::variant<bool FltLoader::*, std::uint64_t FltLoader::*, std::optional<std::string> FltLoader::*,
                     std::vector<std::string> FltLoader::*, FltLoader::References FltLoader::*,
                     FltLoader::LevelsOfDetail FltLoader::*, FltLoader::Units FltLoader::*,
                     FltLoader::Origin FltLoader::*, FltLoader::TimeOfDay FltLoader::*,
                     FltLoader::Names FltLoader::*>;

    std::string_view name; ///< In Python.
    std::string_view flag; ///< On command lines; empty where no program offers it.
    Programs programs;
    Kind kind;
    std::string_view placeholder; ///< What follows on command lines: "DIR".
    Member member;
    std::vector<Word> words;
    std::string_view help; ///< Sentences, for all who set it.

    /// All options, in the order in which people read of them.
    static std::vector<FltLoaderOption> const& table();

    /// The option of a name. @throw std::invalid_argument if there is none
    static FltLoaderOption const& named(std::string_view name);

    /// Gives a loader a value; one of several directories is added.
    /// @throw std::invalid_argument if it isn't one
    void set(FltLoader& loader, std::string const& value) const;

    /// What it is if nobody sets it, words by their number; nothing for what has no value then.
    std::optional<std::uint64_t> defaultNumber() const;

    /// The word that holds if nobody sets it.
    Word const& defaultWord() const;
};
