#include "views/xsheet/OtherSheetPane.h"

#include "scene/SceneModel.h"
#include "scene/VelmorltDoc.h"
#include "scene/sheet/OtherSheet.h"
#include "views/Text.h"
#include "views/xsheet/OtherSheetView.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>

namespace velmor {

namespace {

constexpr int margin = 4;

} // namespace

COtherSheetPane::COtherSheetPane(CVelmorltDoc& doc, QWidget* parent)
    : QWidget(parent),
      m_doc(doc),
      m_scenes(new QComboBox),
      m_copy(new QPushButton("&Copy")),
      m_view(new COtherSheetView(doc.OtherSheet(), doc.SheetDisplay())) {
    m_scenes->setObjectName("scenes");
    m_scenes->setAccessibleName("Scene");
    m_scenes->setToolTip("The scene whose sheet is shown");
    m_copy->setObjectName("copy");
    m_copy->setToolTip("Copies the selected cells, to be pasted into the open scene");
    m_copy->setFocusPolicy(Qt::TabFocus);
    auto* row = new QHBoxLayout;
    row->setContentsMargins(margin, margin, margin, margin);
    row->addWidget(m_scenes, 1);
    row->addWidget(m_copy);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addLayout(row);
    column->addWidget(m_view, 1);
    connect(m_scenes, &QComboBox::activated, this, [this] { OpenChosen(); });
    connect(m_copy, &QPushButton::clicked, this, [this] { m_doc.OtherSheet().Copy(); });
    m_doc.Views().Add(*this);
}

COtherSheetPane::~COtherSheetPane() {
    m_doc.Views().Remove(*this);
}

void COtherSheetPane::showEvent(QShowEvent*) {
    ListScenes();
}

void COtherSheetPane::OnUpdate(UpdateHint hint) {
    if (!isVisible())
        return;
    if (Holds(hint, UpdateHint::AssetLists))
        ListScenes();
    m_view->Follow();
}

// The first row stands for none.
void COtherSheetPane::ListScenes() {
    COtherSheet& sheet = m_doc.OtherSheet();
    const QSignalBlocker blocker(m_scenes);
    m_names = sheet.Scenes();
    m_scenes->clear();
    m_scenes->addItem("Choose a scene");
    for (const std::string& name : m_names)
        m_scenes->addItem(ToQt(name));
    const auto shown = std::ranges::find(m_names, sheet.Model().sceneName);
    const bool isThere = sheet.Model().sceneOpen && shown != m_names.end() &&
                         sheet.Model().databaseFolder == m_doc.Model().databaseFolder;
    if (!isThere)
        sheet.Close();
    m_scenes->setCurrentIndex(isThere ? static_cast<int>(shown - m_names.begin()) + 1 : 0);
    m_copy->setEnabled(isThere);
    m_view->Follow();
}

void COtherSheetPane::OpenChosen() {
    COtherSheet& sheet = m_doc.OtherSheet();
    const int chosen = m_scenes->currentIndex() - 1;
    if (chosen < 0)
        sheet.Close();
    else
        static_cast<void>(sheet.Open(m_names[static_cast<std::size_t>(chosen)]));
    ListScenes();
    if (sheet.Model().sceneOpen)
        m_view->setFocus();
}

} // namespace velmor
