#pragma once

#include "toolkit/SoNodeRef.h"

#include <Inventor/SbMatrix.h>
#include <Inventor/nodes/SoMultipleCopy.h>
#include <Inventor/nodes/SoSeparator.h>
#include <string>
#include <unordered_map>
#include <vector>

/// VRML has no node that draws its children at several places: for it each copy is a transformation around
/// one shared part.
///
/// As long as an object lives, the nodes of copies in a scene draw one copy only, below a separator with a
/// mark for a name, so that the toolkit converts no more than that.
class VrmlCopies
{
public:
    /// @param root a scene whose names hold letters, digits and underscores only
    explicit VrmlCopies(SoNode* root);
    ~VrmlCopies();

    VrmlCopies(VrmlCopies const&) = delete;
    VrmlCopies& operator=(VrmlCopies const&) = delete;

    /// Adds all copies to what the toolkit has made of the scene. It may be written as long as this object
    /// lives.
    void addTo(SoNode* vrml) const;

private:
    struct Copies {
        SoNodeRef<SoMultipleCopy> node;
        SoNodeRef<SoSeparator> part; ///< That bears the mark.
        std::vector<SbMatrix> places;
    };

    void prepare(SoMultipleCopy& node);

    std::vector<Copies> all;
    std::unordered_map<std::string, std::size_t> positions; ///< In all, by the mark.
};
