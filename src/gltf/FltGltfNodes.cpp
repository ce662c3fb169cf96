#include "gltf/FltGltfNodes.h"

#include "gltf/FltGltfExtras.h"
#include "gltf/GltfColors.h"
#include "toolkit/StackSpace.h"
#include "visual/FltJointMotion.h"
#include "visual/FltNodeMatrix.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace
{

using List = GltfDocument::List;

constexpr char const* tooLarge = "parts that would make the file too large";

/// Text of the nodes that every database may have, and for each byte of its own.
constexpr std::size_t mostTextOfAny = std::size_t(128) << 20, mostTextPerByte = 64;

constexpr std::size_t stackForALevel = std::size_t(64) << 10;

/// No database has such places.
constexpr double endless = 1e30;

bool isKnown(SbDPMatrix const& matrix)
{
    for (int row = 0; row < 4; ++row)
        for (int column = 0; column < 3; ++column)
            if (!(std::abs(matrix[row][column]) < endless))
                return false;
    return true;
}

/// Brings the direction in which lights of glTF shine to the one of a light, and their place to its.
SbDPMatrix matrixOf(FltVisualLight const& light)
{
    using Kind = FltVisualLight::Kind;
    SbDPMatrix matrix = SbDPMatrix::identity();
    SbVec3d direction(light.direction);
    if (light.kind != Kind::local && direction.normalize() > 0)
        matrix.setRotate(SbDPRotation(SbVec3d(0, 0, -1), direction));
    if (light.kind != Kind::infinite)
        matrix.multRight(FltNodeMatrix::by(light.position));
    return matrix;
}

GltfTransform transformOf(FltJointMotion const& motion)
{
    float const* const q = motion.rotation.getValue();
    auto const part = [q](int i) { return static_cast<double>(q[i]); };
    return {SbVec3d(motion.translation), SbDPRotation(part(0), part(1), part(2), part(3)),
            SbVec3d(motion.scale)};
}

/// The number of the level that is drawn: the finest that there is.
std::size_t finestOf(FltVisualNode const& node)
{
    auto const isThere = [](std::shared_ptr<FltVisualNode> const& level) { return level != nullptr; };
    return static_cast<std::size_t>(std::find_if(node.children.begin(), node.children.end(), isThere) -
                                    node.children.begin());
}

/// Levels that aren't drawn where the finest is.
std::uint64_t countCoarser(FltVisualNode const& node, FltVisualLevels const& levels)
{
    auto const isThere = [](std::shared_ptr<FltVisualNode> const& level) { return level != nullptr; };
    std::size_t const end = std::min(levels.endOfDrawn(finestOf(node)), node.children.size());
    return static_cast<std::uint64_t>(std::count_if(node.children.begin() + static_cast<std::ptrdiff_t>(end),
                                                    node.children.end(), isThere));
}

bool hasRanges(FltVisualNode const& node)
{
    return node.children.empty() || node.children.front() == nullptr || node.children.back() == nullptr;
}

/// The part of a screen of sixty degrees that a ball covers.
double coverageOf(double radius, double distance)
{
    constexpr double halfOfScreen = 0.57735026918962576; // at a distance of 1
    double const part = radius / (distance * halfOfScreen);
    return std::isfinite(part) ? std::min(1.0, part * part) : 1;
}

GltfJson jsonOf(FltVisualLight const& light)
{
    using Kind = FltVisualLight::Kind;
    constexpr double pi = 3.14159265358979323846, narrowest = 1e-3, nearlyAll = 0.9999;
    GltfJson color = GltfJson::array();
    for (int i = 0; i < 3; ++i)
        color.push_back(GltfValues::part(GltfColors::linear(static_cast<double>(light.color[i]))));
    GltfJson json = {{"color", std::move(color)}, {"intensity", pi}};
    json["type"] = light.kind == Kind::infinite ? "directional" : light.kind == Kind::spot ? "spot" : "point";
    if (light.kind == Kind::spot) {
        double const outer = std::clamp(static_cast<double>(light.cutOffAngle), narrowest, pi / 2);
        double const inner = outer * std::clamp(1 - static_cast<double>(light.dropOffRate), 0.0, nearlyAll);
        json["spot"] = {{"innerConeAngle", inner}, {"outerConeAngle", outer}};
    }
    return json;
}

/// Whether a node is a group, all of which is seen.
bool isPlainGroup(FltVisualNode const& node)
{
    return std::holds_alternative<std::monostate>(node.content) && !node.isHidden &&
           std::none_of(node.meshes.begin(), node.meshes.end(),
                        [](FltMesh const& mesh) { return mesh.isHidden; });
}

/// What a node of glTF does that has a matrix; nothing where it takes several nodes, and where it mirrors.
std::optional<GltfTransform> oneTransformOf(SbDPMatrix matrix)
{
    if (!FltNodeMatrix::makeAffine(matrix) || !isKnown(matrix) || !(matrix.det3() > 0))
        return std::nullopt;
    GltfTransforms const parts(matrix);
    if (parts.isSingular || parts.nodes.size() > 1)
        return std::nullopt;
    return parts.nodes.empty() ? GltfTransform() : parts.nodes.front();
}

/// A visual without a root holds nothing.
std::shared_ptr<FltVisualNode> rootOf(FltVisual const& visual)
{
    return visual.root != nullptr ? std::const_pointer_cast<FltVisualNode>(visual.root)
                                  : std::make_shared<FltVisualNode>();
}

} // namespace

