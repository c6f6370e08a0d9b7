#include "views/dialogs/CleanupDialog.h"

#include "image/clean/LineWeight.h"
#include "views/Text.h"
#include "views/dialogs/CleanupTexts.h"
#include "views/dialogs/RunDialog.h"
#include "views/dialogs/SplitPreview.h"
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
#include <QSlider>
#include <QTimer>
#include <algorithm>
#include <limits>

namespace velmor {

namespace {

constexpr int previewDelayMilliseconds = 150;
constexpr int splitSteps = 1000;

QCheckBox* NewCheck(const QString& name, const QString& text, const QString& toolTip) {
    auto* check = new QCheckBox(text);
    check->setObjectName(name);
    check->setToolTip(toolTip);
    return check;
}

QPushButton* NewButton(const QString& name, const QString& text, const QString& toolTip) {
    auto* button = new QPushButton(text);
    button->setObjectName(name);
    button->setToolTip(toolTip);
    button->setAutoDefault(false);
    return button;
}

QLabel* NewText(const QString& name, int lines) {
    auto* label = new QLabel;
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    label->setMinimumHeight(label->fontMetrics().height() * lines);
    return label;
}

} // namespace

CCleanupDialog::CCleanupDialog(QWidget* parent, const CCleanupRequest& request)
    : CDialog(parent, request.kind == SourceMode::Pictures ? "Clean Up Pictures" : "Clean Up Cels"),
      m_request(request),
      m_which(new CRadioGroup({QString("Tho&se that are chosen (%1)").arg(request.chosen.size()),
                               QString("&All (%1)").arg(request.all.size())},
                              request.initial.all ? 1 : 0)),
      m_drawings(new CReadOnlyTable("drawings", {"Drawing", "Peg holes"})),
      m_holesText(NewText("holesText", 3)),
      m_preview(new CSplitPreview("preview")),
      m_split(new QSlider(Qt::Horizontal)),
      m_previewText(NewText("previewText", 2)),
      m_previous(NewButton("previous", "&Previous", "Shows the drawing before this one")),
      m_next(NewButton("next", "&Next", "Shows the drawing after this one")),
      m_threshold(new CNumberSlider("threshold", 0, CCleanup::mostThreshold, NumberKind::Whole)),
      m_specks(new CNumberSlider("specks", 0, CCleanup::mostSpecks, NumberKind::Whole, "pixels")),
      m_weight(
          new CNumberSlider("weight", -mostLineWeightChange, mostLineWeightChange, NumberKind::Whole, "pixels")),
      m_straightens(NewCheck("straightens", "Strai&ghten",
                             "Turns each drawing level: by its peg holes, or else by long straight lines such as "
                             "those of a frame")),
      m_registers(NewCheck("registers", "&Register on the peg holes",
                           "Turns and moves each drawing so that its peg holes come to lie on those of the "
                           "reference")),
      m_reference(new QComboBox),
      m_useThis(NewButton("useThis", "Th&is Drawing", "Makes the drawing that is shown the reference")),
      m_dpi(new CNumberEdit("dpi", NumberKind::Whole)),
      m_erasesPegs(NewCheck("erasesPegs", "Erase the peg &holes", "Leaves white paper where they are")),
      m_later(new QTimer(this)),
      m_search(new QTimer(this)) {
    setObjectName("Cleanup");
    auto* groups = new QVBoxLayout;
    groups->addWidget(DrawingsPanel(), 1);
    groups->addWidget(LinesGroup());
    groups->addWidget(PlaceGroup());
    auto* row = new QHBoxLayout;
    row->addLayout(groups);
    row->addWidget(PreviewPanel(), 1);
    Body().addLayout(row, 1);
    OkButton().setText("Clean &Up");
    Show(request.initial);
    FollowChanges();
    ShowNames();
    ShowChoices();
    m_drawings->setFocus();
}

QWidget* CCleanupDialog::DrawingsPanel() {
    m_which->setObjectName("which");
    m_which->setEnabled(!m_request.chosen.empty());
    m_drawings->setAccessibleName("Drawings");
    m_drawings->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    m_drawings->setMinimumHeight(m_drawings->fontMetrics().height() * 6);
    auto* panel = new QWidget;
    auto* column = new QVBoxLayout(panel);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_which);
    column->addWidget(m_drawings, 1);
    column->addWidget(m_holesText);
    return panel;
}

QWidget* CCleanupDialog::PreviewPanel() {
    m_split->setObjectName("split");
    m_split->setRange(0, splitSteps);
    m_split->setValue(splitSteps / 2);
    m_split->setAccessibleName("How much of the drawing is shown as it was before");
    auto* fit = NewButton("fit", "&Fit", "Shows the whole drawing");
    auto* actual = NewButton("actual", "&1:1", "Shows a pixel of the drawing as a pixel of the screen");
    connect(fit, &QPushButton::clicked, this, [this] { m_preview->Fit(); });
    connect(actual, &QPushButton::clicked, this, [this] { m_preview->ShowActualSize(); });
    auto* between = new QHBoxLayout;
    between->addWidget(new QLabel("Before"));
    between->addWidget(m_split, 1);
    between->addWidget(new QLabel("After"));
    auto* buttons = new QHBoxLayout;
    for (QPushButton* button : {m_previous, m_next, fit, actual})
        buttons->addWidget(button);
    buttons->insertStretch(2);
    auto* panel = new QWidget;
    auto* column = new QVBoxLayout(panel);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_preview, 1);
    column->addLayout(between);
    column->addLayout(buttons);
    column->addWidget(m_previewText);
    return panel;
}

