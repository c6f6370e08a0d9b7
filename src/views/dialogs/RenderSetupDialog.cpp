#include "views/dialogs/RenderSetupDialog.h"

#include "views/Text.h"
#include "views/dialogs/RunDialog.h"
#include "views/prompter/ChooseFolder.h"
#include "views/widgets/FormParts.h"
#include "views/widgets/LevelListWidget.h"
#include "views/widgets/NumberSlider.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace velmor {

namespace {

constexpr int leastScaling = 1;
constexpr int mostScaling = 400;
constexpr int mostPercent = 100;

QPushButton* NewButton(const QString& name, const QString& text, const QString& toolTip) {
    auto* button = new QPushButton(text);
    button->setObjectName(name);
    button->setToolTip(toolTip);
    button->setAutoDefault(false);
    return button;
}

QCheckBox* NewCheck(const QString& name, const QString& text, const QString& toolTip) {
    auto* check = new QCheckBox(text);
    check->setObjectName(name);
    check->setToolTip(toolTip);
    return check;
}

bool HasQuality(const CRenderSetup& setup) {
    if (setup.format == RenderFormat::Mp4)
        return true;
    const CCompressor* compressor = FindCompressor(setup.compressor);
    return setup.format == RenderFormat::Avi && compressor != nullptr && compressor->hasQuality;
}

QString NameOf(const Path& file) {
    return ToQt(Utf8Of(file.filename()));
}

} // namespace

CRenderSetupDialog::CRenderSetupDialog(QWidget* parent, const CRenderSetupRequest& request)
    : CDialog(parent, "Render Setup"),
      m_request(request),
      m_compressor(request.initial.compressor),
      m_levels(new CLevelListWidget(request.levelNames)),
      m_start(new CNumberEdit("start", NumberKind::Whole)),
      m_end(new CNumberEdit("end", NumberKind::Whole)),
      m_step(new CNumberEdit("step", NumberKind::Whole)),
      m_scaling(new CNumberSlider("scaling", leastScaling, mostScaling, NumberKind::Whole, "%")),
      m_antialias(NewCheck("antialias", "Antial&iasing", "Smooths edges; rendering takes a little longer")),
      m_format(new QComboBox),
      m_transparent(NewCheck("transparent", "&Transparent background", "Leaves the background colour out")),
      m_chooseCompressor(NewButton("compressor", {}, "Chooses the compressor of the movie")),
      m_quality(new CNumberSlider("quality", 0, mostPercent, NumberKind::Whole, "%")),
      m_folder(new QLineEdit),
      m_name(new QLineEdit),
      m_resume(NewCheck("resume", "Res&ume: keep the frames that are there already",
                        "Renders only the frames whose files are missing")),
      m_result(new QLabel) {
    setObjectName("RenderSetup");
    auto* right = new QVBoxLayout;
    right->addWidget(FramesGroup());
    right->addWidget(PictureGroup());
    right->addWidget(FormatGroup());
    right->addStretch(1);
    auto* top = new QHBoxLayout;
    top->addWidget(LevelsGroup(), 1);
    top->addLayout(right, 1);
    Body().addLayout(top, 1);
    Body().addWidget(FilesGroup());
    OkButton().setText("Re&nder");
    Show(request.initial);
    FollowChanges();
    ShowOptions();
    m_start->BeFirst();
}

QWidget* CRenderSetupDialog::LevelsGroup() {
    m_levels->setSelectionMode(QAbstractItemView::MultiSelection);
    auto* all = NewButton("all", "<- &All", "Renders all levels");
    auto* none = NewButton("none", "<- N&one", "Selects no level");
    connect(all, &QPushButton::clicked, m_levels, &QListWidget::selectAll);
    connect(none, &QPushButton::clicked, m_levels, &QListWidget::clearSelection);
    auto* label = LabelFor("&Levels Used (select/deselect)", *m_levels);
    label->setAlignment(Qt::AlignLeft);
    auto* panel = new QWidget;
    auto* grid = new QGridLayout(panel);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->addWidget(label, 0, 0, 1, 2);
    grid->addWidget(m_levels, 1, 0, 1, 2);
    grid->addWidget(all, 2, 0);
    grid->addWidget(none, 2, 1);
    grid->setRowStretch(1, 1);
    return panel;
}

