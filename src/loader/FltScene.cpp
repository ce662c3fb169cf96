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

char const* FltDatabaseInfo::nameOf(Unit unit)
{
    switch (unit) {
    case Unit::kilometres:
        return "kilometres";
    case Unit::feet:
        return "feet";
    case Unit::inches:
        return "inches";
    case Unit::nauticalMiles:
        return "nautical miles";
    case Unit::metres:
        break;
    }
    return "metres";
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
    return content != nullptr && FltCompleteSwitch::choose(content->switches, switchName, mask);
}

std::vector<FltDegreeOfFreedom> FltScene::degreesOfFreedom() const
{
    auto const& dofs = (content != nullptr ? *content : nothing()).dofs;
    return {dofs.begin(), dofs.end()};
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
