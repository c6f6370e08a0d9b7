#include "views/dialogs/SequenceDialog.h"

#include "views/Text.h"
#include "views/dialogs/RunDialog.h"
#include "views/dialogs/SequenceExposure.h"
#include "views/dialogs/SequencePreview.h"
#include "views/widgets/FormParts.h"
#include "views/widgets/NumberSlider.h"
#include "views/widgets/RadioGroup.h"
#include "views/widgets/ReadOnlyTable.h"
#include "views/widgets/TextLines.h"
#include "views/widgets/WaitCursor.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

namespace velmor {

namespace {

constexpr int previewDelayMilliseconds = 120;

QCheckBox* NewCheck(const QString& name, const QString& text, const QString& toolTip) {
    auto* check = new QCheckBox(text);
    check->setObjectName(name);
    check->setToolTip(toolTip);
    return check;
}

} // namespace

CSequenceDialog::CSequenceDialog(QWidget* parent, const CSequenceRequest& request)
    : CDialog(parent, "Import Sequence"),
      m_request(request),
      m_files(new CReadOnlyTable("files", {"File", "Becomes", ""})),
      m_gaps(new QLabel),
      m_preview(new CSequencePreview),
      m_kind(new CRadioGroup({"&Cels of the folder", "&Pictures called"},
                             request.initial.kind == SourceMode::Pictures ? 1 : 0)),
      m_folder(new QComboBox),
      m_pictures(new QLineEdit),
      m_counts(NewCheck("counts", "Count &on from :",
                        "Gives the files numbers one after the other instead of those that their names end in")),
      m_firstNumber(new CNumberEdit("firstNumber", NumberKind::Whole)),
      m_threshold(new CNumberSlider("threshold", 0, CLineRules::mostThreshold, NumberKind::Whole)),
      m_specks(new CNumberSlider("specks", 0, CLineRules::mostSpecks, NumberKind::Whole, "pixels")),
      m_exposure(new CSequenceExposure(request.levelNames)),
      m_later(new QTimer(this)) {
    setObjectName("Sequence");
    m_lines = LinesGroup();
    auto* grid = new QGridLayout;
    grid->addWidget(FilesPanel(), 0, 0);
    grid->addWidget(m_preview, 0, 1);
    grid->addWidget(NamesGroup(), 1, 0);
    grid->addWidget(m_lines, 1, 1);
    grid->addWidget(m_exposure, 2, 0, 1, 2);
    grid->setRowStretch(0, 1);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    Body().addLayout(grid, 1);
    OkButton().setText("&Import");
    Show(request.initial);
    FollowChanges();
    ShowChoices();
    ShowPreview();
    m_files->setFocus();
}

QWidget* CSequenceDialog::FilesPanel() {
    m_files->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_files->setMinimumWidth(fontMetrics().averageCharWidth() * 55);
    m_gaps->setObjectName("gaps");
    m_gaps->setTextFormat(Qt::PlainText);
    m_gaps->setWordWrap(true);
    auto* label = LabelFor("&Files :", *m_files);
    label->setAlignment(Qt::AlignLeft);
    auto* panel = new QWidget;
    auto* column = new QVBoxLayout(panel);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(label);
    column->addWidget(m_files, 1);
    column->addWidget(m_gaps);
    return panel;
}

QGroupBox* CSequenceDialog::NamesGroup() {
    m_kind->setObjectName("kind");
    m_folder->setObjectName("folder");
    m_folder->setEditable(true);
    m_folder->setInsertPolicy(QComboBox::NoInsert);
    m_folder->setToolTip("A folder of the scene, or a new one");
    m_folder->setAccessibleName("Folder of the cels");
    for (const std::string& folder : m_request.folders)
        m_folder->addItem(ToQt(folder));
    m_pictures->setObjectName("pictures");
    m_pictures->setToolTip("Letters and numbers, before the number of each picture");
    m_pictures->setAccessibleName("What the pictures are called");
    m_firstNumber->setAccessibleName("Number to count on from");
    auto* fields = new QVBoxLayout;
    fields->addWidget(m_folder);
    fields->addWidget(m_pictures);
    auto* grid = new QGridLayout;
    grid->addWidget(m_kind, 0, 0);
    grid->addLayout(fields, 0, 1);
    grid->addWidget(m_counts, 1, 0);
    grid->addWidget(m_firstNumber, 1, 1, Qt::AlignLeft);
    grid->setColumnStretch(1, 1);
    return GroupOf("Import as", grid);
}

QGroupBox* CSequenceDialog::LinesGroup() {
    m_threshold->setToolTip("What is darker becomes a line, what is lighter becomes paper");
    m_specks->setToolTip("Groups of at most so many line pixels are left out");
    auto* grid = new QGridLayout;
    AddLabeled(*grid, 0, 0, "&Threshold :", *m_threshold);
    AddLabeled(*grid, 1, 0, "&Despeckle :", *m_specks);
    grid->setRowStretch(2, 1);
    return GroupOf("Lines of cels", grid);
}

void CSequenceDialog::Show(const CSequence& sequence) {
    m_files->setRowCount(static_cast<int>(sequence.files.size()));
    m_folder->setCurrentText(ToQt(sequence.folder));
    m_pictures->setText(ToQt(sequence.pictures));
    m_counts->setChecked(sequence.firstNumber.has_value());
    m_firstNumber->SetValue(sequence.firstNumber.value_or(1));
    m_threshold->Edit().SetValue(sequence.lines.threshold);
    m_specks->Edit().SetValue(sequence.lines.specks);
    m_exposure->Show(sequence);
}

void CSequenceDialog::FollowChanges() {
    const auto show = [this] { ShowChoices(); };
    m_kind->changed = [this](int) { ShowChoices(); };
    for (const QLineEdit* edit :
         {m_pictures, static_cast<QLineEdit*>(m_firstNumber), static_cast<QLineEdit*>(&m_threshold->Edit()),
          static_cast<QLineEdit*>(&m_specks->Edit())})
        connect(edit, &QLineEdit::textChanged, this, show);
    connect(m_folder, &QComboBox::currentTextChanged, this, show);
    connect(m_counts, &QCheckBox::toggled, this, show);
    m_exposure->changed = show;
    connect(m_files, &QTableWidget::currentCellChanged, m_later, qOverload<>(&QTimer::start));
    m_later->setSingleShot(true);
    m_later->setInterval(previewDelayMilliseconds);
    connect(m_later, &QTimer::timeout, this, &CSequenceDialog::ShowPreview);
}

bool CSequenceDialog::ArePictures() const {
    return m_kind->Chosen() == 1;
}

void CSequenceDialog::ShowChoices() {
    m_folder->setEnabled(!ArePictures());
    m_pictures->setEnabled(ArePictures());
    m_firstNumber->setEnabled(m_counts->isChecked());
    m_lines->setEnabled(!ArePictures());
    const CSequence sequence = Values();
    ShowImages(sequence);
    m_exposure->ShowResult(m_request.exposure ? m_request.exposure(sequence) : std::string());
    m_later->start();
}

void CSequenceDialog::ShowImages(const CSequence& sequence) {
    const auto images = ImagesOf(sequence);
    for (int row = 0; row < m_files->rowCount(); ++row) {
        const auto index = static_cast<std::size_t>(row);
        const Path& file = images ? (*images)[index].file : sequence.files[index];
        const bool isThere = images && m_request.exists && m_request.exists(sequence, (*images)[index].name);
        m_files->Show(row, 0, ToQt(Utf8Of(file.filename())));
        m_files->Show(row, 1, images ? ToQt((*images)[index].name) : QString("?"));
        m_files->Show(row, 2, isThere ? "replaces one" : "");
    }
    if (m_files->currentRow() < 0)
        m_files->setCurrentCell(0, 0);
    const QString count = Counted(m_files->rowCount(), "file", "files");
    if (!images)
        m_gaps->setText(count + ". Not every file ends in a number of its own.");
    else if (const std::string missing = MissingNumbers(*images); !missing.empty())
        m_gaps->setText(count + ", missing: " + ToQt(missing));
    else
        m_gaps->setText(count);
}

void CSequenceDialog::ShowPreview() {
    const CSequence sequence = Values();
    const auto row = static_cast<std::size_t>(std::max(0, m_files->currentRow()));
    if (!m_request.read || row >= sequence.files.size())
        return;
    const auto images = ImagesOf(sequence);
    const CWaitCursor wait;
    m_preview->Show(m_request.read(sequence, images ? (*images)[row].file : sequence.files[row]));
}

CSequence CSequenceDialog::Values() const {
    CSequence sequence = m_request.initial;
    sequence.kind = ArePictures() ? SourceMode::Pictures : SourceMode::Cels;
    sequence.folder = FromQt(m_folder->currentText().trimmed());
    sequence.pictures = FromQt(m_pictures->text().trimmed());
    sequence.firstNumber.reset();
    if (m_counts->isChecked())
        sequence.firstNumber = m_firstNumber->Whole().value_or(0);
    sequence.lines = {m_threshold->Edit().Whole().value_or(-1), m_specks->Edit().Whole().value_or(-1)};
    sequence.levelName = ArePictures() ? sequence.pictures : sequence.folder;
    m_exposure->Put(sequence);
    return sequence;
}

bool CSequenceDialog::Accepts() {
    if (IsAccepted(m_request.accept, Values()))
        return true;
    RefuseUnreadable({m_firstNumber, &m_threshold->Edit(), &m_specks->Edit()});
    m_exposure->RefuseUnreadable();
    return false;
}

} // namespace velmor
