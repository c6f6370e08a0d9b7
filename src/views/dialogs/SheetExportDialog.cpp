#include "views/dialogs/SheetExportDialog.h"

#include "views/Text.h"
#include "views/widgets/FormParts.h"
#include "views/widgets/RadioGroup.h"
#include "views/widgets/TextLines.h"

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace velmor {

CSheetExportDialog::CSheetExportDialog(QWidget* parent, const CSheetExportRequest& request)
    : CDialog(parent, "Export Xsheet"),
      m_format(new CRadioGroup(
          {"&Exchange digital time sheet (XDTS), for other animation programs", "&Table (CSV), for spreadsheets"},
          static_cast<int>(request.initial))) {
    setObjectName("SheetExport");
    m_format->setObjectName("format");
    auto* extent = new QLabel(Counted(request.levelCount, "level", "levels") + ", " +
                              Counted(request.frameCount, "frame", "frames") + ", " +
                              Counted(request.soundCount, "sound", "sounds"));
    extent->setObjectName("extent");
    Body().addWidget(extent);
    Body().addWidget(GroupOf("Format", m_format));
    AddLosses(request.losses);
    OkButton().setText("E&xport...");
    m_format->BeFirst();
}

void CSheetExportDialog::AddLosses(const std::vector<std::string>& losses) {
    if (losses.empty()) {
        AddHint("The file holds everything that is on the xsheet.");
        Body().addStretch(1);
        return;
    }
    auto* lines = new CTextLines("losses", losses);
    auto* label = LabelFor("&What the file does not hold :", *lines);
    label->setAlignment(Qt::AlignLeft);
    Body().addWidget(label);
    Body().addWidget(lines, 1);
}

ExchangeFormat CSheetExportDialog::Values() const {
    return static_cast<ExchangeFormat>(m_format->Chosen());
}

} // namespace velmor
