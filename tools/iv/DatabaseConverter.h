#pragma once

#include "iv/Conversion.h"
#include "support/LoaderOptions.h"
#include "support/Program.h"

#include <functional>

/// Converts databases into scene files, one by one.
class DatabaseConverter
{
public:
    /// Keeps all of them by reference.
    DatabaseConverter(Program const& program, LoaderOptions const& loaderOptions,
                      ConversionOptions const& options);

    /// Converts one. Its messages go to standard error.
    /// @param progress see FltLoader
    /// @param loaded   is called when the load is done, before its messages are shown
    /// @throw FltLoadError or ToolError; the output is as it was before then
    ConversionStatistics convert(Conversion const& conversion, FltLoader::Progress const& progress,
                                 std::function<void()> const& loaded) const;

private:
    FltLoader makeLoader(Conversion const& conversion, FltLoader::Progress const& progress) const;
    void prepare(FltScene const& scene, Conversion const& conversion) const;

    Program const& program;
    LoaderOptions const& loaderOptions;
    ConversionOptions const& options;
};
