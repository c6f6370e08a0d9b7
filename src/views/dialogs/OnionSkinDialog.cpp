#include "views/dialogs/OnionSkinDialog.h"

#include "views/widgets/ColorSwatch.h"
#include "views/widgets/FormParts.h"
#include "views/widgets/NumberSlider.h"
#include "views/widgets/RadioGroup.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace velmor {

namespace {

CColorSwatch* NewSwatch(const QString& objectName, const QString& name, ColorRef color) {
    auto* swatch = new CColorSwatch(name, {BlueOf(color), GreenOf(color), RedOf(color)});
    swatch->setObjectName(objectName);
    return swatch;
}

ColorRef ColorOf(const CColorSwatch& swatch) {
    const CColor& color = swatch.Color();
    return MakeColorRef(color.red, color.green, color.blue);
}

CNumberSlider* NewSlider(const char* name, int least, int most, int value, const QString& accessible) {
    auto* slider = new CNumberSlider(name, least, most, NumberKind::Whole, most == 100 ? "%" : "");
    slider->Edit().SetValue(value);
    slider->Edit().setAccessibleName(accessible);
    slider->Slider().setAccessibleName(accessible);
    return slider;
}

QCheckBox* NewBox(const QString& text, const char* name, bool checked) {
    auto* box = new QCheckBox(text);
    box->setObjectName(name);
    box->setChecked(checked);
    return box;
}

void AddTinted(QGridLayout& grid, int row, const QString& label, CNumberSlider& slider, CColorSwatch& swatch) {
    AddLabeled(grid, row, 0, label, slider);
    grid.addWidget(&swatch, row, 2);
}

} // namespace

COnionSkinDialog::COnionSkinDialog(QWidget* parent, const COnionSkinRequest& request)
    : CDialog(parent, "Onion Skin"), m_request(request) {
    const COnionSettings& initial = request.initial;
    m_shown = NewBox("&Show the onion skin in the cel editor", "shown", initial.shown);
    m_inCamera =
        NewBox("Show it in the &camera view, under the picture of the frame", "inCamera", initial.inCamera);
    Body().addWidget(m_shown);
    Body().addWidget(m_inCamera);
    Body().addWidget(MakeSkins(initial));
    Body().addWidget(MakeLook(initial));
    Body().addWidget(MakeTable(initial));
    FollowChanges();
}

QGroupBox* COnionSkinDialog::MakeSkins(const COnionSettings& initial) {
    constexpr int most = COnionSettings::mostSkins;
    m_order =
        new CRadioGroup({"By the &xsheet: exposures of the current level", "By the &folder: cels in their order"},
                        static_cast<int>(initial.order));
    m_order->setObjectName("order");
    m_before = NewSlider("before", 0, most, initial.before, "Drawings before");
    m_after = NewSlider("after", 0, most, initial.after, "Drawings after");
    m_tintBefore = NewSwatch("tintBefore", "Tint of drawings before", initial.tintBefore);
    m_tintAfter = NewSwatch("tintAfter", "Tint of drawings after", initial.tintAfter);
    auto* grid = new QGridLayout;
    grid->addWidget(m_order, 0, 0, 1, 3);
    AddTinted(*grid, 1, "Drawings &before:", *m_before, *m_tintBefore);
    AddTinted(*grid, 2, "Drawings &after:", *m_after, *m_tintAfter);
    return GroupOf("Drawings", grid);
}

QGroupBox* COnionSkinDialog::MakeLook(const COnionSettings& initial) {
    m_strength = NewSlider("strength", 1, 100, initial.strength, "Strength of the nearest");
    m_kept = NewSlider("kept", 1, 100, initial.kept, "Kept by each further one");
    m_withPaint = NewBox("&Paint as well as lines", "withPaint", initial.withPaint);
    m_over = NewBox("&In front of the drawing", "over", initial.over);
    auto* grid = new QGridLayout;
    AddLabeled(*grid, 0, 0, "Strength of the &nearest:", *m_strength);
    AddLabeled(*grid, 1, 0, "&Kept of it by each further one:", *m_kept);
    grid->addWidget(m_withPaint, 2, 0);
    grid->addWidget(m_over, 2, 1);
    return GroupOf("Look", grid);
}

QGroupBox* COnionSkinDialog::MakeTable(const COnionSettings& initial) {
    m_strengthTable = NewSlider("strengthTable", 1, 100, initial.strengthTable, "Strength of pinned drawings");
    m_tintTable = NewSwatch("tintTable", "Tint of pinned drawings", initial.tintTable);
    auto* grid = new QGridLayout;
    AddTinted(*grid, 0, "Pinned drawin&gs:", *m_strengthTable, *m_tintTable);
    return GroupOf("Light table", grid);
}

void COnionSkinDialog::FollowChanges() {
    for (const QCheckBox* box : {m_shown, m_inCamera, m_withPaint, m_over})
        connect(box, &QCheckBox::toggled, this, [this] { Show(); });
    for (CNumberSlider* slider : {m_before, m_after, m_strength, m_kept, m_strengthTable})
        connect(&slider->Edit(), &QLineEdit::textChanged, this, [this] { Show(); });
    for (CColorSwatch* swatch : {m_tintBefore, m_tintAfter, m_tintTable})
        swatch->changed = [this] { Show(); };
    m_order->changed = [this](int) { Show(); };
}

void COnionSkinDialog::Show() {
    if (m_request.show)
        m_request.show(Values());
}

COnionSettings COnionSkinDialog::Values() const {
    const auto number = [](const CNumberSlider& slider, int least, int most, int otherwise) {
        const std::optional<int> entered = slider.Edit().Whole();
        return entered && *entered >= least && *entered <= most ? *entered : otherwise;
    };
    COnionSettings values = m_request.initial;
    values.shown = m_shown->isChecked();
    values.inCamera = m_inCamera->isChecked();
    values.order = static_cast<DrawingOrder>(m_order->Chosen());
    values.before = number(*m_before, 0, COnionSettings::mostSkins, values.before);
    values.after = number(*m_after, 0, COnionSettings::mostSkins, values.after);
    values.tintBefore = ColorOf(*m_tintBefore);
    values.tintAfter = ColorOf(*m_tintAfter);
    values.strength = number(*m_strength, 1, 100, values.strength);
    values.kept = number(*m_kept, 1, 100, values.kept);
    values.withPaint = m_withPaint->isChecked();
    values.over = m_over->isChecked();
    values.tintTable = ColorOf(*m_tintTable);
    values.strengthTable = number(*m_strengthTable, 1, 100, values.strengthTable);
    return values;
}

bool COnionSkinDialog::Accepts() {
    return m_before->Edit().Require(0, COnionSettings::mostSkins) &&
           m_after->Edit().Require(0, COnionSettings::mostSkins) && m_strength->Edit().Require(1, 100) &&
           m_kept->Edit().Require(1, 100) && m_strengthTable->Edit().Require(1, 100);
}

} // namespace velmor
