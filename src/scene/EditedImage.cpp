#include "scene/EditedImage.h"

namespace velmor {

bool CEditedImage::Write() const {
    CCelImg& image = m_context.model.celImg;
    const CStatus saved = image.Save();
    if (!saved)
        m_context.Show(saved.Message() + ":: Writing file ->" + Utf8Of(image.FilePath()));
    return static_cast<bool>(saved);
}

bool CEditedImage::Save() const {
    if (!m_context.model.celImg.IsModified())
        return true;
    if (!Write())
        return false;
    m_context.Update(pictureHint);
    return true;
}

bool CEditedImage::Close() const {
    CCelImg& image = m_context.model.celImg;
    if (image.IsModified() && !Write())
        return false;
    image.Clear();
    return true;
}

} // namespace velmor
