#include "views/dialogs/InbetweenDataDialog.h"

#include "views/Text.h"
#include "views/widgets/FormParts.h"
#include "views/widgets/InbetweenPlot.h"
#include "views/widgets/RadioGroup.h"

#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace velmor {

namespace {

QStringList SourcesOf(bool camera) {
    if (camera)
        return {"Camera &Pan", "&Tilt Angle", "&Zoom"};
    return {"&Position", "&Rotation", "&Zoom", "&Transparency", "&Blur"};
}

QStringList Types() {
    return {"&Linear",
            "Slow &out",
            "&Slow In",
            "Slow out, Slow I&n",
            "&Constant (Use initial value at all frames)",
            "&Drawn curve (drag its two handles)"};
}

QComboBox* NewHold(int frames) {
    auto* hold = new QComboBox;
    hold->setObjectName("hold");
    hold->addItems({"On ones", "On twos", "On threes", "On fours"});
    hold->setCurrentIndex(frames - 1);
    hold->setToolTip("How many frames each value stands, counted from the first key");
    return hold;
}

} // namespace

CInbetweenDataDialog::CInbetweenDataDialog(QWidget* parent, const CInbetweenRequest& request)
    : CDialog(parent, request.camera ? "Inbetween Camera Data" : "Inbetween Level Data"),
      m_source(new CRadioGroup(SourcesOf(request.camera), request.initial.source)),
      m_type(new CRadioGroup(Types(), request.initial.type)),
      m_plot(new CInbetweenPlot({request.firstFrame - 1, request.lastFrame - 1})),
      m_hold(NewHold(request.initial.hold)) {
    m_source->setObjectName("source");
    m_type->setObjectName("type");
    AddRange(request);
    Body().addWidget(GroupOf("Inbetween Source (Select One)", m_source));
    AddPace(request);
    OkButton().setText("&Inbetween");
    m_source->BeFirst();
}

void CInbetweenDataDialog::AddPace(const CInbetweenRequest& request) {
    auto* hold = new QHBoxLayout;
    hold->addWidget(LabelFor("&Exposed :", *m_hold));
    hold->addWidget(m_hold);
    hold->addStretch();
    auto* choices = new QVBoxLayout;
    choices->addWidget(m_type);
    choices->addLayout(hold);
    auto* pace = new QHBoxLayout;
    pace->addLayout(choices);
    pace->addSpacing(12);
    pace->addWidget(m_plot, 1);
    Body().addWidget(GroupOf("Inbetween Type (Select One)", pace));
    m_plot->SetPace(
        {static_cast<InbetweenType>(request.initial.type), request.initial.curve, request.initial.hold});
    m_type->changed = [this](int) { m_plot->SetPace(Pace()); };
    connect(m_hold, &QComboBox::currentIndexChanged, this, [this] { m_plot->SetPace(Pace()); });
}

CInbetweenPace CInbetweenDataDialog::Pace() const {
    return {static_cast<InbetweenType>(m_type->Chosen()), m_plot->Curve(), m_hold->currentIndex() + 1};
}

void CInbetweenDataDialog::AddRange(const CInbetweenRequest& request) {
    auto* grid = new QGridLayout;
    Body().addLayout(grid);
    AddShown(*grid, 0, 0, "Start Frame :", "startFrame", QString::number(request.firstFrame));
    AddShown(*grid, 0, 2, "End Frame :", "endFrame", QString::number(request.lastFrame));
    if (!request.camera)
        AddShown(*grid, 0, 4, "Level :", "level", ToQt(request.levelName));
    for (const int column : {1, 3, 5})
        grid->setColumnStretch(column, 1);
}

CInbetweenChoice CInbetweenDataDialog::Values() const {
    return {m_source->Chosen(), m_type->Chosen(), m_hold->currentIndex() + 1, m_plot->Curve()};
}

} // namespace velmor
