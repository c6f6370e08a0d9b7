#pragma once

#include "scene/SceneContext.h"

namespace velmor {

/// The image under edit on its way to its file. Holds nothing of its own: made where it is needed.
class CEditedImage {
public:
    explicit CEditedImage(CSceneContext context) : m_context(context) {}

    /// Writes the image's changes, if it has any; it stays open. Shows what went wrong, with the file; true when
    /// nothing is left unsaved. The views are not told.
    [[nodiscard]] bool Write() const;
    /// As Write(), and has the camera picture composed again when something was written.
    [[nodiscard]] bool Save() const;
    /// As Save(); what cannot be written may be left so, and stays in the editor, if the user wants to go on.
    [[nodiscard]] bool SaveOrAsk() const;
    /// Empties the editor after Write(), or without it if the user wants that. The views are not told. False when
    /// the image stays.
    [[nodiscard]] bool Close() const;
    /// Empties the editor without writing.
    void Discard() const;
    /// Reads the file of an image without changes again. Where that fails the message is shown and the image stays.
    void ReadAgain() const;

private:
    bool MayGoOn() const;

    CSceneContext m_context;
};

} // namespace velmor
