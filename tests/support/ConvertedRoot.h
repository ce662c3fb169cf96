#pragma once

#include <Inventor/nodes/SoSeparator.h>

/// The root of a converted scene: held while this object lives, and then let go, however many references the
/// headers of the database have left on it for the caller.
class ConvertedRoot
{
public:
    /// @param root may be null
    explicit ConvertedRoot(SoSeparator* root) : root(root)
    {
        if (root != nullptr)
            root->ref();
    }
    ~ConvertedRoot()
    {
        if (root == nullptr)
            return;
        while (root->getRefCount() > 1)
            root->unrefNoDelete();
        root->unref();
    }

    ConvertedRoot(ConvertedRoot const&) = delete;
    ConvertedRoot& operator=(ConvertedRoot const&) = delete;

    SoSeparator* get() const { return root; }

    /// References that the conversion left.
    int getReferences() const { return root != nullptr ? root->getRefCount() - 1 : 0; }

private:
    SoSeparator* root;
};
