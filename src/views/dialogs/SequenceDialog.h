#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QTimer;

namespace velmor {

class CNumberEdit;
class CNumberSlider;
class CRadioGroup;
class CReadOnlyTable;
class CSequenceExposure;
class CSequencePreview;

/// "Import Sequence": all files with the names that they get, what of them becomes a line, shown on the file that
/// is chosen in the list, and where they are exposed.
class CSequenceDialog final : public CDialog {
public:
    CSequenceDialog(QWidget* parent, const CSequenceRequest& request);

    CSequence Values() const;

protected:
    bool Accepts() override;

private:
    QWidget* FilesPanel();
    QGroupBox* NamesGroup();
    QGroupBox* LinesGroup();
    void Show(const CSequence& sequence);
    void FollowChanges();
    /// Shows what of the choices applies, and what becomes of the files.
    void ShowChoices();
    void ShowImages(const CSequence& sequence);
    void ShowPreview();
    bool ArePictures() const;

    const CSequenceRequest& m_request;
    CReadOnlyTable* m_files;
    QLabel* m_gaps;
    CSequencePreview* m_preview;
    CRadioGroup* m_kind;
    QComboBox* m_folder;
    QLineEdit* m_pictures;
    QCheckBox* m_counts; ///< on from a number, instead of taking the files'
    CNumberEdit* m_firstNumber;
    QGroupBox* m_lines;
    CNumberSlider* m_threshold;
    CNumberSlider* m_specks;
    CSequenceExposure* m_exposure;
    QTimer* m_later; ///< a preview is shown when nothing has changed for a moment
};

} // namespace velmor