QWidget* CRenderSetupDialog::FramesGroup() {
    auto* grid = new QGridLayout;
    AddLabeled(*grid, 0, 0, "&Start :", *m_start);
    AddLabeled(*grid, 0, 2, "&End :", *m_end);
    AddLabeled(*grid, 0, 4, "Ste&p :", *m_step);
    auto* all = NewButton("allFrames", "<- All frames", "Renders the scene from its first frame to its last");
    connect(all, &QPushButton::clicked, this, [this] {
        m_start->SetValue(1);
        m_end->SetValue(m_request.frameCount);
    });
    grid->addWidget(all, 0, 6);
    grid->setColumnStretch(7, 1);
    return GroupOf("Frames", grid);
}

QWidget* CRenderSetupDialog::PictureGroup() {
    auto* grid = new QGridLayout;
    AddLabeled(*grid, 0, 0, "S&caling :", *m_scaling);
    grid->addWidget(m_antialias, 1, 1);
    grid->setColumnStretch(1, 1);
    return GroupOf("Picture", grid);
}

QWidget* CRenderSetupDialog::FormatGroup() {
    m_format->setObjectName("format");
    m_format->addItems(
        {"PNG pictures", "Targa pictures", "Windows bitmaps", "AVI movie", "MP4 movie (H.264)"}); // RenderFormat
    connect(m_chooseCompressor, &QPushButton::clicked, this, &CRenderSetupDialog::ChooseCompressor);
    auto* grid = new QGridLayout;
    AddLabeled(*grid, 0, 0, "&File Format :", *m_format);
    grid->addWidget(m_transparent, 1, 1);
    AddLabeled(*grid, 2, 0, "Comp&ressor :", *m_chooseCompressor);
    AddLabeled(*grid, 3, 0, "&Quality :", *m_quality);
    grid->setColumnStretch(1, 1);
    return GroupOf("Format", grid);
}

QWidget* CRenderSetupDialog::FilesGroup() {
    m_name->setObjectName("fileName");
    m_result->setObjectName("result");
    m_result->setForegroundRole(QPalette::PlaceholderText);
    m_result->setTextFormat(Qt::PlainText);
    m_result->setWordWrap(true);
    auto* grid = new QGridLayout;
    grid->addWidget(LabelFor("&Directory :", *m_folder), 0, 0);
    grid->addWidget(FolderField(), 0, 1);
    AddLabeled(*grid, 1, 0, "Na&me :", *m_name);
    grid->addWidget(m_resume, 2, 1);
    grid->addWidget(m_result, 3, 1);
    grid->setColumnStretch(1, 1);
    return GroupOf("Files", grid);
}

QWidget* CRenderSetupDialog::FolderField() {
    m_folder->setObjectName("folder");
    m_folder->setMinimumWidth(fontMetrics().averageCharWidth() * 50);
    auto* choose = NewButton("chooseFolder", "<< Set", "Chooses the folder for the rendered files");
    connect(choose, &QPushButton::clicked, this, &CRenderSetupDialog::ChooseFolder);
    auto* panel = new QWidget;
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_folder, 1);
    row->addWidget(choose);
    return panel;
}

void CRenderSetupDialog::Show(const CRenderSetup& setup) {
    for (const int level : setup.levels)
        if (QListWidgetItem* item = m_levels->item(level))
            item->setSelected(true);
    m_start->SetValue(setup.firstFrame);
    m_end->SetValue(setup.lastFrame);
    m_step->SetValue(setup.step);
    m_scaling->Edit().SetValue(setup.scaling);
    m_antialias->setChecked(setup.antialias);
    m_format->setCurrentIndex(static_cast<int>(setup.format));
    m_transparent->setChecked(setup.transparentBackground);
    m_chooseCompressor->setText(ToQt(m_compressor) + "...");
    m_quality->Edit().SetValue(setup.quality);
    m_folder->setText(ToQt(setup.directory));
    m_name->setText(ToQt(setup.name));
    m_resume->setChecked(setup.resume);
}

