#pragma once

#include <Inventor/nodes/SoSeparator.h>
#include <unordered_set>

/// Has the toolkit keep what it makes of those parts of a scene in which nothing changes, so that each costs
/// it one step a frame, however many shapes it has.
namespace FltSceneCaching
{

/// The largest part that is kept as a whole, in corners of its faces: what is kept is drawn whole even where
/// most of it is beside the picture.
constexpr int mostCorners = 1 << 22;

/// Turns caching on at each topmost separator below which nothing changes from frame to frame, and off above.
/// Levels of detail, turning faces, flip-books and lights change by themselves, and what blends is sorted
/// anew for each frame.
/// @param changing further nodes that hosts change
void arrange(SoSeparator& root, std::unordered_set<SoNode const*> const& changing);

} // namespace FltSceneCaching
