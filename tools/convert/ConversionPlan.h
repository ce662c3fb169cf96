#pragma once

#include "convert/TreePart.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

/// Which databases become which files: the files and directories of a command line, and what they refer to.
class ConversionPlan
{
public:
    struct Entry {
        std::string input;
        std::string identity; ///< The canonical path of the input.
        std::string output;
        std::uint64_t bytes = 0; ///< Of the input.
        std::string place;       ///< Of the input below its root, with slashes: "north/tile_7.flt".

        /// @name Where its references belong: a file below the first directory goes to the same place below
        /// the second one.
        /// @{
        std::string inputDirectory;
        std::string outputDirectory;
        /// @}
    };

    /// @param ending of every output: ".iv"
    /// @param part   of the databases that are added: the others are known, but not planned
    explicit ConversionPlan(std::string ending, TreePart part = {});

    /// Plans a database for a given output.
    void addFile(std::string const& input, std::string const& output);

    /// Plans a database, or all in a directory and those below it, for a directory. Links to directories
    /// aren't followed.
    void addInput(std::string const& input, std::string const& outputDirectory);

    /// The same for what keeps its place below a root. From now on nothing else is planned: see isBound().
    /// @param input what lies outside of the root becomes a problem
    void addBelow(std::string const& root, std::string const& input, std::string const& outputDirectory);

    /// Plans a database to which a planned one refers, unless it is planned already.
    /// @param path      where it is
    /// @param identity  its canonical path
    /// @param referring the number of the entry that refers to it
    void addReference(std::string const& path, std::string const& identity, std::size_t referring);

    /// Makes sure that every output has one input, and that none of them is an input.
    /// @throw UsageError
    void check() const;

    std::vector<Entry> const& entries() const { return list; }

    /// The output of the first entry of a database, in whichever part it is; nothing if it isn't known.
    /// @param identity its canonical path
    std::optional<std::string> outputOf(std::string const& identity) const;

    /// Whether nothing but what was added is converted, whatever it refers to: because there are other parts,
    /// or because places count from a root.
    bool isBound() const { return bound; }

    /// The part that is planned.
    TreePart treePart() const { return part; }

    /// Whether no database was named by itself, so that none is more than the others.
    bool isTree() const { return tree; }

    /// Why inputs couldn't be taken, a sentence each.
    std::vector<std::string> const& problems() const { return allProblems; }

private:
    void addPlace(std::string const& input, std::string const& place, std::string const& inputDirectory,
                  std::string const& outputDirectory);
    void add(Entry entry);
    void note(std::string const& input, std::string const& output);
    std::string freeOutput(std::string const& directory, std::string const& name);

    std::string ending;
    TreePart part;
    bool bound;
    bool tree = true;
    std::vector<Entry> list;
    std::vector<std::string> allProblems;
    std::unordered_map<std::string, std::size_t> positions; ///< First entries by the identity of the input.
    std::unordered_map<std::string, std::size_t> outputs;   ///< First entries by the output.
    std::unordered_map<std::string, int> repetitions;       ///< Of names that references took.
    std::map<std::string, std::string> roots;               ///< Output directories by root.

    /// @name Of other parts
    /// @{
    std::unordered_map<std::string, std::string> otherInputs; ///< By their outputs.
    std::unordered_set<std::string> others;                   ///< Their inputs.
    std::vector<std::pair<std::string, std::string>> clashes; ///< Two inputs that have the same output.
    /// @}
};