void CRenderSetupDialog::FollowChanges() {
    connect(m_format, &QComboBox::currentIndexChanged, this, &CRenderSetupDialog::ShowOptions);
    for (QLineEdit* edit : {static_cast<QLineEdit*>(m_start), static_cast<QLineEdit*>(m_end),
                            static_cast<QLineEdit*>(m_step), static_cast<QLineEdit*>(&m_scaling->Edit()), m_name})
        connect(edit, &QLineEdit::textChanged, this, &CRenderSetupDialog::ShowResult);
}

void CRenderSetupDialog::ShowOptions() {
    const CRenderSetup setup = Values();
    m_transparent->setEnabled(HasAlpha(setup.format));
    m_chooseCompressor->setEnabled(setup.format == RenderFormat::Avi);
    m_quality->setEnabled(HasQuality(setup));
    m_resume->setEnabled(!IsMovie(setup.format));
    ShowResult();
}

void CRenderSetupDialog::ShowResult() {
    m_result->setText(ResultOf(Values()));
}

QString CRenderSetupDialog::ResultOf(const CRenderSetup& setup) const {
    const bool isReadable = setup.firstFrame > 0 && setup.firstFrame <= setup.lastFrame &&
                            setup.lastFrame <= m_request.frameCount && setup.step > 0 &&
                            setup.scaling >= leastScaling && setup.scaling <= mostScaling;
    if (!isReadable || setup.name.empty())
        return {};
    const CRenderSettings settings = RenderSettingsOf(setup);
    const CSize size = RenderGeometryOf(settings, m_request.scene).output;
    const std::size_t count = settings.frames.size();
    QString files = NameOf(settings.target);
    if (!IsMovie(setup.format)) {
        files = NameOf(RenderFrameFile(settings, settings.frames.front()));
        if (count > 1)
            files += " to " + NameOf(RenderFrameFile(settings, settings.frames.back()));
    }
    return QString("%1, %2 of %3 x %4 pixels")
        .arg(files, count == 1 ? QString("1 frame") : QString("%1 frames").arg(count))
        .arg(size.width)
        .arg(size.height);
}

void CRenderSetupDialog::ChooseCompressor() {
    if (!m_request.chooseCompressor)
        return;
    if (const std::optional<std::string> chosen = m_request.chooseCompressor(m_compressor)) {
        m_compressor = *chosen;
        m_chooseCompressor->setText(ToQt(m_compressor) + "...");
        ShowOptions();
    }
}

void CRenderSetupDialog::ChooseFolder() {
    if (const std::optional<std::string> folder = CDChooseFolder(this).Ask(m_folder->text()))
        m_folder->setText(ToQt(*folder));
}

CRenderSetup CRenderSetupDialog::Values() const {
    CRenderSetup setup;
    for (int row = 0; row < m_levels->count(); ++row)
        if (m_levels->item(row)->isSelected())
            setup.levels.push_back(row);
    setup.firstFrame = m_start->Whole().value_or(0);
    setup.lastFrame = m_end->Whole().value_or(0);
    setup.step = m_step->Whole().value_or(0);
    setup.scaling = m_scaling->Edit().Whole().value_or(0);
    setup.antialias = m_antialias->isChecked();
    setup.format = static_cast<RenderFormat>(m_format->currentIndex());
    setup.transparentBackground = m_transparent->isChecked();
    setup.compressor = m_compressor;
    setup.quality = m_quality->Edit().Whole().value_or(-1);
    setup.directory = FromQt(m_folder->text());
    setup.name = FromQt(m_name->text().trimmed());
    setup.resume = m_resume->isChecked() && m_resume->isEnabled();
    return setup;
}

bool CRenderSetupDialog::Accepts() {
    if (IsAccepted(m_request.accept, Values()))
        return true;
    RefuseUnreadable({m_start, m_end, m_step, &m_scaling->Edit(), &m_quality->Edit()});
    return false;
}

} // namespace velmor
