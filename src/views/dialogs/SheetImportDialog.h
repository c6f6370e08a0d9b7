#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

class QComboBox;
class QLabel;

namespace velmor {

class CReadOnlyTable;
class CTextLines;

/// "Import Xsheet": what a sheet from outside would change, level by level.
class CSheetImportDialog final : public CDialog {
public:
    CSheetImportDialog(QWidget* parent, const CSheetImportRequest& request);

    /// The cel folder of levels that nothing else tells of.
    std::string Values() const;

private:
    void AddFolders();
    void AddPreview();
    void ShowPreview();
    void ShowTrack(int row, const CImportedTrack& track);

    const CSheetImportRequest& m_request;
    QComboBox* m_folder;
    CReadOnlyTable* m_tracks;
    QLabel* m_changes;
    QLabel* m_lossesLabel;
    CTextLines* m_losses;
};

} // namespace velmor
