#pragma once

#include "convert/FltToInventor.h"
#include "records/FltRecordHeader.h"

#include <Inventor/nodes/SoSeparator.h>

/// A conversion whose operations a test calls one by one: its header is converted, and no level is open yet.
class DirectConversion
{
public:
    DirectConversion() : root(new SoSeparator)
    {
        root->ref();
        converter.setResult(root);
        FltRecordHeader header(324);
        header.formatRevisionLevel = 1570;
        converter.visitHeader(&header);
    }
    ~DirectConversion()
    {
        root->unref();
        root->unref(); // the header's
    }

    DirectConversion(DirectConversion const&) = delete;
    DirectConversion& operator=(DirectConversion const&) = delete;

    SoSeparator* root;
    FltToInventor converter;
};
