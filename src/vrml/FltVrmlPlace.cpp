#include "vrml/FltVrmlPlace.h"

#include <Inventor/SbDPRotation.h>
#include <Inventor/SbVec3d.h>
#include <cmath>

namespace
{

SbDPMatrix turnedX()
{
    SbDPMatrix matrix = SbDPMatrix::identity();
    matrix[0][0] = -1;
    return matrix;
}

bool isTranslation(SbDPMatrix matrix)
{
    matrix[3][0] = matrix[3][1] = matrix[3][2] = 0;
    return matrix == SbDPMatrix::identity();
}

/// Two lengths, of which one is the other but for rounding.
bool areEqual(double a, double b)
{
    constexpr double rounding = 1e-12;
    return std::abs(a - b) <= rounding * (std::abs(a) + std::abs(b));
}

bool areEqual(SbVec3d const& lengths)
{
    return areEqual(lengths[0], lengths[1]) && areEqual(lengths[0], lengths[2]);
}

void write(VrmlText& text, SbDPRotation const& rotation)
{
    SbVec3d axis;
    double angle = 0;
    rotation.getValue(axis, angle);
    if (angle != 0)
        text.field("rotation", {axis[0], axis[1], axis[2], angle});
}

void beginTransform(VrmlText& text, std::string const& name, SbVec3d const& translation,
                    SbDPRotation const& rotation, SbVec3d const& scale)
{
    text.begin("Transform", name);
    if (translation != SbVec3d(0, 0, 0))
        text.field("translation", translation);
    write(text, rotation);
    if (!areEqual(scale) || !areEqual(scale[0], 1))
        text.field("scale", scale);
    text.beginList("children");
}

} // namespace

int FltVrmlPlace::begin(VrmlText& text, SbDPMatrix const& matrix, std::string const& name)
{
    if (matrix == SbDPMatrix::identity())
        return name.empty() ? 0 : beginGroup(text, name);
    double const volume = matrix.det3();
    FltVrmlPlace const above = *this;
    isMirrored = above.isMirrored != (volume < 0);
    scale = above.scale * (volume != 0 ? std::cbrt(std::abs(volume)) : 1);
    SbDPMatrix proper = matrix;
    if (isMirrored)
        proper.multLeft(turnedX());
    if (above.isMirrored)
        proper.multRight(turnedX());

    SbVec3d translation(proper[3][0], proper[3][1], proper[3][2]);
    SbDPRotation rotation = SbDPRotation::identity();
    SbVec3d factors(1, 1, 1);
    SbDPRotation direction = SbDPRotation::identity();
    if (!isTranslation(proper))
        proper.getTransform(translation, rotation, factors, direction);
    if (areEqual(factors) || std::abs(direction.getValue()[3]) == 1) {
        beginTransform(text, name, translation, rotation, factors);
        return 1;
    }
    // Readers are known that pass over the field for a scale along other directions than the axes: so it is
    // turned to the axes first, and back with the rotation.
    SbDPMatrix turn;
    SbDPMatrix back;
    turn.setRotate(rotation);
    back.setRotate(direction);
    turn.multLeft(back);
    beginTransform(text, name, translation, SbDPRotation(turn), factors);
    beginTransform(text, "", SbVec3d(0, 0, 0), direction.inverse(), SbVec3d(1, 1, 1));
    return 2;
}

int FltVrmlPlace::beginGroup(VrmlText& text, std::string const& name)
{
    text.begin("Group", name);
    text.beginList("children");
    return 1;
}

void FltVrmlPlace::end(VrmlText& text, int nodes)
{
    for (int i = 0; i < nodes; ++i) {
        text.endList();
        text.end();
    }
}
