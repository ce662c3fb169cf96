#pragma once

#include "convert/ConversionCommand.h"
#include "convert/DatabaseConverter.h"
#include "globe/FltGlobe.h"
#include "gltf/FltGltf.h"
#include "gltf/GltfChoices.h"
#include "support/Program.h"
#include "tiles/FltTile.h"

#include <optional>
#include <string>

/// Converts databases into glTF files, pages and OBJ.
class GltfConverter : public DatabaseConverter
{
public:
    /// Keeps all of them by reference.
    GltfConverter(Program const& program, ConversionCommand const& command, GltfChoices const& choices);

    ConversionResult convert(Conversion const& conversion, FltLoader::Progress const& progress,
                             std::function<void()> const& loaded) const override;

private:
    std::optional<FltGlobeTile> placedOnGlobe(FltVisual const& visual, std::string const& input) const;
    FltGltfReport write(FltVisual const& visual, Conversion const& conversion, FltGltfOptions options,
                        std::optional<FltTile>& tile) const;
    FltGltfReport writeTile(FltVisual const& visual, Conversion const& conversion,
                            FltGltfOptions const& options, std::optional<FltTile>& tile) const;
    FltGltfReport writeForm(FltVisual const& visual, std::string const& output,
                            FltGltfOptions const& options) const;
    FltGltfReport writeStream(FltVisual const& visual, std::string const& output,
                              FltGltfOptions const& options) const;
    void warnOfUnit(FltVisual const& visual, FltLoader const& loader, std::string const& input) const;
    FltLoader makeLoader(FltLoader::Progress const& progress) const;
    FltGltfOptions makeOptions(FltLoader const& loader) const;

    Program const& program;
    ConversionCommand const& command;
    GltfChoices const& choices;
};
