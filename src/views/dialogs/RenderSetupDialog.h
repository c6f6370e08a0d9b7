#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace velmor {

class CLevelListWidget;
class CNumberEdit;
class CNumberSlider;

/// "Render Setup": what the final output is rendered from and written as. Says below what files there will be.
class CRenderSetupDialog final : public CDialog {
public:
    CRenderSetupDialog(QWidget* parent, const CRenderSetupRequest& request);

    /// What has been entered; numbers that cannot be read are ones that every rule refuses.
    CRenderSetup Values() const;

protected:
    bool Accepts() override;

private:
    QWidget* LevelsGroup();
    QWidget* FramesGroup();
    QWidget* PictureGroup();
    QWidget* FormatGroup();
    QWidget* FilesGroup();
    QWidget* FolderField();
    void Show(const CRenderSetup& setup);
    void FollowChanges();
    /// Enables what the format has a use for.
    void ShowOptions();
    void ShowResult();
    QString ResultOf(const CRenderSetup& setup) const;
    void ChooseCompressor();
    void ChooseFolder();

    const CRenderSetupRequest& m_request;
    std::string m_compressor;
    CLevelListWidget* m_levels;
    CNumberEdit* m_start;
    CNumberEdit* m_end;
    CNumberEdit* m_step;
    CNumberSlider* m_scaling;
    QCheckBox* m_antialias;
    QComboBox* m_format;
    QCheckBox* m_transparent;
    QPushButton* m_chooseCompressor;
    CNumberSlider* m_quality;
    QLineEdit* m_folder;
    QLineEdit* m_name;
    QCheckBox* m_resume;
    QLabel* m_result;
};

} // namespace velmor