FltGltfNodes::FltGltfNodes(FltVisual const& visual, FltGltfOptions const& options, GltfDocument& document,
                           FltGltfMeshes& meshes, FltGltfLosses& losses)
    : visual(visual), options(options), document(document), meshes(meshes), losses(losses),
      instances(document), root(rootOf(visual)), zeros(*root, visual.metresPerUnit),
      mostText(mostTextOfAny + mostTextPerByte * static_cast<std::size_t>(visual.info.bytes))
{
}

int FltGltfNodes::write()
{
    SbVec3d const zero = zeros.of(*root, {0, 0, 0}).around;
    std::vector<int> children;
    Place place;
    place.around = zero;
    place.outer = FltNodeMatrix::by(-zero);
    place.metresPerUnit = visual.metresPerUnit;
    addChild(children, root, place, {});
    std::string const name = GltfValues::text(visual.info.name);
    GltfJson top = {{"name", name.empty() ? "database" : name}};
    // Databases have z up, glTF has y up.
    constexpr double halfRoot = 0.70710678118654752;
    top["rotation"] = {-halfRoot, 0.0, 0.0, halfRoot};
    if (zero != SbVec3d(0, 0, 0))
        top["translation"] = GltfValues::list({zero[0], zero[2], -zero[1]});
    if (options.hasExtras)
        top["extras"] = FltGltfExtras::ofWhole(visual, zero + SbVec3d(visual.info.offset));
    if (options.hasExtras && options.globe)
        top["extras"]["globe"] = FltGltfExtras::of(FltGlobeFrame(*options.globe));
    if (!children.empty())
        top["children"] = children;
    return document.add(List::nodes, top);
}

bool FltGltfNodes::hasRoom() const
{
    return document.textSize(List::nodes) < mostText && StackSpace::holds(stackForALevel);
}

void FltGltfNodes::addChild(std::vector<int>& list, std::shared_ptr<FltVisualNode> const& node,
                            Place const& place, Child const& child)
{
    if (node == nullptr)
        return;
    bool const isDrawn = !node->isHidden && child.isShown;
    if (!isDrawn && !options.keepsHidden) {
        losses.add(node->isHidden ? "hidden parts" : "children of switches that aren't shown");
        return;
    }
    if (!hasRoom()) {
        losses.add(tooLarge);
        return;
    }
    hiddenAround += isDrawn ? 0 : 1;
    list.push_back(writeNode(node, place, child));
    hiddenAround -= isDrawn ? 0 : 1;
}

