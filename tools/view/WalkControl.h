#pragma once

#include <QPoint>

class QKeyEvent;
class SoCamera;

/// Walks through the model: keys move the camera over the ground, dragging looks around. Up is z.
namespace WalkControl
{

/// Obeys a key: W, S, A, D go ahead, back, left and right, Q and E down and up; Shift goes faster.
/// @param size of the model, by which steps are long
/// @return whether it is one of these keys
bool takeKey(QKeyEvent const& event, SoCamera& camera, float size);

/// Turns the view. @param way of the mouse, in pixels
void look(QPoint const& way, SoCamera& camera);

} // namespace WalkControl
