#pragma once

#include "toolkit/VelloReaderExport.h"

class SoSeparator;

/// The functions that a host finds by name in the loaded library.
extern "C" {

/// Registers SoInputFltReader with the toolkit. A second call does nothing.
VELLOREADER_API void initPlugin();

/// Removes SoInputFltReader from the toolkit's types. initPlugin() may be called again afterwards.
VELLOREADER_API void exitPlugin();

/// The name of the product, "VelloReader".
VELLOREADER_API char const* getProductName();

/// The version of the product.
VELLOREADER_API char const* getVersion();

/// Converts a file: FltToInventor::convertFromFile().
VELLOREADER_API SoSeparator* convertFrom(char const* fileName);
}