int FltGltfNodes::writeNode(std::shared_ptr<FltVisualNode> const& node, Place const& place,
                            Child const& child)
{
    Chain chain;
    Place inside = enter(*node, place, chain);
    inside.isShared = place.isShared || node.use_count() > 1;
    tellWhatIsLost(*node);
    std::vector<int> children = writeChildren(*node, inside);
    return finish(*node, chain, inside, child, children);
}

/// @return where the children and meshes of a node stand
FltGltfNodes::Place FltGltfNodes::enter(FltVisualNode const& node, Place const& place, Chain& chain)
{
    FltLocalZeros::Zeros const own = zeros.of(node, place.around);
    Place inside = place;
    inside.around = own.inside;
    inside.outer = FltNodeMatrix::by(-own.inside);
    if (auto const* const joint = node.as<FltVisualJoint>())
        enterJoint(node, *joint, place, inside, chain);
    else if (auto const* const light = node.as<FltVisualLight>())
        addMatrix(matrixOf(*light) * FltNodeMatrix::ofTransform(node) * place.outer, inside, chain);
    else if (node.as<FltVisualCopies>() != nullptr)
        inside.outer = FltNodeMatrix::ofTransform(node) * place.outer; // what each copy adds its place to
    else
        addMatrix(FltNodeMatrix::by(own.inside) * FltNodeMatrix::of(node) * place.outer, inside, chain);
    return inside;
}

/// A joint is a node for its frame, one that moves in it, and one that leads out of the frame again.
void FltGltfNodes::enterJoint(FltVisualNode const& node, FltVisualJoint const& joint, Place const& place,
                              Place& inside, Chain& chain)
{
    SbDPMatrix const frame = joint.frame.value_or(SbDPMatrix::identity());
    addMatrix(frame * place.outer, inside, chain);
    chain.named = chain.transforms.size();
    FltJointMotion const motion(joint);
    SbDPMatrix matrix(motion.matrix());
    if (inside.workedIn || !isKnown(matrix)) {
        addMatrix(matrix, inside, chain);
    } else {
        chain.transforms.push_back(transformOf(motion));
        inside.metresPerUnit *= std::cbrt(std::abs(matrix.det3()));
    }
    addMatrix(FltNodeMatrix::by(inside.around) * FltNodeMatrix::ofTransform(node) * frame.inverse(), inside,
              chain);
}

void FltGltfNodes::addMatrix(SbDPMatrix matrix, Place& inside, Chain& chain)
{
    bool const isSame = FltNodeMatrix::makeAffine(matrix);
    bool const isPlace = isKnown(matrix);
    if (!isPlace)
        matrix = SbDPMatrix::identity();
    if (!isSame || !isPlace)
        losses.add("transformations with perspective, or of no numbers");
    if (inside.workedIn) {
        inside.workedIn->multLeft(matrix);
        return;
    }
    GltfTransforms const parts(matrix);
    if (parts.isSingular) {
        inside.workedIn = matrix;
        return;
    }
    chain.transforms.insert(chain.transforms.end(), parts.nodes.begin(), parts.nodes.end());
    inside.metresPerUnit *= std::cbrt(std::abs(matrix.det3()));
}

std::vector<int> FltGltfNodes::writeChildren(FltVisualNode const& node, Place const& inside)
{
    std::vector<int> list;
    if (node.as<FltVisualLevels>() != nullptr) {
        writeLevels(node, inside, list);
    } else if (node.as<FltVisualSwitch>() != nullptr || node.as<FltVisualFlipBook>() != nullptr) {
        writeChosen(node, inside, list);
    } else if (auto const* const copies = node.as<FltVisualCopies>()) {
        bool const areTold =
            node.children.size() == 1 && writeAtOnce(list, *node.children.front(), *copies, inside);
        for (SbDPMatrix const& matrix : areTold ? std::vector<SbDPMatrix>() : copies->places) {
            Place place = inside;
            place.outer = matrix * inside.outer;
            for (std::shared_ptr<FltVisualNode> const& child : node.children)
                addChild(list, child, place, {});
        }
    } else {
        for (std::shared_ptr<FltVisualNode> const& child : node.children)
            addChild(list, child, inside, {});
    }
    return list;
}

