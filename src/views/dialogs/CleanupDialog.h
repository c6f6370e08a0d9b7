#pragma once

#include "scene/DialogRequests.h"
#include "views/dialogs/Dialog.h"

#include <map>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QSlider;
class QTimer;

namespace velmor {

class CNumberEdit;
class CNumberSlider;
class CRadioGroup;
class CReadOnlyTable;
class CSplitPreview;

/// "Clean Up Cels": the drawings with the peg holes that are found on them, one after the other while nothing else
/// is to do; what is to be done; and the drawing that is chosen in the list before and after.
class CCleanupDialog final : public CDialog {
public:
    CCleanupDialog(QWidget* parent, const CCleanupRequest& request);

    CCleanupValues Values() const;

protected:
    bool Accepts() override;

private:
    /// What was found on a drawing.
    struct CHoles {
        CStatus status;
        CPegs pegs;
    };

    QWidget* DrawingsPanel();
    QWidget* PreviewPanel();
    QGroupBox* LinesGroup();
    QGroupBox* PlaceGroup();
    void Show(const CCleanupValues& values);
    void FollowChanges();
    const std::vector<std::string>& Names() const;
    bool ArePictures() const { return m_request.kind == SourceMode::Pictures; }
    void ShowNames();
    void ShowChoices();
    /// Forgets the holes when they may be others now.
    void CheckSearch(const CCleanupValues& values);
    void SearchNext();
    void ShowHoles();
    void ShowPreview();
    void Step(int rows);

    const CCleanupRequest& m_request;
    CRadioGroup* m_which;
    CReadOnlyTable* m_drawings;
    QLabel* m_holesText;
    CSplitPreview* m_preview;
    QSlider* m_split;
    QLabel* m_previewText;
    QPushButton* m_previous;
    QPushButton* m_next;
    CNumberSlider* m_threshold;
    CNumberSlider* m_specks;
    CNumberSlider* m_weight;
    QCheckBox* m_straightens;
    QCheckBox* m_registers;
    QComboBox* m_reference; ///< the first is none of the drawings
    QPushButton* m_useThis;
    CNumberEdit* m_dpi;
    QCheckBox* m_erasesPegs;
    QTimer* m_later;  ///< a preview is shown when nothing has changed for a moment
    QTimer* m_search; ///< for holes
    std::map<std::string, CHoles> m_holes;
    CPegSearch m_searched; ///< how they were looked for
};

} // namespace velmor
