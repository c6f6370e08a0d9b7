#pragma once

#include "platform/Status.h"
#include "render/FrameFiles.h"

namespace velmor {

/// Reads a frame that WriteFrameFile() has written, as it was handed to it but for its alpha. Fails, with a text
/// that begins with the path, when the file is missing, damaged or of another size, or when it has alpha and
/// `withAlpha` is false, or the other way round. On failure `frame` may hold anything.
CStatus ReadFrameFile(const Path& path, FrameFormat format, CSize size, bool withAlpha, CFrameBuffer& frame);

} // namespace velmor
