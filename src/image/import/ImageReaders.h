#pragma once

#include "image/CelImg.h"
#include "platform/Status.h"
#include "platform/files/Files.h"

#include <string>

namespace velmor {

// Readers of drawings and pictures made elsewhere. Each empties the image first (CCelImg::Clear()), and on success
// leaves it unmodified with `path` as its path; the caller then gives it the path of the asset. On failure the
// image is empty. `name` is the file's name as messages show it. For cels, pixels whose grey level is below
// `threshold` (0 to 255) become black lines, all others white paper.

CStatus ReadTargaPicture(CCelImg& image, const Path& path, const std::string& name);
CStatus ReadTargaCel(CCelImg& image, const Path& path, int threshold, const std::string& name);
CStatus ReadBitmapPicture(CCelImg& image, const Path& path, const std::string& name);
CStatus ReadBitmapCel(CCelImg& image, const Path& path, int threshold, const std::string& name);
// Drawings are seen on white paper, so what is transparent is no line.
CStatus ReadPngPicture(CCelImg& image, const Path& path, const std::string& name);
CStatus ReadPngCel(CCelImg& image, const Path& path, int threshold, const std::string& name);
CStatus ReadTiffPicture(CCelImg& image, const Path& path, const std::string& name);
CStatus ReadTiffCel(CCelImg& image, const Path& path, int threshold, const std::string& name);

} // namespace velmor
