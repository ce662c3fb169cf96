#pragma once

#include "convert/ConversionOptions.h"
#include "convert/DatabaseConverter.h"
#include "iv/SceneForm.h"
#include "support/LoaderOptions.h"
#include "support/Program.h"

#include "vrml/FltVrmlPictures.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

/// Converts databases into scene files.
class SceneConverter : public DatabaseConverter
{
public:
    /// Keeps all of them by reference.
    SceneConverter(Program const& program, LoaderOptions const& loaderOptions,
                   ConversionOptions const& options, SceneForm const& form);

    ConversionResult convert(Conversion const& conversion, FltLoader::Progress const& progress,
                             std::function<void()> const& loaded) const override;

private:
    FltLoader makeLoader(Conversion const& conversion, FltLoader::Progress const& progress) const;
    void prepare(FltScene const& scene, Conversion const& conversion) const;
    std::vector<std::string> placePictures(std::vector<FltVrmlPicture>& pictures,
                                           Conversion const& conversion,
                                           std::vector<KeptFile> const& kept) const;
    std::uint64_t writeScene(FltScene const& scene, Conversion const& conversion) const;
    std::uint64_t writeVrml(FltVisual const& visual, Conversion const& conversion,
                            std::vector<std::string>& beside) const;

    Program const& program;
    LoaderOptions const& loaderOptions;
    ConversionOptions const& options;
    SceneForm const& form;
};
