#include "views/dialogs/InbetweenDataDialog.h"

#include "views/Text.h"
#include "views/widgets/FormParts.h"
#include "views/widgets/InbetweenPlot.h"
#include "views/widgets/RadioGroup.h"

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
    return {"&Linear", "Slow &out", "&Slow In", "Slow out, Slow I&n",
            "&Constant (Use initial value at all frames)"};
}

} // namespace

CInbetweenDataDialog::CInbetweenDataDialog(QWidget* parent, const CInbetweenRequest& request)
    : CDialog(parent, request.camera ? "Inbetween Camera Data" : "Inbetween Level Data"),
      m_source(new CRadioGroup(SourcesOf(request.camera), request.initial.source)),
      m_type(new CRadioGroup(Types(), request.initial.type)),
      m_plot(new CInbetweenPlot({request.firstFrame - 1, request.lastFrame - 1})) {
    m_source->setObjectName("source");
    m_type->setObjectName("type");
    AddRange(request);
    auto* type = new QHBoxLayout;
    type->addWidget(m_type);
    type->addSpacing(12);
    type->addWidget(m_plot, 1);
    Body().addWidget(GroupOf("Inbetween Source (Select One)", m_source));
    Body().addWidget(GroupOf("Inbetween Type (Select One)", type));
    OkButton().setText("&Inbetween");
    m_plot->SetType(static_cast<InbetweenType>(m_type->Chosen()));
    m_type->changed = [this](int chosen) { m_plot->SetType(static_cast<InbetweenType>(chosen)); };
    m_source->BeFirst();
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
    return {m_source->Chosen(), m_type->Chosen()};
}

} // namespace velmor
