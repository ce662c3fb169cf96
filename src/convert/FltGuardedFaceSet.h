#pragma once

#include "toolkit/SoNodeRef.h"

#include <Inventor/nodes/SoIndexedFaceSet.h>
#include <cstdint>
#include <vector>

/// A face set that holds faces of fewer than three vertices. The toolkit stops drawing, picking and measuring
/// a set at the first of them; this one goes on after it.
///
/// Its fields and the name of its type are those of any face set, and it is written as one.
class FltGuardedFaceSet final : public SoIndexedFaceSet
{
public:
    FltGuardedFaceSet();

    /// Whether a list of indices holds such a face.
    static bool isNeededFor(std::vector<int> const& indices);

    void GLRender(SoGLRenderAction* action) override;
    void getPrimitiveCount(SoGetPrimitiveCountAction* action) override;

    /// By default the toolkit makes copies by the name of the type, which is that of any face set.
    SoNode* addToCopyDict() const override;

protected:
    ~FltGuardedFaceSet() override;
    void generatePrimitives(SoAction* action) override;

private:
    class Drawn;

    Drawn& drawn();

    SoNodeRef<Drawn> shape;
    std::uint64_t shapeOf = 0; ///< The id that this node had when the shape was made.
};
