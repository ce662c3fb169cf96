#pragma once

class SoNode;

/// Hides and shows single children of a group. A child that was hidden once stands in a SoSwitch of its own
/// from then on, which draws all or nothing.
namespace Visibility
{

/// Whether a node is a switch that was put in for this.
bool isOwnSwitch(SoNode const* node);

/// Whether a child is hidden. @param parent a group
bool isHidden(SoNode* parent, int index);

/// Hides or shows a child.
void setHidden(SoNode* parent, int index, bool isHidden);

/// The child itself, also if it stands in a switch of this.
SoNode* child(SoNode* parent, int index);

} // namespace Visibility
