#include "scene/preview/PreviewContents.h"

#include "render/FrameRequests.h"
#include "scene/SceneModel.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace velmor {

namespace {

int Scaled(int length, double factor) {
    // Cut off, as the camera view does it, but not for the rounding of the factor.
    return std::max(1, static_cast<int>(std::floor(length * factor + 1e-6)));
}

} // namespace

void CPreviewContents::SetView(const CPreviewView& view) {
    if (m_view == view)
        return;
    m_view = view;
    Forget();
}

void CPreviewContents::Forget() {
    m_contents.clear();
    m_files.clear();
}

bool CPreviewContents::Knows(int frame) const {
    const auto index = static_cast<std::size_t>(frame);
    return index < m_contents.size() && m_contents[index] != nullptr;
}

PreviewContent CPreviewContents::Of(int frame) {
    const auto index = static_cast<std::size_t>(frame);
    if (m_contents.size() <= index)
        m_contents.resize(index + 1);
    if (m_contents[index] == nullptr)
        m_contents[index] = Describe(frame);
    return m_contents[index];
}

PreviewContent CPreviewContents::Describe(int frame) {
    const CScene& scene = m_model.Scene();
    const CSize size = scene.geometry.Frame();
    const CSize output{Scaled(size.width, m_view.factor), Scaled(size.height, m_view.factor)};
    const double factor = m_view.factor < 1 ? static_cast<double>(output.width) / size.width : 1;
    const int cameraFrame = std::min(m_view.cameraFrame.value_or(frame), scene.xsheet.FrameCount() - 1);
    CFrameRequest request =
        RequestFrame({scene, m_model.Paths().SceneFolder(), m_model.cameraAntialias}, AllLevels(scene.xsheet),
                     frame, scene.camera.At(cameraFrame), {size, output, factor});
    std::vector<std::optional<CFileIdentity>> files;
    files.reserve(request.layers.size());
    for (const CFrameLayer& layer : request.layers)
        files.push_back(FileOf(layer.path));
    return std::make_shared<const CPreviewContent>(std::move(request), std::move(files));
}

const std::optional<CFileIdentity>& CPreviewContents::FileOf(const Path& path) {
    const auto known = m_files.find(path.native());
    return known != m_files.end() ? known->second
                                  : m_files.emplace(path.native(), IdentifyFile(path)).first->second;
}

} // namespace velmor
