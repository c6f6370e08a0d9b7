#include "views/dialogs/MouthDialog.h"

#include "views/Text.h"
#include "views/widgets/FormParts.h"
#include "views/widgets/TextLines.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <iterator>

namespace velmor {

namespace {

constexpr int chartLines = 9;
constexpr const char* holds[] = {"Ones", "Twos", "Threes", "Fours"};

QComboBox* NewBox(const QString& name, const std::vector<std::string>& texts, int current, const QString& toolTip) {
    auto* box = new QComboBox;
    box->setObjectName(name);
    box->setToolTip(toolTip);
    for (const std::string& text : texts)
        box->addItem(ToQt(text));
    box->setCurrentIndex(current);
    return box;
}

int IndexOf(const std::vector<std::string>& texts, const std::string& text) {
    const auto found = std::find(texts.begin(), texts.end(), text);
    return found == texts.end() ? 0 : static_cast<int>(found - texts.begin());
}

} // namespace

CMouthDialog::CMouthDialog(QWidget* parent, const CMouthRequest& request)
    : CDialog(parent, "Mouths from Dialogue"),
      m_request(request),
      m_level(NewBox("level", request.levelNames, request.initial.level, "Where the mouths go")),
      m_folder(NewBox("folder", request.folders, IndexOf(request.folders, request.initial.folder),
                      "Where the drawings of the mouths are")),
      m_hold(NewBox("hold", {std::begin(holds), std::end(holds)}, request.initial.hold - 1,
                    "How long a mouth stands at least")),
      m_chart(new QPlainTextEdit(ToQt(request.initial.chart))),
      m_fault(new QLabel),
      m_lines(new CTextLines("lines", {})) {
    setObjectName("Mouths");
    AddChoices();
    AddPreview();
    OkButton().setText("&Fill");
    connect(m_folder, &QComboBox::currentIndexChanged, this, [this] {
        const std::string chart = m_request.chartOf ? m_request.chartOf(Values().folder) : std::string();
        if (!chart.empty())
            m_chart->setPlainText(ToQt(chart));
        ShowPreview();
    });
    for (QComboBox* box : {m_level, m_hold})
        connect(box, &QComboBox::currentIndexChanged, this, &CMouthDialog::ShowPreview);
    connect(m_chart, &QPlainTextEdit::textChanged, this, &CMouthDialog::ShowPreview);
    ShowPreview();
}

void CMouthDialog::AddChoices() {
    QFormLayout& form = AddForm();
    form.addRow(LabelFor("&Level :", *m_level), m_level);
    form.addRow(LabelFor("&Drawings of :", *m_folder), m_folder);
    form.addRow(LabelFor("&On :", *m_hold), m_hold);
    m_chart->setObjectName("chart");
    m_chart->setAccessibleName("Mouth chart");
    m_chart->setTabChangesFocus(true);
    m_chart->setMinimumHeight(m_chart->fontMetrics().lineSpacing() * chartLines);
    m_chart->setToolTip("A line for each drawing: the sounds that it is the mouth of, \"=\", the drawing");
    auto* label = LabelFor("&Mouth chart :", *m_chart);
    label->setAlignment(Qt::AlignLeft);
    Body().addWidget(label);
    Body().addWidget(m_chart, 1);
    AddHint(
        "\"a i = 1\": the letters or letter groups on the left show the drawing on the right. \"rest = 5\" is the "
        "mouth where nothing is spoken.");
}

void CMouthDialog::AddPreview() {
    auto* label = LabelFor("What the level &shows :", *m_lines);
    label->setAlignment(Qt::AlignLeft);
    Body().addWidget(label);
    m_lines->setAccessibleName("What the level shows");
    Body().addWidget(m_lines, 1);
    m_fault->setObjectName("fault");
    m_fault->setTextFormat(Qt::PlainText);
    m_fault->setWordWrap(true);
    Body().addWidget(m_fault);
}

void CMouthDialog::ShowPreview() {
    const CMouthPreview preview = m_request.preview ? m_request.preview(Values()) : CMouthPreview();
    m_lines->SetLines(preview.lines);
    QStringList faults;
    if (!preview.status)
        faults.append(ToQt(preview.status.Message()));
    for (const std::string& loss : preview.losses)
        faults.append(ToQt(loss));
    if (preview.status && !preview.changes)
        faults.append("Nothing changes");
    m_fault->setText(faults.join('\n'));
    OkButton().setEnabled(preview.status && preview.changes);
}

CMouthChoices CMouthDialog::Values() const {
    return {m_level->currentIndex(), FromQt(m_folder->currentText()), FromQt(m_chart->toPlainText()),
            m_hold->currentIndex() + 1};
}

} // namespace velmor
