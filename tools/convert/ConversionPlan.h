#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <unordered_map>
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

        /// @name Where its references belong: a file below the first directory goes to the same place below
        /// the second one.
        /// @{
        std::string inputDirectory;
        std::string outputDirectory;
        /// @}
    };

    /// @param ending of every output: ".iv"
    explicit ConversionPlan(std::string ending);

    /// Plans a database for a given output.
    void addFile(std::string const& input, std::string const& output);

    /// Plans a database, or all in a directory and those below it, for a directory. Links to directories
    /// aren't followed.
    void addInput(std::string const& input, std::string const& outputDirectory);

    /// Plans a database to which a planned one refers, unless it is planned already.
    /// @param path      where it is
    /// @param identity  its canonical path
    /// @param referring the number of the entry that refers to it
    void addReference(std::string const& path, std::string const& identity, std::size_t referring);

    /// Makes sure that every output has one input, and that none of them is an input.
    /// @throw UsageError
    void check() const;

    std::vector<Entry> const& entries() const { return list; }

    /// The output of the first entry of a database. @param identity its canonical path; it has to be planned
    std::string const& outputOf(std::string const& identity) const;

    /// Why directories couldn't be read, a sentence each.
    std::vector<std::string> const& problems() const { return allProblems; }

private:
    void addDirectory(std::string const& directory, std::string const& outputDirectory);
    void add(Entry entry);
    std::string freeOutput(std::string const& directory, std::string const& name);

    std::string ending;
    std::vector<Entry> list;
    std::vector<std::string> allProblems;
    std::unordered_map<std::string, std::size_t> positions; ///< First entries by the identity of the input.
    std::unordered_map<std::string, std::size_t> outputs;   ///< First entries by the output.
    std::unordered_map<std::string, int> repetitions;       ///< Of names that references took.
};