QGroupBox* CCleanupDialog::LinesGroup() {
    m_threshold->setToolTip(ArePictures()
                                ? "What is darker becomes black, what is lighter becomes white; 0 leaves "
                                  "the greys"
                                : "The lines of a cel are lines already: there is no grey that a threshold "
                                  "could divide");
    m_threshold->setEnabled(ArePictures());
    auto* grid = new QGridLayout;
    AddLabeled(*grid, 0, 0, "&Threshold :", *m_threshold);
    AddLabeled(*grid, 1, 0, "&Despeckle :", *m_specks);
    AddLabeled(*grid, 2, 0, "Thic&ker :", *m_weight);
    return GroupOf("Lines", grid);
}

QGroupBox* CCleanupDialog::PlaceGroup() {
    m_reference->setObjectName("reference");
    m_reference->setToolTip("Where the peg holes of all drawings come to lie");
    m_reference->addItem("Level, in the middle");
    m_reference->setMinimumContentsLength(18);
    for (const std::string& name : m_request.all)
        m_reference->addItem(ToQt(name));
    m_dpi->setToolTip("Pixels an inch that the drawings were scanned with; 0 if you do not know");
    auto* grid = new QGridLayout;
    grid->addWidget(m_straightens, 0, 0, 1, 3);
    grid->addWidget(m_registers, 1, 0, 1, 3);
    AddLabeled(*grid, 2, 0, "R&eference :", *m_reference);
    grid->addWidget(m_useThis, 2, 2);
    AddLabeled(*grid, 3, 0, "Res&olution :", *m_dpi);
    grid->addWidget(new QLabel("dpi"), 3, 2);
    grid->addWidget(m_erasesPegs, 4, 0, 1, 3);
    grid->setColumnStretch(1, 1);
    return GroupOf("Place", grid);
}

void CCleanupDialog::Show(const CCleanupValues& values) {
    const CCleanup& cleanup = values.cleanup;
    m_threshold->Edit().SetValue(cleanup.threshold);
    m_specks->Edit().SetValue(cleanup.specks);
    m_weight->Edit().SetValue(cleanup.weight);
    m_straightens->setChecked(cleanup.straightens);
    m_registers->setChecked(cleanup.registers);
    m_erasesPegs->setChecked(cleanup.erasesPegs);
    m_dpi->SetValue(cleanup.dpi.value_or(0));
    m_reference->setCurrentIndex(std::max(0, m_reference->findText(ToQt(values.reference))));
}

void CCleanupDialog::FollowChanges() {
    const auto show = [this] { ShowChoices(); };
    m_which->changed = [this](int) { ShowNames(); };
    for (const QLineEdit* edit :
         {static_cast<QLineEdit*>(&m_threshold->Edit()), static_cast<QLineEdit*>(&m_specks->Edit()),
          static_cast<QLineEdit*>(&m_weight->Edit()), static_cast<QLineEdit*>(m_dpi)})
        connect(edit, &QLineEdit::textChanged, this, show);
    for (const QCheckBox* check : {m_straightens, m_registers, m_erasesPegs})
        connect(check, &QCheckBox::toggled, this, show);
    connect(m_reference, qOverload<int>(&QComboBox::currentIndexChanged), this, show);
    connect(m_useThis, &QPushButton::clicked, this,
            [this] { m_reference->setCurrentText(m_drawings->item(m_drawings->currentRow(), 0)->text()); });
    connect(m_previous, &QPushButton::clicked, this, [this] { Step(-1); });
    connect(m_next, &QPushButton::clicked, this, [this] { Step(1); });
    connect(m_split, &QSlider::valueChanged, this,
            [this](int value) { m_preview->SetSplit(static_cast<double>(value) / splitSteps); });
    m_preview->splitChanged = [this](double split) {
        m_split->setValue(static_cast<int>(split * splitSteps + 0.5));
    };
    connect(m_drawings, &QTableWidget::currentCellChanged, this, [this](int row) {
        m_previous->setEnabled(row > 0);
        m_next->setEnabled(row + 1 < m_drawings->rowCount());
        m_later->start();
    });
    m_later->setSingleShot(true);
    m_later->setInterval(previewDelayMilliseconds);
    connect(m_later, &QTimer::timeout, this, &CCleanupDialog::ShowPreview);
    m_search->setSingleShot(true);
    m_search->setInterval(0);
    connect(m_search, &QTimer::timeout, this, &CCleanupDialog::SearchNext);
}

