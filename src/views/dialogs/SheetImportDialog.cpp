#include "views/dialogs/SheetImportDialog.h"

#include "views/Text.h"
#include "views/widgets/FormParts.h"
#include "views/widgets/ReadOnlyTable.h"
#include "views/widgets/TextLines.h"

#include <QComboBox>
#include <QFormLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace velmor {

namespace {

constexpr int columnGap = 14;

QString CellsText(const CImportedTrack& track) {
    const QString cells =
        track.changedCells > 0 ? Counted(track.changedCells, "cell changes", "cells change") : QString("as it is");
    return track.isNew ? "new level, " + Counted(track.changedCells, "cell", "cells") : cells;
}

QString MissingText(const CImportedTrack& track) {
    QStringList names;
    int cells = 0;
    for (const auto& [name, count] : track.missing) {
        names.append(ToQt(name));
        cells += count;
    }
    return names.isEmpty() ? QString()
                           : names.join(", ") + " (" + Counted(cells, "cell stays", "cells stay") + " empty)";
}

QString JoinedLines(const std::vector<std::string>& lines) {
    QStringList list;
    for (const std::string& line : lines)
        list.append(ToQt(line));
    return list.join('\n');
}

} // namespace

CSheetImportDialog::CSheetImportDialog(QWidget* parent, const CSheetImportRequest& request)
    : CDialog(parent, "Import Xsheet"),
      m_request(request),
      m_folder(new QComboBox),
      m_tracks(new CReadOnlyTable("tracks", {"Level", "Cells", "Drawings", "Not in the scene"})),
      m_changes(new QLabel),
      m_lossesLabel(new QLabel),
      m_losses(new CTextLines("losses", {})) {
    setObjectName("SheetImport");
    AddFolders();
    AddPreview();
    OkButton().setText("&Import");
    ShowPreview();
    m_tracks->resizeColumnsToContents();
    for (int column = 0; column + 1 < m_tracks->columnCount(); ++column)
        m_tracks->setColumnWidth(column, m_tracks->columnWidth(column) + columnGap);
    resize(640, sizeHint().height());
}

void CSheetImportDialog::AddFolders() {
    auto* file = new QLabel(ToQt(m_request.file));
    file->setObjectName("file");
    file->setTextFormat(Qt::PlainText);
    QFormLayout& form = AddForm();
    form.addRow("File :", file);
    m_folder->setObjectName("folder");
    m_folder->setToolTip("Where the drawings of new levels are that are not called like a folder");
    for (const std::string& folder : m_request.folders)
        m_folder->addItem(ToQt(folder));
    m_folder->setCurrentIndex(m_folder->findText(ToQt(m_request.initial)));
    form.addRow(LabelFor("&Drawings of new levels from :", *m_folder), m_folder);
    form.setRowVisible(m_folder, m_request.preview(Values()).UsesGivenFolder());
    connect(m_folder, &QComboBox::currentIndexChanged, this, &CSheetImportDialog::ShowPreview);
}

void CSheetImportDialog::AddPreview() {
    m_tracks->horizontalHeader()->setStretchLastSection(true);
    auto* label = LabelFor("What becomes of its &levels :", *m_tracks);
    label->setAlignment(Qt::AlignLeft);
    Body().addWidget(label);
    Body().addWidget(m_tracks, 1);
    m_changes->setObjectName("changes");
    m_changes->setTextFormat(Qt::PlainText);
    m_changes->setWordWrap(true);
    Body().addWidget(m_changes);
    m_lossesLabel->setText("&What is not taken :");
    m_lossesLabel->setBuddy(m_losses);
    m_losses->setAccessibleName("What is not taken");
    Body().addWidget(m_lossesLabel);
    Body().addWidget(m_losses);
}

void CSheetImportDialog::ShowPreview() {
    const CSheetImport import = m_request.preview(Values());
    m_tracks->setRowCount(static_cast<int>(import.tracks.size()));
    for (int row = 0; row < m_tracks->rowCount(); ++row)
        ShowTrack(row, import.tracks[static_cast<std::size_t>(row)]);
    m_changes->setText(import.changes.empty() ? QString("Nothing changes") : JoinedLines(import.sheetChanges));
    m_changes->setVisible(!m_changes->text().isEmpty());
    m_losses->SetLines(import.sheetLosses);
    m_losses->setVisible(!import.sheetLosses.empty());
    m_lossesLabel->setVisible(!import.sheetLosses.empty());
    OkButton().setEnabled(!import.changes.empty());
}

void CSheetImportDialog::ShowTrack(int row, const CImportedTrack& track) {
    m_tracks->Show(row, 0, ToQt(track.level));
    m_tracks->Show(row, 1, CellsText(track));
    m_tracks->Show(row, 2, QString("%1 in the scene").arg(track.drawings.size()));
    m_tracks->Show(row, 3, MissingText(track));
}

std::string CSheetImportDialog::Values() const {
    return FromQt(m_folder->currentText());
}

} // namespace velmor
