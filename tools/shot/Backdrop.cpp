#include "shot/Backdrop.h"

#include <Inventor/nodes/SoCoordinate3.h>
#include <Inventor/nodes/SoDepthBuffer.h>
#include <Inventor/nodes/SoFaceSet.h>
#include <Inventor/nodes/SoLightModel.h>
#include <Inventor/nodes/SoMaterial.h>
#include <Inventor/nodes/SoMaterialBinding.h>
#include <Inventor/nodes/SoOrthographicCamera.h>
#include <Inventor/nodes/SoSeparator.h>
#include <cstdint>
#include <string_view>

namespace
{

struct NamedColor {
    std::string_view name;
    std::uint32_t value; ///< 0xrrggbb, as in style sheets of the web.
};

constexpr NamedColor namedColors[] = {
    {"black", 0x000000},   {"silver", 0xc0c0c0},  {"gray", 0x808080},  {"grey", 0x808080},
    {"white", 0xffffff},   {"maroon", 0x800000},  {"red", 0xff0000},   {"purple", 0x800080},
    {"fuchsia", 0xff00ff}, {"magenta", 0xff00ff}, {"green", 0x008000}, {"lime", 0x00ff00},
    {"olive", 0x808000},   {"yellow", 0xffff00},  {"navy", 0x000080},  {"blue", 0x0000ff},
    {"teal", 0x008080},    {"aqua", 0x00ffff},    {"cyan", 0x00ffff},  {"orange", 0xffa500},
};

SbColor colorOf(std::uint32_t value)
{
    float transparency = 0;
    SbColor color;
    color.setPackedValue(value << 8 | 0xff, transparency);
    return color;
}

std::optional<SbColor> colorFromText(std::string const& text)
{
    for (NamedColor const& color : namedColors)
        if (color.name == text)
            return colorOf(color.value);
    bool const isNumber = text.size() == 7 && text[0] == '#' &&
                          text.find_first_not_of("0123456789abcdefABCDEF", 1) == std::string::npos;
    if (!isNumber)
        return std::nullopt;
    return colorOf(static_cast<std::uint32_t>(std::stoul(text.substr(1), nullptr, 16)));
}

SoOrthographicCamera* makeCamera()
{
    auto* camera = new SoOrthographicCamera;
    camera->viewportMapping = SoCamera::LEAVE_ALONE;
    camera->aspectRatio = 1;
    camera->height = 2;
    camera->position.setValue(0, 0, 1);
    camera->nearDistance = 0.5f;
    camera->farDistance = 2;
    return camera;
}

} // namespace

Backdrop Backdrop::sky()
{
    return {SbColor(0.36f, 0.55f, 0.80f), SbColor(0.86f, 0.90f, 0.94f)};
}

std::optional<Backdrop> Backdrop::fromText(std::string const& text)
{
    if (text == "sky")
        return sky();
    std::size_t const comma = text.find(',');
    std::optional<SbColor> const top = colorFromText(text.substr(0, comma));
    std::optional<SbColor> const bottom =
        comma != std::string::npos ? colorFromText(text.substr(comma + 1)) : top;
    if (!top || !bottom)
        return std::nullopt;
    return Backdrop(*top, *bottom);
}

SoSeparator* Backdrop::makeNodes() const
{
    auto* nodes = new SoSeparator;
    auto* depth = new SoDepthBuffer;
    depth->test = false;
    depth->write = false;
    nodes->addChild(depth);
    nodes->addChild(makeCamera());
    auto* light = new SoLightModel;
    light->model = SoLightModel::BASE_COLOR;
    nodes->addChild(light);
    auto* material = new SoMaterial;
    SbColor const colors[4] = {bottom, bottom, top, top};
    material->diffuseColor.setValues(0, 4, colors);
    nodes->addChild(material);
    auto* binding = new SoMaterialBinding;
    binding->value = SoMaterialBinding::PER_VERTEX;
    nodes->addChild(binding);
    auto* corners = new SoCoordinate3;
    SbVec3f const points[4] = {{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}};
    corners->point.setValues(0, 4, points);
    nodes->addChild(corners);
    nodes->addChild(new SoFaceSet);
    return nodes;
}
