#include "loader/FltSceneContent.h"

#include <utility>

namespace
{

FltScene::Content const& nothing()
{
    static auto const* const content = new FltScene::Content;
    return *content;
}

FltDegreeOfFreedom::Range rangeOf(FltCompleteDOF::Range const& range)
{
    return {range.minimum, range.maximum, range.current, range.step, range.isLimited};
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
    std::vector<FltSwitch> list;
    for (FltCompleteSwitch const& each : (content != nullptr ? *content : nothing()).switches) {
        list.push_back({each.name, each.maskNames, each.currentMask});
        list.back().maskNames.resize(static_cast<std::size_t>(each.getMaskCount()));
    }
    return list;
}

bool FltScene::chooseMask(std::string const& switchName, int mask)
{
    bool isChosen = false;
    if (content != nullptr)
        for (FltCompleteSwitch& each : content->switches)
            if (each.name == switchName)
                isChosen = each.choose(mask) || isChosen;
    return isChosen;
}

std::vector<FltDegreeOfFreedom> FltScene::degreesOfFreedom() const
{
    std::vector<FltDegreeOfFreedom> list;
    for (FltCompleteDOF const& dof : (content != nullptr ? *content : nothing()).dofs) {
        FltDegreeOfFreedom& values = list.emplace_back();
        values.name = dof.name;
        for (int axis = 0; axis < 3; ++axis) {
            values.translation[axis] = rangeOf(dof.translation[axis]);
            values.scale[axis] = rangeOf(dof.scale[axis]);
        }
        values.pitch = rangeOf(dof.pitch);
        values.roll = rangeOf(dof.roll);
        values.yaw = rangeOf(dof.yaw);
    }
    return list;
}

bool FltScene::move(std::size_t index, FltDegreeOfFreedom const& values)
{
    if (content == nullptr || index >= content->dofs.size())
        return false;
    FltCompleteDOF& dof = content->dofs[index];
    for (int axis = 0; axis < 3; ++axis) {
        dof.translation[axis].current = values.translation[axis].current;
        dof.scale[axis].current = values.scale[axis].current;
    }
    dof.pitch.current = values.pitch.current;
    dof.roll.current = values.roll.current;
    dof.yaw.current = values.yaw.current;
    dof.apply();
    return true;
}
