#pragma once

#include <Inventor/SbBox3f.h>

class SoClipPlane;
class SoGroup;

/// Cuts the scene open: what lies beyond a plane across an axis isn't drawn, nor picked.
class SectionPlane
{
public:
    enum class Axis { x, y, z };

    /// @param content gets the plane as its first child
    explicit SectionPlane(SoGroup& content);
    ~SectionPlane();
    SectionPlane(SectionPlane const&) = delete;
    SectionPlane& operator=(SectionPlane const&) = delete;

    /// Between the ends of which it moves.
    void setBox(SbBox3f const& box);

    /// Has it cut. @param part   of the way through the box, from 0 to 1
    /// @param isTurned whether what lies before the plane is left out instead
    void cut(Axis axis, double part, bool isTurned);

    void release(); ///< Has it cut nothing.

private:
    SoClipPlane* plane;
    SbBox3f box;
};
