#pragma once

#include "textures/FltTexture.h"
#include "visual/FltVisualNode.h"

#include <sstream>
#include <string>
#include <vector>

/// All that a visual holds as text, but for where its records stand: two visuals that differ in anything have
/// other texts. Whoever adds a member to a visual adds it here.
class VisualDump
{
public:
    static std::string of(FltVisualNode const& root, std::vector<FltTexture> const& textures)
    {
        VisualDump dump;
        dump.add(root);
        for (FltTexture const& texture : textures)
            dump.list("texture", texture.name);
        return dump.text.str();
    }

private:
    template <class... Values>
    void list(char const* what, Values const&... values)
    {
        text << what;
        (put(values), ...);
        text << '\n';
    }

    template <class Value>
    void put(Value const& value)
    {
        if constexpr (std::is_enum_v<Value>)
            text << ' ' << static_cast<int>(value);
        else
            text << ' ' << value;
    }
    void put(std::uint8_t value) { text << ' ' << static_cast<int>(value); }
    template <class Value>
    void put(std::vector<Value> const& values)
    {
        text << " [";
        for (auto const& value : values)
            put(value);
        text << " ]";
    }
    void put(SbVec2f const& value) { text << ' ' << value[0] << ' ' << value[1]; }
    void put(SbVec3f const& value) { text << ' ' << value[0] << ' ' << value[1] << ' ' << value[2]; }
    void put(SbVec3d const& value) { text << ' ' << value[0] << ' ' << value[1] << ' ' << value[2]; }
    void put(SbColor const& value) { put(static_cast<SbVec3f const&>(value)); }
    void put(SbDPMatrix const& matrix)
    {
        for (auto const& row : matrix.getValue())
            for (double const value : row)
                text << ' ' << value;
    }
    template <class Value>
    void put(std::optional<Value> const& value)
    {
        if (value)
            put(*value);
        else
            text << " none";
    }
    void put(FltDegreeOfFreedom::Range const& range)
    {
        text << ' ' << range.minimum << ' ' << range.maximum << ' ' << range.current << ' ' << range.step
             << ' ' << range.isLimited;
    }
    void put(FltVisualFlipBook::Step const& step) { text << ' ' << step.frame << ' ' << step.seconds; }
    void put(FltMesh::Layer const& layer)
    {
        text << ' ' << layer.number << ' ' << layer.texture;
        put(layer.uvs);
    }

    void add(FltVisualNode const& node)
    {
        list("node", node.name, node.comments, node.isHidden, node.transform, node.content.index());
        if (auto const* const level = node.as<FltVisualLevel>())
            list("level", level->significantSize);
        if (auto const* const levels = node.as<FltVisualLevels>())
            list("levels", levels->distances, levels->center, levels->nextStays);
        if (auto const* const choice = node.as<FltVisualSwitch>())
            list("switch", choice->name, choice->currentMask, choice->wordsPerMask, choice->masks,
                 choice->maskNames);
        if (auto const* const joint = node.as<FltVisualJoint>())
            list("joint", joint->name, joint->frame, joint->translation[0], joint->translation[1],
                 joint->translation[2], joint->pitch, joint->roll, joint->yaw, joint->scale[0],
                 joint->scale[1], joint->scale[2]);
        if (auto const* const copies = node.as<FltVisualCopies>())
            list("copies", copies->places);
        if (auto const* const turning = node.as<FltVisualTurning>())
            list("turning", turning->foot, turning->isAboutPoint, turning->rows[0][0], turning->rows[0][1]);
        if (auto const* const scale = node.as<FltVisualScale>())
            list("scale", scale->factor);
        if (auto const* const light = node.as<FltVisualLight>())
            list("light", light->kind, light->position, light->direction, light->color, light->cutOffAngle,
                 light->dropOffRate, light->attenuation[0], light->attenuation[1], light->attenuation[2]);
        if (auto const* const words = node.as<FltVisualText>())
            list("text", words->lines, words->place, words->size, words->isLying, words->alignment,
                 words->color);
        if (auto const* const file = node.as<FltVisualFile>())
            list("file", file->path);
        if (auto const* const book = node.as<FltVisualFlipBook>())
            list("flip-book", book->name, book->steps, book->loops);
        for (std::shared_ptr<FltVisualNode> const& child : node.children)
            if (child != nullptr)
                add(*child);
            else
                list("nothing");
        for (FltMesh const& mesh : node.meshes)
            add(mesh);
        list("end");
    }

    void add(FltMesh const& mesh)
    {
        FltMesh::Material const& material = mesh.material;
        list("mesh", mesh.kind, mesh.isLit, mesh.isTwoSided, mesh.isBlended, mesh.isCutOut,
             mesh.ignoresTextureAlpha, mesh.isHidden, mesh.isOutlined, mesh.level, mesh.size, mesh.texture);
        list("material", material.ambient, material.specular, material.emissive, material.shininess,
             material.isFromPalette);
        list("corners", mesh.origin, mesh.positions, mesh.normals, mesh.uvs, mesh.colors, mesh.layers,
             mesh.indices);
    }

    std::ostringstream text;
};
