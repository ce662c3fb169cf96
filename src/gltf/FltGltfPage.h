#pragma once

#include "gltf/FltGltfOptions.h"
#include "gltf/FltGltfReport.h"
#include "loader/FltVisual.h"
#include "toolkit/VelloReaderExport.h"
#include "visual/FltOmission.h"

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

/// Makes a page for browsers from a .glb: one file of HTML that shows the model and its names, works from a
/// disk and without a network, and asks for nothing from anywhere. The same model gives the same bytes.
class VELLOREADER_API FltGltfPage
{
public:
    /// What a page tells of a database besides what is in the .glb. Texts may hold any bytes.
    struct Facts {
        std::string title;                        ///< Of the page: the database's name.
        std::vector<std::string> missingTextures; ///< As stored.
        std::vector<std::string> missingFiles;    ///< The same: databases that it refers to.
        std::vector<FltOmission> omissions;       ///< What isn't shown, by kind.
    };

    /// Writes the page of a visual, with all that is hidden and all levels of detail, since the page can show
    /// them. A file that stands there is replaced once the new one is whole, unless it is of the database.
    /// @param options of the .glb in it: whether it is lifted, and the limits for textures. The others are
    ///                the page's own.
    /// @throw FltGltfError as FltGltf::write()
    static FltGltfReport write(FltVisual const& visual, std::string const& path,
                               FltGltfOptions const& options = {});

    /// The same into a stream. Whether that took everything its error flag tells.
    static FltGltfReport writeStream(FltVisual const& visual, FILE* stream,
                                     FltGltfOptions const& options = {});

    /// The page.
    /// @param glb the bytes of a binary glTF file whose pictures are in it
    static std::string html(std::string_view glb, Facts const& facts);
};
