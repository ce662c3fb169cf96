#pragma once

#include "toolkit/VelloReaderExport.h"
#include "visual/FltOmission.h"

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

    /// The page.
    /// @param glb the bytes of a binary glTF file whose pictures are in it
    static std::string html(std::string_view glb, Facts const& facts);
};