/// Where a part stands at each of the places of its parent.
FltGltfNodes::Copies FltGltfNodes::enter(FltVisualNode const& part, Copies const& copies)
{
    Copies inside = {zeros.of(part, copies.around).inside, copies.metresPerUnit, {}};
    for (SbDPMatrix const& matrix : copies.matrices)
        inside.matrices.push_back(FltNodeMatrix::by(inside.around) * FltNodeMatrix::of(part) * matrix);
    return inside;
}

/// Where the children of a part stand. @param inside where it stands itself
FltGltfNodes::Copies FltGltfNodes::forChildren(Copies inside)
{
    for (SbDPMatrix& matrix : inside.matrices)
        matrix = FltNodeMatrix::by(-inside.around) * matrix;
    return inside;
}

/// Whether all copies of a part can be told at once: it is made of groups and meshes alone, and needs no more
/// than a node at each place.
bool FltGltfNodes::areOfOneKind(FltVisualNode const& part, Copies const& copies)
{
    if (!isPlainGroup(part) || !hasRoom())
        return false;
    std::uint64_t const count = (1 + part.meshes.size()) * copies.matrices.size();
    if (count > copiesLeft)
        return false;
    copiesLeft -= count;
    Copies inside = enter(part, copies);
    bool const areOne = part.meshes.empty() || std::all_of(inside.matrices.begin(), inside.matrices.end(),
                                                           [](SbDPMatrix const& matrix) {
                                                               return oneTransformOf(matrix).has_value();
                                                           });
    Copies const below = forChildren(std::move(inside));
    return areOne && std::all_of(part.children.begin(), part.children.end(), [&](auto const& child) {
               return child != nullptr && areOfOneKind(*child, below);
           });
}

/// Writes all copies of a part. @return the number of its node
int FltGltfNodes::writeCopies(FltVisualNode const& part, Copies const& copies)
{
    Copies inside = enter(part, copies);
    Place place;
    place.around = inside.around;
    place.isShared = true;
    std::vector<GltfTransform> transforms;
    for (SbDPMatrix const& matrix : part.meshes.empty() ? std::vector<SbDPMatrix>() : inside.matrices)
        transforms.push_back(oneTransformOf(matrix).value_or(GltfTransform()));
    place.metresPerUnit = inside.metresPerUnit * std::cbrt(std::abs(inside.matrices.front().det3()));
    std::vector<int> children;
    Copies const below = forChildren(std::move(inside));
    for (std::shared_ptr<FltVisualNode> const& child : part.children)
        if (hasRoom())
            children.push_back(writeCopies(*child, below));
        else
            losses.add(tooLarge);
    for (FltGltfMeshes::Written const& mesh : meshes.of(part, meshPlaceOf(place), options.keepsHidden)) {
        triangleCount += hiddenAround == 0 ? mesh.triangles * transforms.size() : 0;
        children.push_back(instances.add(mesh.number, mesh.stand, mesh.step, transforms));
    }
    GltfJson json = GltfJson::object();
    if (!part.name.empty())
        json["name"] = GltfValues::text(part.name);
    if (!children.empty())
        json["children"] = children;
    if (GltfJson extras = options.hasExtras ? extrasOf(part, place) : GltfJson::object(); !extras.empty())
        json["extras"] = std::move(extras);
    return document.add(List::nodes, json);
}

/// Tells all copies of a part at once, if there is such a form. @return whether that is so
bool FltGltfNodes::writeAtOnce(std::vector<int>& list, FltVisualNode const& part,
                               FltVisualCopies const& copies, Place const& inside)
{
    if (!options.usesInstancing || copies.places.size() < 2 || inside.workedIn)
        return false;
    Copies all = {inside.around, inside.metresPerUnit, {}};
    for (SbDPMatrix const& copy : copies.places)
        all.matrices.push_back(copy * inside.outer);
    if (!areOfOneKind(part, all))
        return false;
    list.push_back(writeCopies(part, all));
    return true;
}

