#pragma once

#include "scene/FltSceneMaker.h"
#include "support/DrawnScene.h"
#include "support/ScratchFolder.h"
#include "support/StreamCapture.h"
#include "visual/FltVisualConversion.h"
#include "writer/FltWriter.h"

#include <iostream>
#include <memory>
#include <string>
#include <utility>
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

    /// A converted database and its scene.
    struct Converted : FltVisualConversion::Result, FltMadeScene {
        SoNodeRef<SoSeparator> root; ///< Null unless it was converted. Its nodes have their names.
    };

    /// What is to be seen of what there is. What is reported is kept in messages.
    FltVisualConversion::Result see(FltVisualConversion::Options const& options = {})
    {
        StreamCapture const out(std::cout);
        StreamCapture const err(std::cerr);
        FltVisualConversion::Result result =
            FltVisualConversion::convert(folder.write("model.flt", writer.bytes()), options);
        messages = err.str();
        output = out.str();
        return result;
    }

    /// The same as a scene.
    Converted convert(FltVisualConversion::Options const& options = {}) { return sceneOf(see(options)); }

    /// The scene of what is to be seen.
    static Converted sceneOf(FltVisualConversion::Result&& visual)
    {
        Converted converted;
        static_cast<FltVisualConversion::Result&>(converted) = std::move(visual);
        if (std::shared_ptr<FltVisualNode> top = std::move(converted.FltVisualConversion::Result::root)) {
            static_cast<FltMadeScene&>(converted) = FltSceneMaker::make(std::move(top), converted.textures);
            converted.names.give();
            converted.root = converted.FltMadeScene::root;
            converted.FltMadeScene::root = {};
        }
        return converted;
    }

    /// What is drawn of it.
    DrawnScene draw(FltVisualConversion::Options const& options = {})
    {
        Converted const converted = convert(options);
        return DrawnScene(converted.root.get());
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
