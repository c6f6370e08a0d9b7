#pragma once

#include "platform/scanner/Scanner.h"

#include <QRectF>
#include <QString>
#include <span>
#include <vector>

namespace velmor {

// The rules of the scan window, without widgets.

/// A paper that lies in the top left corner of the glass, in millimetres. Without size it is all of the glass.
struct CPaper {
    const char* name;
    double width;
    double height;
};

std::span<const CPaper> Papers();

/// Millimetres of the glass; a scanner that does not say is taken to have an ordinary one.
QSizeF GlassOf(const CScannerAbilities& abilities);
/// Moves and shrinks an area until it lies on the glass and has a size that can be scanned. An empty one is all of
/// the glass.
CScanArea FitArea(const CScanArea& area, QSizeF glass);
/// The area that a paper takes of the glass.
CScanArea AreaOf(const CPaper& paper, QSizeF glass);
/// The index of the paper with an area, by size and place; -1 when it is none of them.
int PaperOf(const CScanArea& area, QSizeF glass);
/// Resolutions to choose from, ascending: what the scanner lists, or the usual ones within its range.
std::vector<int> ResolutionsOf(const CScannerAbilities& abilities);
/// The index of the resolution that is closest.
int NearestResolution(std::span<const int> resolutions, int wanted);
/// What an area becomes in pixels, and whether an image can be as large.
struct CScanSize {
    int width = 0;
    int height = 0;
    bool isPossible = false;
};
CScanSize SizeOf(const CScanArea& area, int resolution);

/// Where the glass is drawn in a window of a size: as large as it fits with a margin, in its own proportions.
QRectF GlassRectangle(QSizeF glass, QSizeF window);
/// An area of the glass in the window, and back; the way back stays on the glass.
QRectF ToWindow(const CScanArea& area, QSizeF glass, const QRectF& glassRectangle);
CScanArea ToGlass(const QRectF& rectangle, QSizeF glass, const QRectF& glassRectangle);

} // namespace velmor