const std::vector<std::string>& CCleanupDialog::Names() const {
    return m_which->Chosen() == 1 ? m_request.all : m_request.chosen;
}

void CCleanupDialog::ShowNames() {
    const std::vector<std::string>& names = Names();
    m_drawings->setRowCount(static_cast<int>(names.size()));
    for (std::size_t row = 0; row < names.size(); ++row)
        m_drawings->Show(static_cast<int>(row), 0, ToQt(names[row]));
    m_drawings->setCurrentCell(names.empty() ? -1 : 0, 0);
    ShowHoles();
    m_later->start();
    m_search->start();
}

void CCleanupDialog::ShowChoices() {
    const CCleanupValues values = Values();
    const bool areLines = !ArePictures() || values.cleanup.threshold > 0;
    for (QWidget* field : {static_cast<QWidget*>(m_specks), static_cast<QWidget*>(m_weight)})
        field->setEnabled(areLines);
    m_specks->setToolTip(areLines
                             ? "Groups of at most so many line pixels go; the paint around them takes their place"
                             : "Only with a threshold: what is grey has no lines");
    m_weight->setToolTip(areLines ? "Lines grow by so many pixels on either side, or shrink if it is below 0"
                                  : m_specks->toolTip());
    m_reference->setEnabled(values.cleanup.registers);
    m_useThis->setEnabled(values.cleanup.registers);
    m_dpi->setEnabled(values.cleanup.NeedsPegs());
    CheckSearch(values);
    m_later->start();
}

void CCleanupDialog::CheckSearch(const CCleanupValues& values) {
    const CPegSearch search = PegSearchOf(values.cleanup);
    if ((ArePictures() && search.threshold != m_searched.threshold) || search.dpi != m_searched.dpi)
        m_holes.clear();
    m_searched = search;
    ShowHoles();
    m_search->start();
}

void CCleanupDialog::SearchNext() {
    const CCleanupValues values = Values();
    if (!values.cleanup.NeedsPegs() || !m_request.findPegs)
        return;
    const auto next =
        std::ranges::find_if(Names(), [this](const std::string& name) { return !m_holes.contains(name); });
    if (next == Names().end())
        return;
    CHoles& holes = m_holes[*next];
    holes.status = m_request.findPegs(values, *next, holes.pegs);
    ShowHoles();
    m_search->start();
}

void CCleanupDialog::ShowHoles() {
    const bool areNeeded = Values().cleanup.NeedsPegs();
    std::vector<std::string> without;
    int looked = 0;
    for (int row = 0; row < m_drawings->rowCount(); ++row) {
        const std::string& name = Names()[static_cast<std::size_t>(row)];
        const auto found = m_holes.find(name);
        const bool isKnown = areNeeded && found != m_holes.end();
        looked += isKnown ? 1 : 0;
        if (isKnown && !found->second.status)
            without.push_back(name);
        m_drawings->Show(row, 1,
                         !areNeeded             ? QString()
                         : !isKnown             ? QString("...")
                         : found->second.status ? HolesText(found->second.pegs)
                                                : QString("not found"));
    }
    m_holesText->setText(areNeeded ? SearchText(looked, m_drawings->rowCount(), without) : QString());
}

void CCleanupDialog::ShowPreview() {
    const int row = m_drawings->currentRow();
    if (!m_request.preview || row < 0)
        return;
    const CWaitCursor wait;
    const CCleanupPreview preview = m_request.preview(Values(), Names()[static_cast<std::size_t>(row)]);
    m_preview->Show(SideOf(preview.before, preview.done.pegs), SideOf(preview.after, preview.done.placed));
    m_previewText->setText(PreviewText(preview));
}

void CCleanupDialog::Step(int rows) {
    m_drawings->setCurrentCell(std::clamp(m_drawings->currentRow() + rows, 0, m_drawings->rowCount() - 1), 0);
}

CCleanupValues CCleanupDialog::Values() const {
    constexpr int none = std::numeric_limits<int>::min(); // that no rule takes
    CCleanupValues values;
    CCleanup& cleanup = values.cleanup;
    cleanup.threshold = m_threshold->Edit().Whole().value_or(none);
    cleanup.specks = m_specks->Edit().Whole().value_or(none);
    cleanup.weight = m_weight->Edit().Whole().value_or(none);
    cleanup.straightens = m_straightens->isChecked();
    cleanup.registers = m_registers->isChecked();
    cleanup.erasesPegs = m_erasesPegs->isChecked();
    if (const int dpi = m_dpi->Whole().value_or(none); dpi != 0)
        cleanup.dpi = dpi;
    values.all = m_which->Chosen() == 1;
    if (m_reference->currentIndex() > 0)
        values.reference = FromQt(m_reference->currentText());
    return values;
}

bool CCleanupDialog::Accepts() {
    if (IsAccepted(m_request.accept, Values()))
        return true;
    RefuseUnreadable({&m_threshold->Edit(), &m_specks->Edit(), &m_weight->Edit(), m_dpi});
    return false;
}

} // namespace velmor
