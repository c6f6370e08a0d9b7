#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

class QListWidget;

namespace velmor {

class CNumberEdit;
class CNumberSlider;
class CRadioGroup;

/// "Generate Flipbook": levels, frames and quality of a flipbook.
class CFlipbookDialog final : public CDialog {
public:
    CFlipbookDialog(QWidget* parent, const CFlipbookRequest& request);

    /// What has been entered; numbers that cannot be read are those of `unreadable`.
    CFlipbookSettings Values(const CFlipbookSettings& unreadable) const;

protected:
    bool Accepts() override;

private:
    void AddLevels(const CFlipbookRequest& request);
    void AddRange(const CFlipbookSettings& initial, int frameCount);
    void AddQuality(const CFlipbookSettings& initial);

    AcceptRule<CFlipbookSettings> m_accept;
    QListWidget* m_levels;
    CNumberEdit* m_start;
    CNumberEdit* m_end;
    CNumberEdit* m_step;
    CNumberSlider* m_scaling;
    CNumberSlider* m_quality;
    CRadioGroup* m_antialias;
};

} // namespace velmor
