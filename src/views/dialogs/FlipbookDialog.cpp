#include "views/dialogs/FlipbookDialog.h"

#include "views/Text.h"
#include "views/dialogs/RunDialog.h"
#include "views/widgets/FormParts.h"
#include "views/widgets/NumberSlider.h"
#include "views/widgets/RadioGroup.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace velmor {

namespace {

constexpr int leastPercent = 10;
constexpr int mostPercent = 100;

CNumberSlider* NewPercentage(const QString& name) {
    return new CNumberSlider(name, leastPercent, mostPercent, NumberKind::Whole, "%");
}

QPushButton* NewButton(const QString& name, const QString& text) {
    auto* button = new QPushButton(text);
    button->setObjectName(name);
    button->setAutoDefault(false);
    return button;
}

// Numbers that every rule refuses.
CFlipbookSettings Refused() {
    return {{}, 0, 0, 0, 0, 0, false};
}

} // namespace

CFlipbookDialog::CFlipbookDialog(QWidget* parent, const CFlipbookRequest& request)
    : CDialog(parent, "Generate Flipbook"),
      m_accept(request.accept),
      m_levels(new QListWidget),
      m_start(new CNumberEdit("start", NumberKind::Whole)),
      m_end(new CNumberEdit("end", NumberKind::Whole)),
      m_step(new CNumberEdit("step", NumberKind::Whole)),
      m_scaling(NewPercentage("scaling")),
      m_quality(NewPercentage("quality")),
      m_antialias(new CRadioGroup({"O&FF", "O&N"}, request.initial.antialias ? 1 : 0, Qt::Horizontal)) {
    setObjectName("Flipbook");
    AddLevels(request);
    AddRange(request.initial, request.frameCount);
    AddQuality(request.initial);
    OkButton().setText("&Generate!");
    m_start->BeFirst();
}

void CFlipbookDialog::AddLevels(const CFlipbookRequest& request) {
    m_levels->setObjectName("levels");
    m_levels->setSelectionMode(QAbstractItemView::MultiSelection);
    for (const std::string& name : request.levelNames)
        m_levels->addItem(ToQt(name));
    for (const int level : request.initial.levels)
        if (QListWidgetItem* item = m_levels->item(level))
            item->setSelected(true);
    auto* all = NewButton("all", "<- &All");
    auto* none = NewButton("none", "<- N&one");
    connect(all, &QPushButton::clicked, m_levels, &QListWidget::selectAll);
    connect(none, &QPushButton::clicked, m_levels, &QListWidget::clearSelection);
    auto* label = LabelFor("&Levels Used (select/deselect)", *m_levels);
    label->setAlignment(Qt::AlignLeft);
    auto* grid = new QGridLayout;
    grid->addWidget(label, 0, 0);
    grid->addWidget(m_levels, 1, 0, 3, 1);
    grid->addWidget(all, 1, 1);
    grid->addWidget(none, 2, 1);
    grid->setRowStretch(3, 1);
    grid->setColumnStretch(0, 1);
    Body().addLayout(grid, 1);
}

void CFlipbookDialog::AddRange(const CFlipbookSettings& initial, int frameCount) {
    auto* grid = new QGridLayout;
    AddLabeled(*grid, 0, 0, "&Start :", *m_start);
    AddLabeled(*grid, 0, 2, "&End :", *m_end);
    AddLabeled(*grid, 0, 4, "S&tep :", *m_step);
    auto* all = NewButton("allFrames", "<- All f&rames");
    connect(all, &QPushButton::clicked, this, [this, frameCount] {
        m_start->SetValue(1);
        m_end->SetValue(frameCount);
    });
    grid->addWidget(all, 0, 6);
    grid->setColumnStretch(7, 1);
    Body().addLayout(grid);
    m_start->SetValue(initial.firstFrame);
    m_end->SetValue(initial.lastFrame);
    m_step->SetValue(initial.step);
}

void CFlipbookDialog::AddQuality(const CFlipbookSettings& initial) {
    auto* grid = new QGridLayout;
    AddLabeled(*grid, 0, 0, "S&caling", *m_scaling);
    AddLabeled(*grid, 1, 0, "Compression &Quality && Antialiasing", *m_quality);
    m_antialias->setObjectName("antialias");
    AddLabeled(*grid, 2, 0, "Antialiasing :", *m_antialias);
    Body().addLayout(grid);
    m_scaling->Edit().SetValue(initial.scaling);
    m_quality->Edit().SetValue(initial.quality);
}

CFlipbookSettings CFlipbookDialog::Values(const CFlipbookSettings& unreadable) const {
    CFlipbookSettings settings;
    for (int row = 0; row < m_levels->count(); ++row)
        if (m_levels->item(row)->isSelected() && settings.levels.size() < CFlipbookSettings::mostLevels)
            settings.levels.push_back(row);
    settings.firstFrame = m_start->Whole().value_or(unreadable.firstFrame);
    settings.lastFrame = m_end->Whole().value_or(unreadable.lastFrame);
    settings.step = m_step->Whole().value_or(unreadable.step);
    settings.scaling = m_scaling->Edit().Whole().value_or(unreadable.scaling);
    settings.quality = m_quality->Edit().Whole().value_or(unreadable.quality);
    settings.antialias = m_antialias->Chosen() == 1;
    return settings;
}

bool CFlipbookDialog::Accepts() {
    if (IsAccepted(m_accept, Values(Refused())))
        return true;
    RefuseUnreadable({m_start, m_end, m_step, &m_scaling->Edit(), &m_quality->Edit()});
    return false;
}

} // namespace velmor
