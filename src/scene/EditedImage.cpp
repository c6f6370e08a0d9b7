#include "scene/EditedImage.h"

namespace velmor {

bool CEditedImage::Write() const {
    CCelImg& image = m_context.model.celImg;
    if (!image.IsModified())
        return true;
    const CStatus saved = m_context.model.SaveEditedImage();
    if (!saved)
        m_context.Show(saved.Message() + ":: Writing file ->" + Utf8Of(image.FilePath()));
    return static_cast<bool>(saved);
}

bool CEditedImage::Save() const {
    const bool hasChanges = m_context.model.celImg.IsModified();
    if (!Write())
        return false;
    if (hasChanges)
        m_context.Update(pictureHint);
    return true;
}

bool CEditedImage::SaveOrAsk() const {
    return Save() || MayGoOn();
}

bool CEditedImage::Close() const {
    if (!Write() && !MayGoOn())
        return false;
    Discard();
    return true;
}

void CEditedImage::Discard() const {
    CCelImg& image = m_context.model.celImg;
    m_context.model.unfinished.reset();
    image.SetModified(false);
    image.Clear();
}

void CEditedImage::ReadAgain() const {
    m_context.model.FinishPainting();
    CCelImg& image = m_context.model.celImg;
    CCelImg read;
    if (const CStatus loaded = read.Load(image.FilePath()); loaded)
        image = std::move(read);
    else
        m_context.Show(loaded.Message() + ":: Reading file ->" + Utf8Of(image.FilePath()));
}

bool CEditedImage::MayGoOn() const {
    return m_context.prompter.AskYesNo(
        "The image could not be saved.\nDo you want to go on without saving it ?\n\n" +
        Utf8Of(m_context.model.celImg.FilePath()));
}

} // namespace velmor
