#pragma once

#include "scene/SceneContext.h"

#include <functional>
#include <optional>
#include <string>

namespace velmor {

class CSceneEdit;
struct CColorKey;

/// What is done to the pixels of whole images: turning, mirroring and keying the selected assets in their files,
/// and keying the picture under edit.
///
/// A batch ends at the first file that fails, or after the asset during which the user stops it; what was done
/// before stays done. An asset that is open in the cel editor is saved first and shown as it is afterwards.
class CAssetTransforms {
public:
    explicit CAssetTransforms(CSceneContext context) : m_context(context) {}

    void RotateSelected();
    void FlipSelected();
    /// Keys the selected pictures.
    void ColorKeySelected();
    /// Keys the picture under edit, in memory only. `key` is the colour that the dialog starts with.
    void ColorKeyEdited(CColor key);

private:
    /// What is done to each image, and how its messages call it.
    struct CChange {
        const char* title; ///< of the progress dialog
        std::function<CStatus(CCelImg&)> apply;
        const char* notChanged; ///< between the reason and the path
        const char* notWritten;
    };

    bool CanFlip() const;
    /// Asks for the values of a key and remembers them; nothing when cancelled.
    std::optional<CColorKey> AskColorKey(CColor color);
    void ChangeSelected(const CChange& change);
    /// Within an edit. Returns the message of a failure.
    std::optional<std::string> ChangeAsset(CSceneEdit& edit, const std::string& name, const CChange& change);

    CSceneContext m_context;
};

} // namespace velmor
