#include "scene/VisibleLines.h"

#include "image/CelImg.h"
#include "image/RealPoint.h"
#include "render/FrameComposer.h"
#include "scene/SceneModel.h"

#include <algorithm>
#include <cmath>

namespace velmor {

namespace {

constexpr double invisible = 100; // percent
constexpr int mostSamples = 4;

CPlacement Place(const CXSheetCell& cell, CSize frame) {
    return PlaceCell(cell, CCameraFrame(), {frame, frame, 1}, false);
}

// Half sizes are whole pixels, as where a frame is drawn.
CSize HalfOf(CSize size) {
    return {size.width / 2, size.height / 2};
}

// From a point of the frame to one of an image, as it is drawn there, and back.
CRealPoint FromFrame(CRealPoint at, const CPlacement& placement, CSize image) {
    const double dx = at.x - placement.centreX;
    const double dy = at.y - placement.centreY;
    const double c = std::cos(placement.angle);
    const double s = std::sin(placement.angle);
    const CSize half = HalfOf(image);
    return {(dx * c - dy * s) / placement.scaleX + half.width, (dx * s + dy * c) / placement.scaleY + half.height};
}
CRealPoint ToFrame(CRealPoint at, const CPlacement& placement, CSize image) {
    const CSize half = HalfOf(image);
    const double dx = (at.x - half.width) * placement.scaleX;
    const double dy = (at.y - half.height) * placement.scaleY;
    const double c = std::cos(placement.angle);
    const double s = std::sin(placement.angle);
    return {dx * c + dy * s + placement.centreX, dy * c - dx * s + placement.centreY};
}

// How many points of a pixel are to be looked at in each direction so that no line of the other image is missed.
int SamplesIn(const CPlacement& own, const CPlacement& other) {
    const bool isShifted = own.angle == other.angle && own.scaleX == other.scaleX && own.scaleY == other.scaleY;
    if (isShifted)
        return 1;
    const double finer = std::max(std::abs(own.scaleX / other.scaleX), std::abs(own.scaleY / other.scaleY));
    return finer > mostSamples / 2.0 ? mostSamples : std::max(2, static_cast<int>(std::ceil(2 * finer)));
}

} // namespace

const CMaskPlane& CVisibleLines::Of(const CSceneModel& model) {
    CPlacement own;
    std::vector<CLayer> layers = LayersOf(model, own);
    const CCelImg& image = model.celImg;
    const bool isKept = m_lines.Width() == image.Width() && m_lines.Height() == image.Height();
    if (isKept && layers == m_layers && own == m_own)
        return m_lines;
    m_layers.clear();
    m_lines = CMaskPlane(image.Width(), image.Height());
    for (const CLayer& layer : layers)
        Add(layer, own);
    m_layers = std::move(layers);
    m_own = own;
    return m_lines;
}

std::vector<CVisibleLines::CLayer> CVisibleLines::LayersOf(const CSceneModel& model, CPlacement& own) {
    const CScene& scene = model.Scene();
    const CSize frame = scene.geometry.Frame();
    own = {};
    own.centreX = HalfOf(frame).width;
    own.centreY = HalfOf(frame).height;
    std::vector<CLayer> layers;
    for (int level = 0; level < scene.xsheet.LevelCount(); ++level) {
        const CXSheetCell& cell = scene.xsheet.Cell(level, model.cursorFrame);
        if (!cell.IsUsed())
            continue;
        const Path file = AssetFilePath(model.Paths().SceneFolder(), cell.FolderName(), cell.CelName());
        if (file == model.celImg.FilePath())
            own = Place(cell, frame);
        else if (const std::optional<CFileIdentity> identity = IdentifyFile(file);
                 identity && !cell.IsPicture() && cell.Transparency() < invisible)
            layers.push_back({file, *identity, Place(cell, frame)});
    }
    return layers;
}

void CVisibleLines::Add(const CLayer& layer, const CPlacement& own) {
    CCelImg cel;
    if (!cel.Load(layer.file) || cel.GetLoadState() != LoadState::Cel)
        return;
    const CMaskPlane lines(cel);
    const CSize size{m_lines.Width(), m_lines.Height()};
    const CSize otherSize{lines.Width(), lines.Height()};
    if (layer.placement == own && size == otherSize) {
        m_lines.Add(lines);
        return;
    }
    const int samples = SamplesIn(own, layer.placement);
    const auto hasLine = [&](double x, double y) {
        const CRealPoint at = FromFrame(ToFrame({x, y}, own, size), layer.placement, otherSize);
        return at.x >= 0 && at.y >= 0 && at.x < otherSize.width && at.y < otherSize.height &&
               lines.Has(static_cast<int>(at.x), static_cast<int>(at.y));
    };
    for (int y = 0; y < size.height; ++y)
        for (int x = 0; x < size.width; ++x)
            for (int i = 0; i < samples * samples; ++i) {
                const int column = i % samples;
                const int row = i / samples;
                if (hasLine(x + (column + 0.5) / samples, y + (row + 0.5) / samples)) {
                    m_lines.Set(x, y);
                    break;
                }
            }
}

} // namespace velmor
