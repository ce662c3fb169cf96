#include "convert/FltGuardedFaceSet.h"

#include <Inventor/SoPickedPoint.h>
#include <algorithm>
#include <iterator>

namespace
{

constexpr int cornersOfATriangle = 3;

} // namespace

/// What is drawn instead: the same faces in the same order, those without three corners made up to triangles
/// without area.
class FltGuardedFaceSet::Drawn final : public SoIndexedFaceSet
{
public:
    explicit Drawn(FltGuardedFaceSet& from) : shown(from)
    {
        vertexProperty = from.vertexProperty.getValue();
        materialIndex = from.materialIndex;
        normalIndex = from.normalIndex;
        textureCoordIndex = from.textureCoordIndex;
        std::vector<std::int32_t> const indices = filledUp(from.coordIndex);
        coordIndex.setValues(0, static_cast<int>(indices.size()), indices.data());
        coordIndex.setNum(static_cast<int>(indices.size()));
    }

    using SoIndexedFaceSet::generatePrimitives;

protected:
    /// What is picked is the set that a host knows: this one stands in no path.
    SoDetail* createTriangleDetail(SoRayPickAction* action, SoPrimitiveVertex const* first,
                                   SoPrimitiveVertex const* second, SoPrimitiveVertex const* third,
                                   SoPickedPoint* point) override
    {
        point->setDetail(SoIndexedFaceSet::createTriangleDetail(action, first, second, third, point), &shown);
        return nullptr;
    }

private:
    static std::vector<std::int32_t> filledUp(SoMFInt32 const& field)
    {
        std::int32_t const* const values = field.getValues(0);
        std::int32_t const* const end = values + field.getNum();
        std::int32_t const* const known =
            std::find_if(values, end, [](std::int32_t index) { return index >= 0; });
        std::vector<std::int32_t> indices;
        std::int32_t last = known != end ? *known : 0;
        int corners = 0;
        for (std::int32_t const* value = values; value != end; ++value) {
            if (*value >= 0) {
                last = *value;
                ++corners;
            } else {
                for (; corners < cornersOfATriangle; ++corners)
                    indices.push_back(last);
                corners = 0;
            }
            indices.push_back(*value);
        }
        return indices;
    }

    FltGuardedFaceSet& shown;
};

FltGuardedFaceSet::FltGuardedFaceSet() = default;
FltGuardedFaceSet::~FltGuardedFaceSet() = default;

bool FltGuardedFaceSet::isNeededFor(std::vector<int> const& indices)
{
    auto begin = indices.begin();
    while (begin != indices.end()) {
        auto const end = std::find(begin, indices.end(), -1);
        if (end - begin < cornersOfATriangle)
            return true;
        begin = end != indices.end() ? std::next(end) : end;
    }
    return false;
}

void FltGuardedFaceSet::GLRender(SoGLRenderAction* action)
{
    drawn().GLRender(action);
}

void FltGuardedFaceSet::getPrimitiveCount(SoGetPrimitiveCountAction* action)
{
    drawn().getPrimitiveCount(action);
}

void FltGuardedFaceSet::generatePrimitives(SoAction* action)
{
    drawn().generatePrimitives(action);
}

SoNode* FltGuardedFaceSet::addToCopyDict() const
{
    if (SoFieldContainer const* const copy = checkCopy(this))
        return static_cast<SoNode*>(const_cast<SoFieldContainer*>(copy));
    auto* const copy = new FltGuardedFaceSet;
    addCopy(this, copy);
    return copy;
}

/// Made again after a host has changed a field.
FltGuardedFaceSet::Drawn& FltGuardedFaceSet::drawn()
{
    auto const id = static_cast<std::uint64_t>(getNodeId());
    if (shape.get() == nullptr || shapeOf != id) {
        shape = SoNodeRef<Drawn>(new Drawn(*this));
        shapeOf = id;
    }
    return *shape;
}
