#pragma once

#include "toolkit/VelloReaderExport.h"

#include <Inventor/SoOutput.h>

class SoNode;

/// Writes scene graphs into files that are safe to read again.
class VELLOREADER_API SceneWriter
{
public:
    /// An output whose texts are written in one go. The toolkit's own measures a text again for each of its
    /// characters, which takes minutes for a long one. Numbers in text that the toolkit couldn't read again
    /// are written as ones that it can: "not a number" as 0, the infinities as the largest numbers.
    class VELLOREADER_API Output : public SoOutput
    {
    public:
        using SoOutput::write;
        void write(SbString const& text) override;
        void write(SbName const& name) override;
        void write(float number) override;
        void write(double number) override;
    };

    /// Writes a scene. Parts that are guarded by classes of this library are replaced by plain nodes that are
    /// drawn in the same way without a guard, since a file knows nothing of such classes; see makePlain().
    /// @param root the scene; it keeps the plain nodes
    static void write(SoNode* root, SoOutput& output);

    /// Puts face sets that have no material indices, where a material binding wants some, below a separator
    /// with a binding that wants none, and takes indices after the end of a set's vertices for the last
    /// vertex.
    static void makePlain(SoNode* root);
};
