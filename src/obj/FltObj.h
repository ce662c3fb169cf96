#pragma once

#include "gltf/FltGltfError.h"
#include "gltf/FltGltfOptions.h"
#include "gltf/FltGltfReport.h"
#include "loader/FltVisual.h"
#include "toolkit/VelloReaderExport.h"

#include <string>

/// Writes visuals as OBJ, the text of shapes that programs of all ages read: what is shown of a database, at
/// its finest level of detail, in metres and with y up. All else is listed as lost.
class VELLOREADER_API FltObj
{
public:
    /// Writes a file, and beside it NAME.mtl with its materials and NAME_textures with their pictures. Files
    /// that stand there are replaced once all are whole, unless they are of the database.
    /// @param path    ends in ".obj"
    /// @param options whether faces are lifted, and the limits for textures; OBJ knows nothing of the others
    /// @throw FltGltfError if it can't be written; what stood there is as before then
    static FltGltfReport write(FltVisual const& visual, std::string const& path,
                               FltGltfOptions const& options = {});
};
