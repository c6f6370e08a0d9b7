#pragma once

#include "render/preview/PreviewContent.h"

#include <map>
#include <optional>
#include <vector>

namespace velmor {

struct CSceneModel;

/// How the frames of a preview are looked at.
struct CPreviewView {
    double factor = 1;              ///< output width / scene width, up to 1
    std::optional<int> cameraFrame; ///< seen from where the camera stands there; nothing for the moving camera

    bool operator==(const CPreviewView&) const = default;
};

/// What the frames of the open scene show, found out once for each until it may have changed.
class CPreviewContents {
public:
    explicit CPreviewContents(const CSceneModel& model) : m_model(model) {}

    void SetView(const CPreviewView& view);
    const CPreviewView& View() const { return m_view; }
    /// The scene or its files may have changed.
    void Forget();
    /// Whether Of() has the answer at hand.
    bool Knows(int frame) const;
    /// `frame` is one of the sheet.
    PreviewContent Of(int frame);

private:
    PreviewContent Describe(int frame);
    const std::optional<CFileIdentity>& FileOf(const Path& path);

    const CSceneModel& m_model;
    CPreviewView m_view;
    std::vector<PreviewContent> m_contents; ///< null where not known
    std::map<Path::string_type, std::optional<CFileIdentity>> m_files;
};

} // namespace velmor
