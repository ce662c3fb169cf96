#pragma once

#include "convert/ConversionFacts.h"

#include "loader/FltScene.h"
#include "loader/FltVisual.h"

#include <string>
#include <utility>
#include <vector>

/// Gathers what a report tells of a database. To be made before it is read.
class FactsOfLoad
{
public:
    /// @param input the database
    explicit FactsOfLoad(std::string input);

    /// Takes over what a visual is, and what came of its load.
    void take(FltVisual const& visual);

    /// Takes over what came of a load without a visual: triangles and the box aren't known then.
    void take(FltScene const& scene);

    /// Takes over what a tileset needs to know.
    void take(FltTile tile) { gathered.tile = std::move(tile); }

    /// Takes over of which files the result consists.
    /// @param output the main one, which may be among them
    void takeWritten(std::vector<std::string> const& files, std::string const& output);

    /// All of it, once the result is written.
    ConversionFacts facts();

private:
    void take(FltLoadReport const& report);
    void measure(FltVisual const& visual);

    std::string input;
    NeededFiles needed;
    double begin;
    ConversionFacts gathered;
};