/// The finest level, and coarser ones that stay where it is drawn, the coarsest first.
void FltGltfNodes::writeLevels(FltVisualNode const& node, Place const& inside, std::vector<int>& list)
{
    std::size_t const first = finestOf(node);
    std::size_t const end = std::min(node.as<FltVisualLevels>()->endOfDrawn(first), node.children.size());
    for (std::size_t i = end; i > first; --i)
        addChild(list, node.children[i - 1], inside,
                 keepsCoarser(node) ? writeCoarser(node, first, inside) : Child{i - 1});
}

/// Writes all levels but the finest, which nothing but the finest leads to. @return what it has to tell
FltGltfNodes::Child FltGltfNodes::writeCoarser(FltVisualNode const& node, std::size_t finest,
                                               Place const& inside)
{
    Child child;
    child.number = finest;
    std::vector<double> const& distances = node.as<FltVisualLevels>()->distances;
    double const radius =
        bounds.radiusOf(*node.children[finest]) * inside.metresPerUnit / visual.metresPerUnit;
    std::size_t last = finest;
    ++hiddenAround;
    for (std::size_t i = finest + 1; i < node.children.size(); ++i) {
        std::size_t const before = child.coarser.size();
        addChild(child.coarser, node.children[i], inside, Child{i});
        if (child.coarser.size() == before)
            continue;
        double const least = last < distances.size() ? coverageOf(radius, distances[i - 1]) : 0;
        child.coverages.push_back(child.coverages.empty() ? least : std::min(least, child.coverages.back()));
        last = i;
    }
    --hiddenAround;
    child.coverages.push_back(0);
    return child;
}

/// Whether all levels are written. Those that add to each other have no such form.
bool FltGltfNodes::keepsCoarser(FltVisualNode const& node) const
{
    std::size_t const finest = finestOf(node);
    return options.keepsLevels && node.as<FltVisualLevels>()->nextStays.empty() &&
           finest < node.children.size() && (options.keepsHidden || !node.children[finest]->isHidden);
}

bool FltGltfNodes::isShown(FltVisualNode const& node, std::size_t child)
{
    auto const* const choice = node.as<FltVisualSwitch>();
    return choice != nullptr ? choice->shows(choice->currentMask, child) : child == FltVisualFlipBook::first;
}

void FltGltfNodes::writeChosen(FltVisualNode const& node, Place const& inside, std::vector<int>& list)
{
    bool const isFlipBook = node.as<FltVisualFlipBook>() != nullptr;
    for (std::size_t i = 0; i < node.children.size(); ++i)
        if (!isFlipBook || options.keepsHidden || isShown(node, i))
            addChild(list, node.children[i], inside, Child{i, isShown(node, i)});
}

/// Writes the nodes that a node of the visual becomes. @return the number of the outermost
int FltGltfNodes::finish(FltVisualNode const& node, Chain const& chain, Place const& inside,
                         Child const& child, std::vector<int>& children)
{
    GltfJson content = contentOf(node, inside, children);
    std::size_t const last = std::max({chain.transforms.size(), chain.named + 1, std::size_t(1)}) - 1;
    int number = none;
    for (std::size_t i = last + 1; i > 0; --i) {
        std::size_t const at = i - 1;
        GltfJson json = GltfJson::object();
        GltfJson extras = GltfJson::object();
        if (at == chain.named) {
            if (!node.name.empty())
                json["name"] = GltfValues::text(node.name);
            if (options.hasExtras)
                extras = extrasOf(node, inside);
        }
        if (at < chain.transforms.size())
            chain.transforms[at].addTo(json);
        if (number != none)
            json["children"] = GltfJson::array({number});
        if (at == last)
            json.update(content);
        if (at == 0)
            tellOfPlace(node, child, json, extras);
        if (!extras.empty())
            json["extras"] = std::move(extras);
        number = document.add(List::nodes, json);
    }
    return number;
}

