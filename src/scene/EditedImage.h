#pragma once

#include "scene/SceneContext.h"

namespace velmor {

/// The image under edit on its way to its file. Holds nothing of its own: made where it is needed.
class CEditedImage {
public:
    explicit CEditedImage(CSceneContext context) : m_context(context) {}

    /// Writes the image's changes, if it has any, and has the camera picture composed again; it stays open. Shows
    /// what went wrong, with the file; true when nothing is left unsaved.
    bool Save() const;
    /// Empties the editor, after writing the changes. Where they cannot be written the message is shown and the
    /// image stays; false then. The views are not told.
    bool Close() const;

private:
    bool Write() const;

    CSceneContext m_context;
};

} // namespace velmor
