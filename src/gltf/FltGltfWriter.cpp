#include "gltf/FltGltfWriter.h"

#include "gltf/FltGltfMaterials.h"
#include "gltf/FltGltfMeshes.h"
#include "gltf/FltGltfNodes.h"
#include "gltf/GltfPicture.h"

FltGltfWriter::FltGltfWriter(FltVisual const& visual, FltGltfOptions const& options,
                             FltGltfTextures::Place const& place)
{
    using List = GltfDocument::List;
    GltfPicture::Source const source = {FltReadableTree(options.onlyBelow), options.largestFile};
    FltGltfLosses losses;
    FltGltfTextures textures(
        document, visual.textures, source,
        place ? place : [](GltfPicture const&, std::string const&) { return ""; });
    FltGltfMaterials materials(document, textures, losses);
    FltGltfMeshes meshes(document, materials, losses, options.quantizes);
    FltGltfNodes nodes(visual, options, document, meshes, losses);
    top = nodes.write();
    if (options.compresses && document.binary.compress())
        document.use("EXT_meshopt_compression", true);
    report.omissions = losses.list();
    report.missingTextures = textures.missing();
    report.nodes = document.count(List::nodes);
    report.meshes = document.count(List::meshes);
    report.vertices = meshes.vertices();
    report.triangles = nodes.triangles();
    report.materials = document.count(List::materials);
    report.images = document.count(List::images);
}
