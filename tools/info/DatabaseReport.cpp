#include "info/DatabaseReport.h"

#include "loader/FltScene.h"

#include <algorithm>
#include <map>

namespace
{

std::string nameIn(std::map<int, std::string> const& names, int number)
{
    auto const name = names.find(number);
    return name != names.end() ? name->second : "number " + std::to_string(number);
}

} // namespace

std::string DatabaseReport::units() const
{
    using Unit = FltDatabaseInfo::Unit;
    static std::map<int, std::string> const names = [] {
        std::map<int, std::string> all;
        for (Unit const unit :
             {Unit::metres, Unit::kilometres, Unit::feet, Unit::inches, Unit::nauticalMiles})
            all[static_cast<int>(unit)] = FltDatabaseInfo::nameOf(unit);
        return all;
    }();
    return nameIn(names, inventory.header.units);
}

std::string DatabaseReport::projection() const
{
    static std::map<int, std::string> const names = {
        {0, "flat earth"}, {1, "trapezoidal"}, {2, "round earth"}, {3, "Lambert"},
        {4, "UTM"},        {5, "geodetic"},    {6, "geocentric"}};
    return nameIn(names, inventory.header.projection);
}

std::string DatabaseReport::ellipsoid() const
{
    static std::map<int, std::string> const names = {{0, "WGS 1984"}, {1, "WGS 1972"},
                                                     {2, "Bessel"},   {3, "Clarke 1866"},
                                                     {4, "NAD 1927"}, {-1, "defined by the user"}};
    return nameIn(names, inventory.header.ellipsoid);
}

std::vector<std::pair<std::string, std::uint64_t>> DatabaseReport::verticesByForm() const
{
    static std::pair<int, char const*> const forms[] = {{68, "colour"},
                                                        {69, "colour and normal"},
                                                        {71, "colour and uv"},
                                                        {70, "colour, normal and uv"},
                                                        {7, "old, no colour"},
                                                        {8, "old, colour"},
                                                        {9, "old, colour and normal"}};
    std::vector<std::pair<std::string, std::uint64_t>> counts;
    for (auto const& [opcode, name] : forms) {
        auto const facts = inventory.opcodes.find(opcode);
        if (facts != inventory.opcodes.end())
            counts.emplace_back(name, facts->second.count);
    }
    std::uint64_t pooled = 0;
    for (FltInventory::Mesh const& mesh : inventory.meshes)
        pooled += mesh.wholeVertices;
    if (pooled != 0)
        counts.emplace_back("in meshes", pooled);
    return counts;
}

std::uint64_t DatabaseReport::vertices() const
{
    std::uint64_t sum = 0;
    for (auto const& [form, count] : verticesByForm())
        sum += count;
    return sum;
}

std::uint64_t DatabaseReport::missingTextures() const
{
    auto const& all = dependencies.textures();
    return static_cast<std::uint64_t>(
        std::count_if(all.begin(), all.end(),
                      [](FltDependencies::Texture const& texture) { return texture.path.empty(); }));
}

std::uint64_t DatabaseReport::missingReferences() const
{
    auto const& all = dependencies.references();
    return static_cast<std::uint64_t>(
        std::count_if(all.begin(), all.end(), [](FltDependencies::Reference const& reference) {
            return reference.state != FltDependencies::State::found;
        }));
}

std::string DatabaseReport::childrenOf(FltInventory::Switch const& one, int mask, std::uint32_t children)
{
    std::string list;
    for (std::uint32_t child = 0; child < children; ++child)
        if (one.shows(mask, child))
            list += (list.empty() ? "" : " ") + std::to_string(child);
    return list;
}

std::string DatabaseReport::stateOf(FltDependencies::State state)
{
    using State = FltDependencies::State;
    switch (state) {
    case State::found:
        return "found";
    case State::missing:
        return "missing";
    case State::unreadable:
        return "unreadable";
    case State::cycle:
        return "cycle";
    case State::tooDeep:
        return "too deep";
    }
    return "";
}

std::string DatabaseReport::nameOf(FltTextureAttributes::Wrap wrap)
{
    using Wrap = FltTextureAttributes::Wrap;
    switch (wrap) {
    case Wrap::repeat:
        return "repeat";
    case Wrap::clamp:
        return "clamp";
    case Wrap::mirror:
        return "mirror";
    }
    return "";
}

std::string DatabaseReport::nameOf(FltTextureAttributes::Environment environment)
{
    using Environment = FltTextureAttributes::Environment;
    switch (environment) {
    case Environment::modulate:
        return "modulate";
    case Environment::blend:
        return "blend";
    case Environment::decal:
        return "decal";
    case Environment::replace:
        return "replace";
    case Environment::add:
        return "add";
    }
    return "";
}

std::string DatabaseReport::nameOf(FltTextureAttributes::Filter filter)
{
    using Filter = FltTextureAttributes::Filter;
    switch (filter) {
    case Filter::point:
        return "point";
    case Filter::bilinear:
        return "bilinear";
    case Filter::mipmapPoint:
        return "mipmap point";
    case Filter::mipmapLinear:
        return "mipmap linear";
    case Filter::mipmapBilinear:
        return "mipmap bilinear";
    case Filter::mipmapTrilinear:
        return "mipmap trilinear";
    }
    return "";
}
