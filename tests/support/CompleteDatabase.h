#pragma once

#include "complete/FltCompleteConversion.h"
#include "support/DrawnScene.h"
#include "support/ScratchFolder.h"
#include "support/StreamCapture.h"
#include "writer/FltWriter.h"

#include <iostream>
#include <memory>
#include <string>
#include <vector>

/// A database for tests of the complete conversion: it has a vertex palette, and what is added stands below
/// its first level.
class CompleteDatabase
{
public:
    using Fields = FltWriter::Fields;

    explicit CompleteDatabase(int revision = 1570, Fields const& header = {}) : writer(revision, header) {}

    FltWriter writer;

    /// Offsets of the corners of a square with the side 1, which looks along z.
    std::vector<double> square(double x = 0, double y = 0, double z = 0)
    {
        return polygon({{x, y, z}, {x + 1, y, z}, {x + 1, y + 1, z}, {x, y + 1, z}});
    }

    /// Offsets of vertices without normals, in white.
    std::vector<double> polygon(std::vector<std::vector<double>> const& places)
    {
        std::vector<double> offsets;
        for (std::vector<double> const& place : places)
            offsets.push_back(writer.vertex("VertexColor", place[0], place[1], place[2],
                                            {{"flags", 0x1000}, {"packedColor", white}}));
        return offsets;
    }

    /// The fields of a face: without material and texture, its colour packed, lit.
    static Fields face(Fields more = {}, std::vector<double> const& color = white)
    {
        Fields fields = {
            {"texturePatternIndex", -1}, {"materialIndex", -1},  {"detailTexturePatternIndex", -1},
            {"flags", 0x10000000},       {"packedColor", color}, {"lightMode", 2}};
        for (auto const& [name, value] : more) {
            bool known = false;
            for (auto& field : fields)
                if (field.first == name) {
                    field.second = value;
                    known = true;
                }
            if (!known)
                fields.emplace_back(name, value);
        }
        return fields;
    }

    /// Adds an Object that holds one face.
    CompleteDatabase& object(std::vector<double> const& offsets, Fields const& fields = face(),
                             std::string const& name = "o")
    {
        writer.add("Object", {{"idASCII", name}}).push().face(offsets, fields).pop();
        return *this;
    }

    /// Converts what there is. What it reports is kept in messages.
    FltCompleteConversion::Result convert(FltCompleteConversion::Options const& options = {})
    {
        StreamCapture const out(std::cout);
        StreamCapture const err(std::cerr);
        FltCompleteConversion::Result result =
            FltCompleteConversion::convert(folder.write("model.flt", writer.bytes()), options);
        result.names.give();
        messages = err.str();
        output = out.str();
        return result;
    }

    /// What is drawn of it.
    DrawnScene draw(FltCompleteConversion::Options const& options = {})
    {
        FltCompleteConversion::Result const result = convert(options);
        return DrawnScene(result.root.get());
    }

    /// Begins the hierarchy. Vertices stand before it.
    FltWriter& begin() { return writer.push(); }

    std::shared_ptr<ScratchFolder> scratch = std::make_shared<ScratchFolder>(); ///< Of all copies.
    ScratchFolder const& folder = *scratch;
    std::string messages;
    std::string output;

    /// Alpha, blue, green, red.
    static inline std::vector<double> const white = {255, 255, 255, 255};
    static inline std::vector<double> const red = {255, 0, 0, 255};
    static inline std::vector<double> const green = {255, 0, 255, 0};
};
