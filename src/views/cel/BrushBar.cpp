#include "views/cel/BrushBar.h"

#include "image/paint/Brushes.h"
#include "image/paint/GapFill.h"
#include "image/paint/Tools.h"
#include "scene/AssetOperations.h"
#include "scene/PaintTools.h"
#include "scene/PaletteOperations.h"
#include "scene/SceneModel.h"
#include "views/Icons.h"
#include "views/cel/TipButton.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPainter>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QToolButton>

namespace velmor {

namespace {

constexpr int brushColumns = 3;
constexpr int brushSideOnBar = 46; ///< the largest tip and a frame
constexpr int penSideOnBar = 24;
constexpr int penScale = 3; ///< pens are too small to be told apart at their own size
constexpr int gap = 2;
constexpr int barsAround = 50; ///< heights of the tool bar above and of the handle
constexpr int widePane = 700;  ///< leaves enough for the image beside two columns

/// A panel that is scrolled when it is higher than its room.
class CTallArea final : public QScrollArea {
public:
    explicit CTallArea(QWidget* panel) {
        setWidget(panel);
        setWidgetResizable(true);
        panel->setAutoFillBackground(false); // the bar's own background
        viewport()->setAutoFillBackground(false);
        setFrameShape(QFrame::NoFrame);
        setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        setFocusPolicy(Qt::NoFocus);
    }
    QSize sizeHint() const override {
        const QSize panel = widget()->sizeHint();
        return {panel.width() + verticalScrollBar()->sizeHint().width(), panel.height()};
    }
    QSize minimumSizeHint() const override { return {sizeHint().width(), penSideOnBar}; }
};

void DrawRoundTip(QPainter& painter, int brush) {
    const double radius = BrushRadius(brush) + 0.5;
    painter.drawEllipse(QPointF(0.5, 0.5), radius, radius);
}

void DrawPenTip(QPainter& painter, int pen) {
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (int dy = -penReach; dy <= penReach; ++dy)
        for (int dx = -penReach; dx <= penReach; ++dx)
            if (penMasks[static_cast<std::size_t>(pen)][static_cast<std::size_t>(dy + penReach)]
                        [static_cast<std::size_t>(dx + penReach)] == '#')
                painter.drawRect(dx * penScale - 1, -dy * penScale - 1, penScale, penScale);
}

// Checks the button of an id, or none: a group that is exclusive does not let its last one go.
void Check(QButtonGroup& group, int id) {
    group.setExclusive(false);
    for (QAbstractButton* button : group.buttons())
        button->setChecked(group.id(button) == id);
    group.setExclusive(true);
}

void Enable(const QButtonGroup& group, bool enabled) {
    for (QAbstractButton* button : group.buttons())
        button->setEnabled(enabled);
}

} // namespace

CBrushBar::CBrushBar(const CSceneModel& model, CPaletteOperations& palette, CAssetOperations& assets,
                     QAction* updateCamera, QWidget* parent)
    : QToolBar("Brush Bar", parent),
      m_model(model),
      m_palette(palette),
      m_brushes(new QButtonGroup(this)),
      m_pens(new QButtonGroup(this)),
      m_bucketModes(new QButtonGroup(this)),
      m_rectangle(new QCheckBox("Rectangle")),
      m_gap(new QSpinBox) {
    setObjectName("brushBar");
    setAllowedAreas(Qt::LeftToolBarArea | Qt::RightToolBarArea);
    setFloatable(false);
    auto* panel = new QWidget;
    m_layout = new QGridLayout(panel);
    m_layout->setContentsMargins(gap, gap, gap, gap);
    m_parts = {MakeBrushes(), MakePens(), MakeBucketModes(), MakeFill(), MakeUpdateCamera(updateCamera, assets)};
    Arrange(false);
    m_area = new CTallArea(panel);
    addWidget(m_area);
    connect(m_brushes, &QButtonGroup::idClicked, this, [this](int brush) { m_palette.SetBrush(brush); });
    connect(m_pens, &QButtonGroup::idClicked, this, [this](int pen) { m_palette.SetPen(pen); });
    connect(m_bucketModes, &QButtonGroup::idClicked, this, [this](int mode) { m_palette.SetBucketMode(mode); });
    connect(m_rectangle, &QCheckBox::clicked, this,
            [this](bool checked) { m_palette.SetBrush(checked ? -1 : m_roundBrush); });
    UpdateBrushesandPens();
}

void CBrushBar::Arrange(bool twoColumns) {
    m_hasTwoColumns = twoColumns;
    const int last = static_cast<int>(m_parts.size());
    m_layout->addWidget(m_parts[0], 0, 0, twoColumns ? last : 1, 1, Qt::AlignTop);
    for (int i = 1; i < last; ++i)
        m_layout->addWidget(m_parts[static_cast<std::size_t>(i)], twoColumns ? i - 1 : i, twoColumns ? 1 : 0);
    m_layout->setRowStretch(last, 1);
    if (m_area != nullptr)
        m_area->updateGeometry();
}

void CBrushBar::FitInto(QSize pane) {
    int oneColumn = barsAround;
    for (const QWidget* part : m_parts)
        oneColumn += part->sizeHint().height() + m_layout->verticalSpacing();
    const bool twoColumns = pane.height() < oneColumn && pane.width() >= widePane;
    if (twoColumns != m_hasTwoColumns)
        Arrange(twoColumns);
}

QWidget* CBrushBar::MakeBrushes() {
    auto* box = new QGroupBox("Brushes");
    auto* layout = new QGridLayout(box);
    layout->setContentsMargins(gap, gap, gap, gap);
    layout->setSpacing(gap);
    for (int brush = 0; brush < brushCount; ++brush) {
        auto* button = new CTipButton(
            brushSideOnBar, [brush](QPainter& painter) { DrawRoundTip(painter, brush); },
            QString("Brush %1: %2 pixels wide").arg(brush + 1).arg(2 * BrushRadius(brush) + 1));
        button->setObjectName(QString("brush%1").arg(brush + 1));
        m_brushes->addButton(button, brush);
        layout->addWidget(button, brush / brushColumns, brush % brushColumns);
    }
    m_rectangle->setObjectName("brushRectangle");
    m_rectangle->setToolTip("Eraser and line brush work on a dragged rectangle");
    m_rectangle->setFocusPolicy(Qt::TabFocus);
    layout->addWidget(m_rectangle, brushCount / brushColumns, 0, 1, brushColumns);
    return box;
}

QWidget* CBrushBar::MakePens() {
    auto* box = new QGroupBox("Pens");
    auto* layout = new QHBoxLayout(box);
    layout->setContentsMargins(gap, gap, gap, gap);
    layout->setSpacing(0);
    for (int pen = 0; pen < penCount; ++pen) {
        auto* button = new CTipButton(
            penSideOnBar, [pen](QPainter& painter) { DrawPenTip(painter, pen); }, QString("Pen %1").arg(pen + 1));
        button->setObjectName(QString("pen%1").arg(pen + 1));
        m_pens->addButton(button, pen);
        layout->addWidget(button);
    }
    return box;
}

QWidget* CBrushBar::MakeBucketModes() {
    auto* box = new QWidget;
    auto* layout = new QHBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(gap);
    struct {
        const char* text;
        const char* icon;
        const char* tip;
    } const modes[] = {
        {"Solid", "bucket-solid", "The bucket fills an area with the foreground color"},
        {"Grad", "bucket-gradient",
         "The bucket fills an area with a gradient: drag from the background to the foreground color"},
        {"Grad", "bucket-box", "The bucket fills every closed area inside a dragged rectangle"}};
    for (int mode = 0; mode < static_cast<int>(std::size(modes)); ++mode) {
        const auto& [text, icon, tip] = modes[mode];
        auto* button = new CTipButton(text, Icon(icon), tip);
        button->setObjectName(QString("bucketMode%1").arg(mode));
        m_bucketModes->addButton(button, mode);
        layout->addWidget(button);
    }
    return box;
}

QWidget* CBrushBar::MakeFill() {
    auto* box = new QWidget;
    auto* layout = new QHBoxLayout(box);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(gap);
    m_gap->setObjectName("fillGapSize");
    m_gap->setAccessibleName("Gap size");
    m_gap->setRange(0, mostFillGap);
    m_gap->setPrefix("Gap ");
    m_gap->setSuffix(" px");
    m_gap->setSpecialValueText("No gaps");
    m_gap->setToolTip("Up to which size the bucket closes gaps between lines");
    m_gap->setKeyboardTracking(false);
    connect(m_gap, &QSpinBox::valueChanged, this, [this](int size) {
        CFillChoices fill = m_model.paint.fill;
        fill.gap = size;
        m_palette.SetFill(fill);
    });
    auto* settings = new QToolButton;
    settings->setObjectName("fillSettings");
    settings->setText("...");
    settings->setAccessibleName("Fill Settings");
    settings->setToolTip("Fill Settings: leaks, lines of other cels, dragging over areas");
    settings->setFocusPolicy(Qt::TabFocus);
    connect(settings, &QToolButton::clicked, this, [this] { m_palette.EditFillSettings(); });
    layout->addWidget(m_gap, 1);
    layout->addWidget(settings);
    return box;
}

QWidget* CBrushBar::MakeUpdateCamera(QAction* updateCamera, CAssetOperations& assets) {
    auto* button = new QToolButton;
    button->setObjectName("updateCamera");
    button->setFocusPolicy(Qt::TabFocus);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    if (updateCamera != nullptr) {
        button->setDefaultAction(updateCamera);
    } else {
        button->setText("Update Camera");
        button->setToolTip("Save the image and show it in the camera view");
        connect(button, &QToolButton::clicked, this, [&assets] { assets.UpdateCamera(); });
    }
    button->setToolButtonStyle(Qt::ToolButtonTextOnly);
    return button;
}

void CBrushBar::UpdateBrushesandPens() {
    const CPaintChoices& paint = m_model.paint;
    if (paint.brush >= 0)
        m_roundBrush = paint.brush;
    Check(*m_brushes, paint.brush);
    Check(*m_pens, paint.pen);
    Check(*m_bucketModes, paint.bucketMode);
    m_rectangle->setChecked(paint.brush < 0);
    const QSignalBlocker blocker(m_gap);
    m_gap->setValue(paint.fill.gap);
    Enable(*m_pens, CanUse(CelTool::Pen, m_model.celImg));
    Enable(*m_bucketModes, CanUse(CelTool::Bucket, m_model.celImg));
    m_gap->setEnabled(CanUse(CelTool::Bucket, m_model.celImg));
}

} // namespace velmor
