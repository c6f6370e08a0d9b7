#include "views/scan/ScanDialog.h"

#include "views/Text.h"
#include "views/scan/ScanForm.h"
#include "views/scan/ScanPreview.h"
#include "views/widgets/FormParts.h"
#include "views/widgets/NumberEdit.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <cmath>

namespace velmor {

namespace {

QPushButton* NewButton(const char* name, const QString& text, const QString& toolTip) {
    auto* button = new QPushButton(text);
    button->setObjectName(name);
    button->setToolTip(toolTip);
    button->setAutoDefault(false);
    return button;
}

} // namespace

CScanDialog::CScanDialog(QWidget* parent, const CScanWindowRequest& request, CScanWindowActions actions)
    : QDialog(parent),
      m_actions(std::move(actions)),
      m_abilities(request.abilities),
      m_initial(request.initial),
      m_picture(new CScanPreview(GlassOf(request.abilities))),
      m_resolution(new QComboBox),
      m_paper(new QComboBox),
      m_feeder(new QCheckBox("&All pages of the document feeder")),
      m_size(new QLabel),
      m_progress(new QProgressBar),
      m_message(new QLabel) {
    setObjectName("Scan");
    setWindowTitle("Scan");
    setWindowModality(Qt::ApplicationModal);
    auto* upper = new QHBoxLayout;
    upper->setSpacing(14);
    auto* choices = CreateChoices(request);
    choices->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
    upper->addWidget(choices);
    upper->addWidget(m_picture, 1);
    auto* all = new QVBoxLayout(this);
    all->setSpacing(10);
    all->addLayout(upper, 1);
    all->addLayout(CreateButtons());
    m_picture->areaDrawn = [this](const CScanArea& area) {
        m_area = area;
        ShowArea();
    };
    resize(fontMetrics().averageCharWidth() * 120, fontMetrics().height() * 38);
    SetArea(request.initial.area);
    ShowWork();
    m_scan->setFocus();
}

QWidget* CScanDialog::CreateChoices(const CScanWindowRequest& request) {
    auto* panel = new QWidget;
    auto* grid = new QGridLayout(panel);
    grid->setContentsMargins(0, 0, 0, 0);
    AddShown(*grid, 0, 0, "Scanner :", "scanner", ToQt(request.deviceName));
    // What the command takes; anything else would be scanned and then refused.
    AddShown(*grid, 1, 0, "Scan as :", "mode",
             m_initial.mode == ScanMode::Color ? "Color, for pictures" : "Line art, black and white, for cels");
    m_resolution->setObjectName("resolution");
    const std::vector<int> resolutions = ResolutionsOf(m_abilities);
    for (const int resolution : resolutions)
        m_resolution->addItem(QString::number(resolution) + " dpi", resolution);
    m_resolution->setCurrentIndex(NearestResolution(resolutions, m_initial.resolution));
    AddLabeled(*grid, 2, 0, "&Resolution :", *m_resolution);
    m_paper->setObjectName("paper");
    for (const CPaper& paper : Papers())
        m_paper->addItem(paper.name);
    m_paper->addItem("Drawn area");
    AddLabeled(*grid, 3, 0, "&Paper :", *m_paper);
    AddArea(*grid, 4);
    m_feeder->setObjectName("feeder");
    m_feeder->setToolTip("Scans page after page until the feeder is empty");
    m_feeder->setEnabled(m_abilities.hasFeeder);
    m_feeder->setChecked(m_abilities.hasFeeder && m_initial.feeder);
    grid->addWidget(m_feeder, 6, 1);
    m_size->setObjectName("size");
    m_size->setForegroundRole(QPalette::PlaceholderText);
    grid->addWidget(m_size, 7, 1);
    grid->setRowStretch(8, 1);
    grid->setColumnStretch(1, 1);

    connect(m_resolution, &QComboBox::currentIndexChanged, this, [this] { ShowSize(); });
    connect(m_paper, &QComboBox::activated, this, [this](int index) {
        if (index < static_cast<int>(Papers().size()))
            SetArea(AreaOf(Papers()[static_cast<std::size_t>(index)], GlassOf(m_abilities)));
        else
            ShowPaper();
    });
    return panel;
}

void CScanDialog::AddArea(QGridLayout& grid, int row) {
    static constexpr std::array<const char*, 4> names = {"left", "top", "width", "height"};
    static constexpr std::array<const char*, 4> labels = {"Le&ft :", "&Top :", "&Width :", "&Height :"};
    auto* edges = new QGridLayout;
    for (int side = 0; side < 4; ++side) {
        const auto index = static_cast<std::size_t>(side);
        auto* edit = new CNumberEdit(names[index], NumberKind::Decimal);
        edit->setToolTip("In millimetres");
        m_edges[index] = edit;
        AddLabeled(*edges, side / 2, side % 2 * 3, labels[index], *edit);
        edges->addWidget(new QLabel("mm"), side / 2, side % 2 * 3 + 2);
        connect(edit, &QLineEdit::textEdited, this, [this] { ReadArea(); });
        connect(edit, &QLineEdit::editingFinished, this, [this] { SetArea(m_area); });
    }
    edges->setColumnStretch(6, 1);
    auto* group = GroupOf("Area", edges);
    grid.addWidget(group, row, 0, 2, 2);
}

QLayout* CScanDialog::CreateButtons() {
    m_preview = NewButton("preview", "Pre&view", "Scans the whole glass quickly");
    m_scan = NewButton("scan", "&Scan", "Scans the chosen area");
    m_scan->setDefault(true);
    m_stop = NewButton("stop", "St&op", "Stops the scanner");
    auto* close = NewButton("close", "Close", "Ends scanning");
    connect(m_preview, &QPushButton::clicked, this, [this] { Start(m_actions.preview); });
    connect(m_scan, &QPushButton::clicked, this, [this] { Start(m_actions.scan); });
    connect(m_stop, &QPushButton::clicked, this, [this] { m_actions.cancel(); });
    connect(close, &QPushButton::clicked, this, &CScanDialog::reject);
    m_message->setObjectName("message");
    m_message->setTextFormat(Qt::PlainText);
    m_progress->setObjectName("progress");
    m_progress->setAccessibleName("Progress of the page");
    m_progress->setTextVisible(false);
    m_progress->setMaximumWidth(fontMetrics().averageCharWidth() * 22);
    // The window keeps its size when the scanner starts.
    for (QWidget* hidden : std::initializer_list<QWidget*>{m_progress, m_stop}) {
        QSizePolicy policy = hidden->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        hidden->setSizePolicy(policy);
    }

    auto* row = new QHBoxLayout;
    row->addWidget(m_message, 1);
    row->addWidget(m_progress);
    row->addWidget(m_stop);
    row->addSpacing(8);
    row->addWidget(m_preview);
    row->addWidget(m_scan);
    row->addWidget(close);
    return row;
}

void CScanDialog::SetArea(const CScanArea& area) {
    m_area = FitArea(area, GlassOf(m_abilities));
    ShowArea();
}

void CScanDialog::ShowArea() {
    const std::array<double, 4> values = {m_area.left, m_area.top, m_area.width, m_area.height};
    for (std::size_t side = 0; side < m_edges.size(); ++side)
        m_edges[side]->SetValue(std::round(values[side] * 10) / 10);
    ShowPaper();
    m_picture->SetArea(m_area);
    ShowSize();
}

void CScanDialog::ReadArea() {
    std::array<double, 4> values{};
    for (std::size_t side = 0; side < m_edges.size(); ++side)
        values[side] = m_edges[side]->ValueOrNan();
    if (!(values[0] >= 0 && values[1] >= 0 && values[2] > 0 && values[3] > 0))
        return;
    m_area = FitArea({values[0], values[1], values[2], values[3]}, GlassOf(m_abilities));
    ShowPaper();
    m_picture->SetArea(m_area);
    ShowSize();
}

void CScanDialog::ShowPaper() {
    const int paper = PaperOf(m_area, GlassOf(m_abilities));
    m_paper->setCurrentIndex(paper >= 0 ? paper : static_cast<int>(Papers().size()));
}

int CScanDialog::Resolution() const {
    return m_resolution->currentData().toInt();
}

void CScanDialog::ShowSize() {
    const CScanSize size = SizeOf(m_area, Resolution());
    QString text = QString("%1 x %2 pixels").arg(size.width).arg(size.height);
    if (!size.isPossible)
        text = "Too large or too small for an image";
    m_size->setText(text);
    m_scan->setEnabled(!m_state.isBusy && size.isPossible);
}

CScanSettings CScanDialog::Settings() const {
    CScanSettings settings = m_initial;
    settings.resolution = Resolution();
    settings.area = m_area;
    settings.feeder = m_feeder->isChecked();
    return settings;
}

void CScanDialog::Start(const std::function<void(const CScanSettings&)>& action) {
    if (m_state.isBusy)
        return;
    // Until the scanner says otherwise, so that a double click does not ask it twice.
    ShowState({true, 0, ""});
    action(Settings());
}

void CScanDialog::ShowState(const CScanWindowState& state) {
    if (state == m_state)
        return;
    m_state = state;
    ShowWork();
}

void CScanDialog::ShowWork() {
    m_message->setText(ToQt(m_state.message));
    m_progress->setVisible(m_state.isBusy);
    m_progress->setRange(0, m_state.progress > 0 ? 100 : 0);
    m_progress->setValue(m_state.progress);
    m_stop->setVisible(m_state.isBusy);
    m_preview->setEnabled(!m_state.isBusy);
    ShowSize();
}

void CScanDialog::ShowPreview(const CScannedPage& page) {
    m_picture->SetPicture(ImageOf(page));
}

void CScanDialog::reject() {
    m_actions.close();
}

} // namespace velmor
