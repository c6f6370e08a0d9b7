#pragma once

#include "acquire/ScannerUi.h"

#include <QDialog>
#include <array>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLabel;
class QProgressBar;
class QPushButton;

namespace velmor {

class CNumberEdit;
class CScanPreview;

/// The scan window: how to scan, a preview of the glass, and the buttons that start the scanner. It stays open from
/// page to page. Closing it asks its owner to take it away.
class CScanDialog final : public QDialog {
public:
    CScanDialog(QWidget* parent, const CScanWindowRequest& request, CScanWindowActions actions);

    void ShowState(const CScanWindowState& state);
    void ShowPreview(const CScannedPage& page);

    void reject() override;

private:
    QWidget* CreateChoices(const CScanWindowRequest& request);
    void AddArea(QGridLayout& grid, int row);
    QLayout* CreateButtons();
    void SetArea(const CScanArea& area);
    void ShowArea();
    void ShowWork();
    void ShowPaper();
    void ShowSize();
    void ReadArea();
    int Resolution() const;
    CScanSettings Settings() const;
    void Start(const std::function<void(const CScanSettings&)>& action);

    CScanWindowActions m_actions;
    CScannerAbilities m_abilities;
    CScanSettings m_initial;
    CScanArea m_area;
    CScanWindowState m_state;

    CScanPreview* m_picture;
    QComboBox* m_resolution;
    QComboBox* m_paper;
    std::array<CNumberEdit*, 4> m_edges{}; ///< left, top, width, height
    QCheckBox* m_feeder;
    QLabel* m_size;
    QProgressBar* m_progress;
    QLabel* m_message;
    QPushButton* m_preview;
    QPushButton* m_scan;
    QPushButton* m_stop;
};

} // namespace velmor
