#pragma once

#include "info/DatabaseReport.h"
#include "support/Colours.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

/// What a database holds, as text for a person: headings, and names before values in columns.
class InfoText
{
public:
    explicit InfoText(Colours colours) : colours(colours) {}

    std::string of(DatabaseReport const& report);

    /// The most important of it in a line.
    std::string lineOf(DatabaseReport const& report) const;

    /// The hierarchy, a line a node.
    /// @param depth levels below the header that are shown
    std::string treeOf(FltInventory const& inventory, std::uint32_t depth);

private:
    void heading(std::string_view title);

    /// Of a list: "Switches: 2".
    void heading(std::string_view title, std::uint64_t count, std::string const& more = "");

    /// @param value may come from the file
    void line(std::string_view name, std::string_view value);
    void lineInColour(std::string_view name, std::string const& colouredValue);

    void writeHeader(DatabaseReport const& report);
    void writeGeometry(DatabaseReport const& report);
    void writeHierarchy(DatabaseReport const& report);
    void writeLevelsOfDetail(FltInventory const& inventory);
    void writeSwitches(FltInventory const& inventory);
    void writeDegreesOfFreedom(FltInventory const& inventory);
    void writeMaterials(FltInventory const& inventory);
    void writeTextures(DatabaseReport const& report);
    void writeReferences(DatabaseReport const& report);

    /// @param problem empty if it was found
    void writeFile(std::string const& name, std::string const& where, std::string const& problem);
    void writeScene(DatabaseReport const& report);
    void writeRecords(FltInventory const& inventory);
    std::string labelOf(FltInventory const& inventory, std::uint32_t node) const;

    /// Ends a list that goes on: "and 12 more; --json has all".
    void andMore(std::size_t more);

    Colours colours;
    std::string text;
};
