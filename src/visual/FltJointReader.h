#pragma once

#include "model/FltRecordView.h"
#include "visual/FltVisualNode.h"

/// Reads degrees of freedom.
namespace FltJointReader
{

/// The joint of a record, without its name.
FltVisualJoint read(FltRecordView const& record);

} // namespace FltJointReader
