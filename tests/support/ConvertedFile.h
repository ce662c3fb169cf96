#pragma once

#include "support/SceneText.h"
#include "support/StreamCapture.h"

#include "convert/FltToInventor.h"

#include <Inventor/nodes/SoSeparator.h>
#include <iostream>
#include <string>

/// A file's conversion as a host runs it, with std::cout put back behind it.
class ConvertedFile
{
public:
    explicit ConvertedFile(std::string const& path)
    {
        StreamCapture const out(std::cout);
        StreamCapture const err(std::cerr);
        root = FltToInventor::convertFromFile(path.c_str());
        rootReferences = root != nullptr ? root->getRefCount() : 0;
        if (root != nullptr)
            root->ref();
        messages = err.str();
        beforeTheLog = out.str();
    }
    ~ConvertedFile()
    {
        if (root == nullptr)
            return;
        while (root->getRefCount() > 1)
            root->unrefNoDelete();
        root->unref();
    }

    ConvertedFile(ConvertedFile const&) = delete;
    ConvertedFile& operator=(ConvertedFile const&) = delete;

    std::string text() const { return sceneText(root); }

    SoSeparator* root = nullptr;
    int rootReferences = 0;   ///< As the conversion left them.
    std::string messages;     ///< What went to std::cerr.
    std::string beforeTheLog; ///< What went to std::cout before the log was open.
};
