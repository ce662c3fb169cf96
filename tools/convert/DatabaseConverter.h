#pragma once

#include "convert/Conversion.h"

#include "loader/FltLoader.h"

#include <functional>

/// Converts databases into files of some form, one by one.
class DatabaseConverter
{
public:
    DatabaseConverter() = default;
    virtual ~DatabaseConverter() = default;

    DatabaseConverter(DatabaseConverter const&) = delete;
    DatabaseConverter& operator=(DatabaseConverter const&) = delete;

    /// Converts one. Its messages go to standard error.
    /// @param progress see FltLoader
    /// @param loaded   is called when the load is done, before its messages are shown
    /// @throw FltLoadError or ToolError; the output is as it was before then
    virtual ConversionResult convert(Conversion const& conversion, FltLoader::Progress const& progress,
                                     std::function<void()> const& loaded) const = 0;
};
