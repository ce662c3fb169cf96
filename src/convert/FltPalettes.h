#pragma once

#include "convert/FltColorPalette.h"
#include "toolkit/SoNodeRef.h"

#include <Inventor/nodes/SoDrawStyle.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoTexture2.h>
#include <map>
#include <string>

/// The tables of one file that its faces refer to by index, as its palette records fill them.
struct FltPalettes {
    /// @param makesNodes if not, there are no materials
    explicit FltPalettes(bool makesNodes = true) : materialPalette(makesNodes ? new SoMaterial : nullptr) {}

    /// The texture at an index, or null.
    SoTexture2* findTexture(int index) const
    {
        auto const found = texturePalette.find(index);
        return found != texturePalette.end() ? found->second.get() : nullptr;
    }

    FltColorPalette colorPalette;
    SoNodeRef<SoMaterial> materialPalette; ///< Each field is a table by material index.
    std::map<int, SoNodeRef<SoTexture2>> texturePalette;
    std::map<int, void*> reservedMap; ///< Nothing fills it.
    std::map<int, std::string> namePalette;
    std::map<int, SoNodeRef<SoDrawStyle>> lineStylePalette;
};
