#include "obj/FltObj.h"

#include "gltf/FltGltfFiles.h"
#include "gltf/FltGltfLosses.h"
#include "gltf/GltfCorners.h"
#include "gltf/GltfJson.h"
#include "obj/ObjMaterials.h"
#include "obj/ObjText.h"
#include "visual/FltLiftedFaces.h"
#include "visual/FltVisualControls.h"
#include "visual/FltVisualWalk.h"

#include <Inventor/SbBox3f.h>
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <unordered_set>

namespace
{

/// A name as one word, which is what readers take.
std::string wordOf(std::string const& name)
{
    std::string word = GltfValues::text(name);
    std::replace(word.begin(), word.end(), ' ', '_');
    return word.empty() ? "unnamed" : word;
}

/// What the nodes of a visual have that OBJ hasn't.
void tellWhatIsLost(FltVisual const& visual, FltGltfLosses& losses)
{
    FltVisualControls const controls(*visual.root);
    losses.add("switches, which show what they show now", controls.switches.size());
    losses.add("degrees of freedom, which stand still", controls.joints.size());
    losses.add("flip-books that play", controls.flipBooks.size());
    std::unordered_set<FltVisualNode const*> seen;
    std::vector<FltVisualNode const*> open = {visual.root.get()};
    while (!open.empty()) {
        FltVisualNode const* const node = open.back();
        open.pop_back();
        if (node == nullptr || !seen.insert(node).second)
            continue;
        losses.add("texts", node->as<FltVisualText>() != nullptr ? 1 : 0);
        losses.add("lights", node->as<FltVisualLight>() != nullptr ? 1 : 0);
        losses.add("turning faces, which stand still", node->as<FltVisualTurning>() != nullptr ? 1 : 0);
        losses.add("other files, which readers don't open", node->as<FltVisualFile>() != nullptr ? 1 : 0);
        losses.add("comments", node->comments.size());
        if (node->as<FltVisualLevels>() != nullptr && !node->children.empty())
            losses.add("coarser levels of detail", node->children.size() - 1);
        for (std::shared_ptr<FltVisualNode> const& child : node->children)
            open.push_back(child.get());
    }
}

/// Writes the shapes of meshes, one after the other.
class ObjShapes
{
public:
    ObjShapes(FltVisual const& visual, FltGltfOptions const& options, ObjMaterials& materials,
              FltGltfLosses& losses)
        : metresPerUnit(visual.metresPerUnit), lifts(options.lifts), materials(materials), losses(losses)
    {
    }

    void add(FltMesh const& mesh, SbDPMatrix const& matrix, std::string const& name)
    {
        if (mesh.positions.empty())
            return;
        // A point of the mesh is its origin in doubles and a small way from there.
        SbVec3d origin = mesh.origin;
        matrix.multVecMatrix(origin, origin);
        SbDPMatrix turn = matrix;
        for (int column = 0; column < 3; ++column)
            turn[3][column] = 0;
        double const scale = std::cbrt(std::abs(turn.det3())) * metresPerUnit;
        GltfCornerForm const form = {{0, 0, 0}, lifts ? liftOf(mesh, scale) : 0, &turn};
        GltfCorners const corners(mesh, form, materials.hasPicture(mesh));
        losses.add("faces, lines and points with places that are no numbers", corners.lost);
        if (std::string const word = wordOf(name); word != object)
            text.line("o", object = word);
        text.line("usemtl", materials.nameOf(mesh));
        writeCorners(corners, origin);
        writeIndices(corners, turn.det3() < 0);
        ++report.meshes;
    }

    ObjText text;
    FltGltfReport report;

private:
    static double liftOf(FltMesh const& mesh, double metresPerUnit)
    {
        constexpr double partOfExtent = 1.0 / 2000;
        SbBox3f box;
        for (SbVec3f const& position : mesh.positions)
            box.extendBy(position);
        SbVec3f const size = box.isEmpty() ? SbVec3f(0, 0, 0) : box.getMax() - box.getMin();
        double const extent = static_cast<double>(std::max({size[0], size[1], size[2]}));
        return std::isfinite(extent) ? FltLiftedFaces::liftOfALevel(extent, partOfExtent, metresPerUnit) : 0;
    }

    void writeCorners(GltfCorners const& corners, SbVec3d const& origin)
    {
        for (SbVec3f const& position : corners.positions) {
            SbVec3d const place = (SbVec3d(position) + origin) * metresPerUnit;
            text.line("v", {place[0], place[2], -place[1]});
        }
        for (SbVec2f const& uv : corners.uvs)
            text.line("vt", {static_cast<double>(uv[0]), 1 - static_cast<double>(uv[1])});
        for (SbVec3f const& normal : corners.normals)
            text.line("vn", {static_cast<double>(normal[0]), static_cast<double>(normal[2]),
                             -static_cast<double>(normal[1])});
        report.vertices += corners.positions.size();
    }

    void writeIndices(GltfCorners const& corners, bool isMirrored)
    {
        std::size_t const step = corners.cornersOfAShape;
        constexpr char const* words[] = {"", "p", "l", "f"};
        for (std::size_t shape = 0; shape + step <= corners.indices.size(); shape += step) {
            text.begin(words[step]);
            for (std::size_t i = 0; i < step; ++i) {
                // In mirrors faces are seen from the side on which their corners go to the right.
                std::size_t const at = shape + (isMirrored && i > 0 ? step - i : i);
                std::uint64_t const corner = corners.indices[at] + 1;
                text.corner(positions + corner, corners.uvs.empty() ? 0 : uvs + corner,
                            corners.normals.empty() ? 0 : normals + corner);
            }
            text.end();
            report.triangles += step == 3 ? 1 : 0;
        }
        positions += corners.positions.size();
        uvs += corners.uvs.size();
        normals += corners.normals.size();
    }

    double metresPerUnit;
    bool lifts;
    ObjMaterials& materials;
    FltGltfLosses& losses;
    std::string object;
    std::uint64_t positions = 0, uvs = 0, normals = 0; ///< That stand in the text.
};

} // namespace

FltGltfReport FltObj::write(FltVisual const& visual, std::string const& path, FltGltfOptions const& options)
{
    namespace fs = std::filesystem;
    std::string const materialPath = fs::path(path).replace_extension(".mtl").string();
    GltfPicture::Source const source{FltReadableTree(options.onlyBelow), options.largestFile};
    FltGltfFiles files(visual, path, "");
    FltGltfLosses losses;
    ObjMaterials materials(files, visual.textures, source, losses);
    ObjShapes shapes(visual, options, materials, losses);
    shapes.text.line("mtllib", fs::path(materialPath).filename().string());
    FltVisualWalk walk(visual.root);
    while (walk.next())
        shapes.add(walk.mesh(), walk.matrix(), walk.name());
    tellWhatIsLost(visual, losses);

    FltGltfReport report = shapes.report;
    files.add(materialPath, [&](auto const& take) { take(materials.text()); });
    files.add(path, [&](auto const& take) { take(shapes.text.text()); });
    report.files = files.commit();
    report.bytes = shapes.text.text().size();
    report.materials = materials.count();
    report.images = materials.pictureCount();
    report.missingTextures = materials.missing();
    report.omissions = losses.list();
    return report;
}
