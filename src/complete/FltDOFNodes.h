#pragma once

#include "complete/FltCompleteScene.h"
#include "complete/FltGroupBuilder.h"
#include "model/FltRecordView.h"

/// Makes the nodes of a degree of freedom.
class FltDOFNodes
{
public:
    /// Adds the transformation of a record, which all later parts of the group stand in, and what hosts may
    /// want to know of it.
    /// @param name of the record
    /// @return how a host moves it
    static FltCompleteDOF addTo(FltGroupBuilder& group, FltRecordView const& record, std::string const& name);
};
