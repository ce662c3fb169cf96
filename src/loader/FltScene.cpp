#include "loader/FltSceneContent.h"

#include <utility>

namespace
{

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

std::optional<FltRecordPlace> FltScene::recordOf(SoNode const& node) const
{
    FltVisualNode::Record const* const record = content != nullptr ? content->records.find(node) : nullptr;
    if (record == nullptr)
        return std::nullopt;
    return FltRecordPlace{content->files[record->file], record->offset};
}
