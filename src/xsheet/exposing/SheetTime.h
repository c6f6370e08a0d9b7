#pragma once

#include "xsheet/Scene.h"

namespace velmor {

/// Puts frames before `frame`, on all levels. A hold that is cut in two is held on, and so is the camera; otherwise
/// the new cells are empty. Sounds that start at the frame or after it move along, and so do notes and dialogue.
/// There are never more than CXSheet::mostFrames: what is pushed past them is lost.
///
///     A A|B B   ->   A A . B B        A|A B B   ->   A A A B B
void InsertTime(CScene& scene, int frame, int count);
/// Takes frames out, from `frame` on, with the sounds that start there. One frame is always left.
///
///     A[A B]B   ->   A B
void DeleteTime(CScene& scene, int frame, int count);

} // namespace velmor
