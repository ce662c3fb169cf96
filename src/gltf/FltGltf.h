#pragma once

#include "gltf/FltGltfError.h"
#include "gltf/FltGltfOptions.h"
#include "gltf/FltGltfReport.h"
#include "loader/FltVisual.h"
#include "toolkit/VelloReaderExport.h"

#include <cstdio>
#include <string>

/// Writes visuals as glTF 2.0, which modellers, engines, globes and browsers read.
///
///     FltLoader loader;
///     FltGltf::write(loader.loadVisual("airfield.flt"), "airfield.glb");
///
/// The toolkit needn't be started, and the visual stays as it is. The same visual gives the same bytes.
class VELLOREADER_API FltGltf
{
public:
    /// Writes a file.
    /// @param path ends in ".glb" (all in one file), ".gltf" (text, with "NAME.bin" and pictures in
    ///             "NAME_textures" beside it) or ".html" (a page for browsers that shows it), in letters of
    ///             any case. A file that stands there is replaced once the new one is whole, unless it is one
    ///             of the visual's own.
    /// @throw FltGltfError if it can't be written; what stood at the path is as before then
    static FltGltfReport write(FltVisual const& visual, std::string const& path,
                               FltGltfOptions const& options = {});

    /// Writes a .glb into a stream. Whether the stream took everything its error flag tells.
    /// @throw FltGltfError if it would be longer than the 4 gigabytes of the format
    static FltGltfReport writeGlb(FltVisual const& visual, FILE* stream, FltGltfOptions const& options = {});

    /// The bytes of a .glb.
    /// @param report is filled where it is given
    /// @throw FltGltfError as above
    static std::string glb(FltVisual const& visual, FltGltfOptions const& options = {},
                           FltGltfReport* report = nullptr);
};
