#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/SplitPreview.h"

#include <QString>
#include <optional>
#include <string>
#include <vector>

namespace velmor {

// What the dialog "Clean Up Cels" says and shows of peg holes and of what becomes of a drawing.

/// "Acme, turned by 1.24", with the sign of a degree.
QString HolesText(const CPegs& pegs);
/// How far the search is, and in the end which drawings have no holes.
QString SearchText(int looked, int all, const std::vector<std::string>& without);
QString PreviewText(const CCleanupPreview& preview);
/// An image with the outlines of the holes that are on it.
CSplitPreview::CSide SideOf(const CCelImg& image, const std::optional<CPegs>& pegs);

} // namespace velmor
