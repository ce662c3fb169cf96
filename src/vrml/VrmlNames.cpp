#include "vrml/VrmlNames.h"

#include "toolkit/SoNodeName.h"

#include <algorithm>
#include <array>

namespace
{

bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

bool isPlain(char character)
{
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z') ||
           isDigit(character) || character == '_';
}

/// Readers are known that take these for a value wherever a name begins with them.
constexpr std::array<std::string_view, 3> values = {"TRUE", "FALSE", "NULL"};

/// And these where they are a whole name. The types are those of nodes.
constexpr std::array<std::string_view, 65> words = {"DEF",
                                                    "USE",
                                                    "PROTO",
                                                    "EXTERNPROTO",
                                                    "ROUTE",
                                                    "TO",
                                                    "IS",
                                                    "eventIn",
                                                    "eventOut",
                                                    "field",
                                                    "exposedField",
                                                    "Anchor",
                                                    "Appearance",
                                                    "AudioClip",
                                                    "Background",
                                                    "Billboard",
                                                    "Box",
                                                    "Collision",
                                                    "Color",
                                                    "ColorInterpolator",
                                                    "Cone",
                                                    "Coordinate",
                                                    "CoordinateInterpolator",
                                                    "Cylinder",
                                                    "CylinderSensor",
                                                    "DirectionalLight",
                                                    "ElevationGrid",
                                                    "Extrusion",
                                                    "Fog",
                                                    "FontStyle",
                                                    "Group",
                                                    "ImageTexture",
                                                    "IndexedFaceSet",
                                                    "IndexedLineSet",
                                                    "Inline",
                                                    "LOD",
                                                    "Material",
                                                    "MovieTexture",
                                                    "NavigationInfo",
                                                    "Normal",
                                                    "NormalInterpolator",
                                                    "OrientationInterpolator",
                                                    "PixelTexture",
                                                    "PlaneSensor",
                                                    "PointLight",
                                                    "PointSet",
                                                    "PositionInterpolator",
                                                    "ProximitySensor",
                                                    "ScalarInterpolator",
                                                    "Script",
                                                    "Shape",
                                                    "Sound",
                                                    "Sphere",
                                                    "SphereSensor",
                                                    "SpotLight",
                                                    "Switch",
                                                    "Text",
                                                    "TextureCoordinate",
                                                    "TextureTransform",
                                                    "TimeSensor",
                                                    "TouchSensor",
                                                    "Transform",
                                                    "Viewpoint",
                                                    "VisibilitySensor",
                                                    "WorldInfo"};

bool isMistakable(std::string_view name)
{
    auto const begins = [name](std::string_view value) { return name.substr(0, value.size()) == value; };
    return isDigit(name.front()) || std::any_of(values.begin(), values.end(), begins) ||
           std::find(words.begin(), words.end(), name) != words.end();
}

} // namespace

std::string VrmlNames::take(std::string_view wanted)
{
    if (wanted.empty())
        return "";
    std::string plain(wanted.substr(0, SoNodeName::longest));
    std::replace_if(
        plain.begin(), plain.end(), [](char character) { return !isPlain(character); }, '_');
    if (isMistakable(plain))
        plain.insert(plain.begin(), '_');
    std::string name = plain;
    for (std::size_t& number = numbers.try_emplace(plain, 1).first->second; !taken.insert(name).second;)
        name = plain + '_' + std::to_string(++number);
    return name;
}
