#pragma once

#include <map>
#include <vector>

class SoLOD;
class SoNode;

/// Which level of detail is drawn: by the distance from the eye, as the toolkit does it, or chosen by hand.
class LevelsOfDetail
{
public:
    LevelsOfDetail() = default;

    /// @param scene outlives this object
    explicit LevelsOfDetail(SoNode* scene);

    bool isEmpty() const { return ranges.empty(); }

    /// The greatest distance at which anything changes.
    float farthest() const;

    /// All by the distance from the eye again.
    void followEye();

    /// All as they are drawn at one distance, wherever the eye is.
    void setDistance(float distance);

    /// One alone. @param child the child that is always drawn; -1 to follow the eye
    void force(SoLOD& lod, int child);

    /// The child that is always drawn; -1 if the eye decides.
    int forced(SoLOD const& lod) const;

    /// The distances at which one changes, as they are in the file.
    std::vector<float> rangesOf(SoLOD& lod) const;

private:
    static void draw(SoLOD& lod, int child);

    std::map<SoLOD*, std::vector<float>> ranges; ///< As they were in the scene.
    std::map<SoLOD const*, int> children;        ///< Those chosen by hand.
};
