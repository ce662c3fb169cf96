#include "loader/FltSceneContent.h"

#include <Inventor/SoPath.h>
#include <Inventor/SoPickedPoint.h>
#include <Inventor/details/SoFaceDetail.h>
#include <Inventor/details/SoLineDetail.h>
#include <Inventor/details/SoPointDetail.h>
#include <algorithm>
#include <utility>

namespace
{

/// Has the records know all nodes of the scene. The first call does it, from whatever thread.
void noteParts(FltScene::Content& content)
{
    std::call_once(content.partsNoted, [&content] {
        if (content.root.get() != nullptr && !content.records.isEmpty())
            content.records.addParts(*content.root);
    });
}

/// The place of what a node stands for in a list of switches or joints.
template <class Part>
std::optional<std::size_t> placeOf(SoNode const& node, std::vector<Part> const& parts)
{
    auto const found = std::find_if(parts.begin(), parts.end(), [&](Part const& part) {
        return std::find(part.nodes.begin(), part.nodes.end(), &node) != part.nodes.end();
    });
    if (found == parts.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - parts.begin());
}

/// The number of what was picked of a shape; less than 0 where the shape doesn't tell.
int numberOf(SoDetail const* detail)
{
    if (detail == nullptr)
        return -1;
    if (detail->isOfType(SoFaceDetail::getClassTypeId()))
        return static_cast<SoFaceDetail const*>(detail)->getFaceIndex();
    if (detail->isOfType(SoLineDetail::getClassTypeId()))
        return static_cast<SoLineDetail const*>(detail)->getLineIndex();
    if (detail->isOfType(SoPointDetail::getClassTypeId()))
        return static_cast<SoPointDetail const*>(detail)->getCoordinateIndex();
    return -1;
}

FltScene::Content const& nothing()
{
    static auto const* const content = new FltScene::Content;
    return *content;
}

} // namespace

FltScene::FltScene() = default;
FltScene::~FltScene() = default;
FltScene::FltScene(FltScene&& other) noexcept = default;
FltScene& FltScene::operator=(FltScene&& other) noexcept = default;

FltScene::FltScene(std::unique_ptr<Content> content) : content(std::move(content)) {}

SoSeparator* FltScene::root() const
{
    return content != nullptr ? content->root.get() : nullptr;
}

SoSeparator* FltScene::release()
{
    SoSeparator* const root = this->root();
    if (root == nullptr)
        return nullptr;
    root->ref();
    noteParts(*content);
    content->root = {};
    return root;
}

std::vector<FltMessage> const& FltScene::messages() const
{
    return content != nullptr ? content->messages : nothing().messages;
}

std::vector<FltTexture> const& FltScene::textures() const
{
    return content != nullptr ? content->textures : nothing().textures;
}

std::vector<FltReference> const& FltScene::references() const
{
    return content != nullptr ? content->references : nothing().references;
}

std::vector<FltOmission> const& FltScene::omissions() const
{
    return content != nullptr ? content->omissions : nothing().omissions;
}

FltDatabaseInfo const& FltScene::info() const
{
    return content != nullptr ? content->info : nothing().info;
}

std::vector<FltSwitch> FltScene::switches() const
{
    auto const& switches = (content != nullptr ? *content : nothing()).switches;
    return {switches.begin(), switches.end()};
}

bool FltScene::chooseMask(std::string const& switchName, int mask)
{
    bool isChosen = false;
    if (content != nullptr)
        for (FltSceneSwitch& each : content->switches)
            if (each.name == switchName)
                isChosen = each.choose(mask) || isChosen;
    return isChosen;
}

bool FltScene::show(std::size_t index, int mask)
{
    return content != nullptr && index < content->switches.size() && content->switches[index].choose(mask);
}

std::optional<std::size_t> FltScene::switchOf(SoNode const& node) const
{
    return placeOf(node, (content != nullptr ? *content : nothing()).switches);
}

std::vector<FltDegreeOfFreedom> FltScene::degreesOfFreedom() const
{
    auto const& joints = (content != nullptr ? *content : nothing()).joints;
    return {joints.begin(), joints.end()};
}

bool FltScene::move(std::size_t index, FltDegreeOfFreedom const& values)
{
    if (content == nullptr || index >= content->joints.size())
        return false;
    content->joints[index].move(values);
    return true;
}

std::optional<std::size_t> FltScene::degreeOfFreedomOf(SoNode const& node) const
{
    return placeOf(node, (content != nullptr ? *content : nothing()).joints);
}

std::vector<FltVisualFlipBook> FltScene::flipBooks() const
{
    auto const& flipBooks = (content != nullptr ? *content : nothing()).flipBooks;
    return {flipBooks.begin(), flipBooks.end()};
}

bool FltScene::play(bool isPlaying)
{
    if (content == nullptr)
        return false;
    for (FltSceneFlipBook& each : content->flipBooks)
        each.play(isPlaying);
    return !content->flipBooks.empty();
}

std::optional<FltRecordPlace> FltScene::recordOf(SoNode const& node) const
{
    if (content == nullptr)
        return std::nullopt;
    noteParts(*content);
    FltNodeRecords::Entry const* const entry = content->records.find(node);
    if (entry == nullptr)
        return std::nullopt;
    return FltRecordPlace{content->files[entry->second.file], entry->second.offset, entry->first == &node};
}

std::optional<FltRecordPlace> FltScene::recordOf(SoPickedPoint const& picked) const
{
    SoNode const& shape = *picked.getPath()->getTail();
    FltNodeRecords::Record const* const part =
        content != nullptr ? content->records.findPart(shape, numberOf(picked.getDetail())) : nullptr;
    if (part == nullptr || part->offset == FltNodeRecords::Record::none)
        return recordOf(shape);
    return FltRecordPlace{content->files[part->file], part->offset, false};
}
