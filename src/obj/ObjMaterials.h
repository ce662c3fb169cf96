#pragma once

#include "gltf/FltGltfFiles.h"
#include "gltf/FltGltfLosses.h"
#include "gltf/GltfPicture.h"
#include "textures/FltTexture.h"
#include "visual/FltMesh.h"

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

/// The materials of an OBJ file, each once, and their pictures.
class ObjMaterials
{
public:
    /// All have to outlive this object.
    ObjMaterials(FltGltfFiles& files, std::vector<FltTexture> const& textures,
                 GltfPicture::Source const& source, FltGltfLosses& losses)
        : files(files), textures(textures), source(source), losses(losses)
    {
    }

    /// The name of what a mesh looks like.
    std::string nameOf(FltMesh const& mesh);

    /// Whether a mesh has a picture.
    bool hasPicture(FltMesh const& mesh) { return !pictureOf(mesh).empty(); }

    std::string text() const; ///< Of the file of materials.
    std::uint64_t count() const { return names.size(); }
    std::uint64_t pictureCount() const { return pictures.size(); }
    std::vector<std::string> missing() const { return {missingNames.begin(), missingNames.end()}; }

private:
    std::string const& pictureOf(FltMesh const& mesh);

    FltGltfFiles& files;
    std::vector<FltTexture> const& textures;
    GltfPicture::Source const& source;
    FltGltfLosses& losses;
    std::map<std::string, std::string> names; ///< By what stands below them.
    std::vector<std::pair<std::string, std::string const*>> order;
    std::map<std::pair<PicturePixels const*, bool>, std::string> pictures; ///< Their paths from the file.
    std::set<std::string> missingNames;
};
