#include "views/dialogs/OpenSceneDialog.h"

#include "views/Text.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSortFilterProxyModel>
#include <QStringListModel>
#include <QVBoxLayout>

namespace velmor {

COpenSceneDialog::COpenSceneDialog(QWidget* parent, const COpenSceneRequest& request)
    : CDialog(parent, "Select Scene to Open"),
      m_search(new QLineEdit),
      m_list(new QListView),
      m_matches(new QSortFilterProxyModel(this)) {
    setObjectName("OpenScene");
    QStringList names;
    for (const std::string& scene : request.scenes)
        names.append(ToQt(scene));
    m_matches->setSourceModel(new QStringListModel(names, this));
    m_matches->setFilterCaseSensitivity(Qt::CaseInsensitive);

    m_list->setObjectName("scenes");
    m_list->setAccessibleName("Scenes");
    m_list->setUniformItemSizes(true);
    m_list->setSpacing(1);
    m_list->setEditTriggers(QListView::NoEditTriggers);
    m_list->setModel(m_matches);
    m_search->setObjectName("search");
    m_search->setPlaceholderText("Find a scene");
    m_search->setAccessibleName("Find a scene");
    m_search->setClearButtonEnabled(true);
    m_search->installEventFilter(this);
    Body().addWidget(m_search);
    Body().addWidget(m_list, 1);
    OkButton().setText("&Open");

    connect(m_search, &QLineEdit::textChanged, this, &COpenSceneDialog::ShowMatches);
    connect(m_list, &QListView::doubleClicked, this, [this] { accept(); });
    ShowMatches({});
    resize(380, 440);
}

void COpenSceneDialog::ShowMatches(const QString& text) {
    m_matches->setFilterFixedString(text);
    if (!m_list->currentIndex().isValid())
        m_list->setCurrentIndex(m_matches->index(0, 0));
    m_list->scrollTo(m_list->currentIndex());
    OkButton().setEnabled(m_list->currentIndex().isValid());
}

std::string COpenSceneDialog::Values() const {
    return FromQt(m_list->currentIndex().data().toString());
}

bool COpenSceneDialog::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_search && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown)
            return QCoreApplication::sendEvent(m_list, event);
    }
    return CDialog::eventFilter(watched, event);
}

} // namespace velmor
