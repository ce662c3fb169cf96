#pragma once

#include "support/OutputFile.h"
#include "support/Program.h"

#include "loader/FltLoader.h"
#include "loader/FltLoaderOption.h"

#include <list>
#include <string>
#include <string_view>
#include <vector>

/// The options of the loader that programs offer, from the table of all its options.
class LoaderOptions
{
public:
    using Programs = FltLoaderOption::Programs;

    LoaderOptions() = default;

    /// Adds those that every program offers.
    explicit LoaderOptions(Program& program) { add(program, Programs::all); }

    LoaderOptions(LoaderOptions const&) = delete;
    LoaderOptions& operator=(LoaderOptions const&) = delete;

    /// Has the program not offer some options, by their names in the table.
    void leaveOut(std::vector<std::string_view> const& names);

    /// Adds the options that such programs offer.
    void add(Program& program, Programs programs);

    /// A loader with these options, once the command line was parsed.
    FltLoader makeLoader() const;

    /// The same for a program that draws: cameras count in floats, which have to be fine where the database
    /// is.
    FltLoader makeCentringLoader() const;

    /// Whether the listing goes into one file, which can't hold that of several databases.
    bool hasNamedLog() const;

    /// Where the listing of a database goes; empty if there is none.
    std::string logOf(std::string const& database) const;

    /// The files that an output of the program must never replace: the database, its log, and all that it
    /// refers to.
    std::vector<KeptFile> keptFiles(std::string const& database, FltScene const& scene) const
    {
        return keptFiles(database, scene.references(), scene.textures());
    }
    std::vector<KeptFile> keptFiles(std::string const& database, std::vector<FltReference> const& references,
                                    std::vector<FltTexture> const& textures) const;

private:
    /// What the command line says of an option.
    struct Given {
        FltLoaderOption const& option;
        bool isSet = false;
        std::string value;
        std::vector<std::string> values;
    };

    static void add(Program& program, Given& given);
    static void set(Given const& given, FltLoader& loader);

    std::vector<std::string_view> leftOut;
    std::list<Given> givenOptions; ///< The command line is bound to them.
};