/// What the outermost node of a child tells of where it stands in its parent.
void FltGltfNodes::tellOfPlace(FltVisualNode const& node, Child const& child, GltfJson& json,
                               GltfJson& extras)
{
    if (options.hasExtras && child.number)
        extras["child"] = *child.number;
    if (!child.coarser.empty()) {
        document.use("MSFT_lod");
        json["extensions"]["MSFT_lod"] = {{"ids", child.coarser}};
        extras["MSFT_screencoverage"] = child.coverages;
    }
    if (node.isHidden || !child.isShown) {
        document.use("KHR_node_visibility");
        json["extensions"]["KHR_node_visibility"] = {{"visible", false}};
    }
}

GltfJson FltGltfNodes::extrasOf(FltVisualNode const& node, Place const& inside)
{
    GltfJson extras = FltGltfExtras::of(node, inside.around);
    if (auto const* const joint = node.as<FltVisualJoint>())
        extras["joint"] = FltGltfExtras::of(*joint);
    if (auto const* const file = node.as<FltVisualFile>()) {
        std::optional<std::string> const address =
            options.addressOf ? options.addressOf(file->path) : std::optional(file->path);
        if (address)
            extras["reference"] = GltfValues::text(*address);
    }
    return extras;
}

FltGltfMeshes::Place FltGltfNodes::meshPlaceOf(Place const& inside) const
{
    return {inside.around, inside.metresPerUnit, inside.workedIn ? &*inside.workedIn : nullptr, options.lifts,
            inside.isShared};
}

/// What stands in a node itself.
GltfJson FltGltfNodes::contentOf(FltVisualNode const& node, Place const& inside, std::vector<int>& children)
{
    GltfJson content = GltfJson::object();
    if (auto const* const light = node.as<FltVisualLight>())
        content["extensions"]["KHR_lights_punctual"] = {{"light", addLight(*light)}};
    for (FltGltfMeshes::Written const& mesh : meshes.of(node, meshPlaceOf(inside), options.keepsHidden)) {
        bool const isDrawn = hiddenAround == 0 && !mesh.isHidden;
        triangleCount += isDrawn ? mesh.triangles : 0;
        if (mesh.isRightIn()) {
            content["mesh"] = mesh.number;
            continue;
        }
        GltfJson own = {{"mesh", mesh.number}};
        GltfTransform transform;
        transform.translation = mesh.stand;
        transform.scale *= mesh.step;
        transform.addTo(own);
        if (mesh.isHidden) {
            document.use("KHR_node_visibility");
            own["extensions"]["KHR_node_visibility"] = {{"visible", false}};
        }
        children.push_back(document.add(List::nodes, own));
    }
    if (!children.empty())
        content["children"] = children;
    return content;
}

int FltGltfNodes::addLight(FltVisualLight const& light)
{
    document.use("KHR_lights_punctual");
    GltfJson const json = jsonOf(light);
    auto const [known, isNew] = lights.try_emplace(json.dump());
    if (isNew)
        known->second = document.add(List::lights, json);
    return known->second;
}

void FltGltfNodes::tellWhatIsLost(FltVisualNode const& node)
{
    if (node.as<FltVisualTurning>() != nullptr)
        losses.add("turning faces, which stand still");
    if (node.as<FltVisualText>() != nullptr)
        losses.add("texts");
    if (node.as<FltVisualFlipBook>() != nullptr)
        losses.add("flip-books that play");
    if (node.as<FltVisualFile>() != nullptr)
        losses.add("other files, which readers don't open");
    if (!options.hasExtras && node.as<FltVisualJoint>() != nullptr)
        losses.add("limits of degrees of freedom");
    if (auto const* const light = node.as<FltVisualLight>()) {
        losses.add("lights that shine on a part alone");
        if (light->kind != FltVisualLight::Kind::infinite)
            losses.add("attenuation of lights");
    }
    if (auto const* const levels = node.as<FltVisualLevels>()) {
        if (!keepsCoarser(node))
            losses.add("coarser levels of detail", countCoarser(node, *levels));
        if (options.keepsLevels && !levels->nextStays.empty())
            losses.add("levels of detail that add to each other");
        if (hasRanges(node))
            losses.add("ranges of levels of detail");
    }
}
