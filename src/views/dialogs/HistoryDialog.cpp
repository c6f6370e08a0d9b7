#include "views/dialogs/HistoryDialog.h"

#include "views/Text.h"
#include "views/dialogs/HistoryDelegate.h"
#include "views/dialogs/HistoryList.h"

#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>
#include <array>

namespace velmor {

namespace {

constexpr std::array movingKeys = {Qt::Key_Up, Qt::Key_Down, Qt::Key_PageUp, Qt::Key_PageDown};

bool IsReturn(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
}

QString StepsText(int count) {
    return count == 1 ? QString("1 step") : QString("%1 steps").arg(count);
}

} // namespace

CHistoryDialog::CHistoryDialog(QWidget* parent, const CHistoryRequest& request)
    : CDialog(parent, ToQt(request.title.empty() ? "History" : "History - " + request.title)),
      m_request(request),
      m_model(new CHistoryModel(this)),
      m_delegate(new CHistoryDelegate(*m_model, request.pictureOf, !request.isReadOnly, this)),
      m_search(new QLineEdit),
      m_count(new QLabel),
      m_list(new CHistoryList(*m_model)),
      m_status(new QLabel) {
    setObjectName("History");
    Body().addWidget(NewSearch());
    CreateList();
    CreateFoot();
    Body().addWidget(m_list, 1);
    Body().addWidget(m_status);
    // Return goes to a step: there is no button that it would press.
    OkButton().hide();
    CancelButton().setText("&Close");
    CancelButton().setAutoDefault(false);
    resize(fontMetrics().averageCharWidth() * 84, fontMetrics().height() * 40);
    Reload(-1);
    Choose(m_model->CurrentId());
    m_list->setFocus();
}

QWidget* CHistoryDialog::NewSearch() {
    m_search->setObjectName("search");
    m_search->setPlaceholderText("Find a step");
    m_search->setAccessibleName("Find a step");
    m_search->setToolTip("Looks for commands, levels and cels (Ctrl+F)");
    m_search->setClearButtonEnabled(true);
    m_search->installEventFilter(this);
    connect(m_search, &QLineEdit::textChanged, this, [this] { Find(); });
    m_count->setObjectName("count");
    m_count->setForegroundRole(QPalette::PlaceholderText);
    auto* panel = new QWidget;
    auto* row = new QHBoxLayout(panel);
    row->setContentsMargins({});
    row->addWidget(m_search, 1);
    row->addWidget(m_count);
    return panel;
}

void CHistoryDialog::CreateList() {
    m_list->setObjectName("steps");
    m_list->setAccessibleName("Steps");
    m_list->setItemDelegate(m_delegate);
    m_list->installEventFilter(this);
    m_list->clickedAt = [this](const QModelIndex& index, QPoint at) { Click(index, at); };
    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] { ShowChoice(); });
    connect(m_list, &QListView::customContextMenuRequested, this, [this](QPoint at) { ShowMenu(at); });
}

void CHistoryDialog::CreateFoot() {
    m_status->setObjectName("status");
    m_status->setWordWrap(true);
    m_status->setForegroundRole(QPalette::PlaceholderText);
    m_bringBack = &AddButton("bringBack", "&Bring back",
                             "Brings back what the chosen step deleted or overwrote.\n"
                             "Everything else stays as it is.");
    m_bringBack->setAutoDefault(false);
    m_bringBack->setVisible(!m_request.isReadOnly);
    connect(m_bringBack, &QPushButton::clicked, this, [this] { BringBack(m_list->currentIndex()); });
}

void CHistoryDialog::Reload(std::int64_t id) {
    const QModelIndex chosen = m_list->currentIndex();
    const std::int64_t kept = id < 0 && chosen.isValid() ? m_model->IdOf(chosen) : id;
    m_list->ChangeInPlace([this] {
        m_model->SetEntries(m_request.entries ? m_request.entries() : std::vector<CHistoryEntry>(),
                            QDateTime::currentDateTime());
    });
    ShowFound();
    Choose(kept);
}

void CHistoryDialog::Find() {
    const QModelIndex chosen = m_list->currentIndex();
    const std::int64_t id = chosen.isValid() ? m_model->IdOf(chosen) : m_model->CurrentId();
    m_model->Find(m_search->text());
    ShowFound();
    Choose(id);
}

void CHistoryDialog::ShowFound() {
    const bool isSearch = !m_search->text().trimmed().isEmpty();
    m_count->setText(isSearch ? QString("%1 of %2 match").arg(m_model->MatchCount()).arg(m_model->EntryCount())
                              : StepsText(m_model->EntryCount()));
    const QString none = m_model->EntryCount() == 0
                             ? "There is nothing here yet.\nEvery change of the scene will be listed."
                             : "No step matches.";
    m_list->SetEmptyText(m_model->rowCount() == 0 ? none : QString());
}

void CHistoryDialog::Choose(std::int64_t id) {
    QModelIndex index = m_model->IndexOf(id);
    // Of what was found the last one, which is the latest.
    if (!index.isValid() && m_model->rowCount() > 0)
        index = m_model->index(m_model->rowCount() - 1);
    m_list->setCurrentIndex(index);
    if (index.isValid())
        m_list->scrollTo(index);
    ShowChoice();
}

void CHistoryDialog::ShowChoice() {
    const QModelIndex chosen = m_list->currentIndex();
    const CHistoryEntry* entry = chosen.isValid() ? m_model->EntryOf(chosen) : nullptr;
    m_bringBack->setEnabled(entry != nullptr && entry->canComeBack);
    QString status = m_request.isReadOnly
                         ? "To look only: nothing changes from here."
                         : "Click a step or press Enter to go there. Ctrl+Z and Ctrl+Shift+Z step.";
    if (!m_request.isReadOnly && chosen.isValid() && !m_model->IsInReach(chosen))
        status = "The scene cannot go back as far as this: a line further down cuts it off and says why.";
    m_status->setText(m_model->rowCount() == 0 ? QString() : status);
}

void CHistoryDialog::Click(const QModelIndex& index, QPoint at) {
    QStyleOptionViewItem option;
    option.initFrom(m_list);
    option.rect = m_list->visualRect(index);
    if (m_delegate->BackButton(option, index).contains(at))
        BringBack(index);
    else
        GoTo(index);
}

void CHistoryDialog::GoTo(const QModelIndex& index) {
    if (index.isValid() && m_model->IsInReach(index))
        GoTo(m_model->IdOf(index));
}

void CHistoryDialog::GoTo(std::int64_t id) {
    if (m_request.isReadOnly || !m_request.goTo || id == m_model->CurrentId())
        return;
    m_request.goTo(id);
    Reload(m_model->IndexOf(id).isValid() ? id : -1);
}

void CHistoryDialog::BringBack(const QModelIndex& index) {
    const CHistoryEntry* entry = index.isValid() ? m_model->EntryOf(index) : nullptr;
    if (m_request.isReadOnly || !m_request.bringBack || entry == nullptr || !entry->canComeBack)
        return;
    m_request.bringBack(entry->id);
    Reload(-1);
}

void CHistoryDialog::ShowMenu(QPoint at) {
    const QModelIndex index = m_list->indexAt(at);
    if (m_request.isReadOnly || !index.isValid() || m_model->KindOf(index) == CHistoryModel::RowKind::Day)
        return;
    const CHistoryEntry* entry = m_model->EntryOf(index);
    QMenu menu;
    const QAction* go = menu.addAction("Go here");
    menu.actions().back()->setEnabled(m_model->IsInReach(index));
    const QAction* back = menu.addAction("Bring back");
    menu.actions().back()->setEnabled(entry != nullptr && entry->canComeBack);
    const QAction* chosen = menu.exec(m_list->viewport()->mapToGlobal(at));
    if (chosen == go)
        GoTo(index);
    else if (chosen == back)
        BringBack(index);
}

bool CHistoryDialog::StepKey(const QKeyEvent& event) {
    std::optional<std::int64_t> id;
    if (event.matches(QKeySequence::Redo) ||
        event.keyCombination() == QKeyCombination(Qt::ControlModifier | Qt::ShiftModifier, Qt::Key_Z))
        id = m_model->NextId();
    else if (event.matches(QKeySequence::Undo))
        id = m_model->PreviousId();
    else
        return false;
    if (id)
        GoTo(*id);
    return true;
}

bool CHistoryDialog::ListKey(QKeyEvent& event) {
    if (IsReturn(event)) {
        GoTo(m_list->currentIndex());
        return true;
    }
    const bool isText = !event.text().isEmpty() && event.text().front().isPrint() && event.key() != Qt::Key_Space &&
                        (event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == 0;
    if (!isText)
        return false;
    m_search->setFocus();
    return QCoreApplication::sendEvent(m_search, &event);
}

bool CHistoryDialog::SearchKey(QKeyEvent& event) {
    if (IsReturn(event)) {
        GoTo(m_list->currentIndex());
        return true;
    }
    if (std::ranges::find(movingKeys, event.key()) != movingKeys.end())
        return QCoreApplication::sendEvent(m_list, &event);
    if (event.key() == Qt::Key_Escape && !m_search->text().isEmpty()) {
        m_search->clear();
        return true;
    }
    return !m_search->isUndoAvailable() && !m_search->isRedoAvailable() && StepKey(event);
}

bool CHistoryDialog::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        auto& key = *static_cast<QKeyEvent*>(event);
        if (watched == m_search ? SearchKey(key) : watched == m_list && ListKey(key))
            return true;
    }
    return CDialog::eventFilter(watched, event);
}

void CHistoryDialog::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Find)) {
        m_search->setFocus();
        m_search->selectAll();
    } else if (!StepKey(*event)) {
        CDialog::keyPressEvent(event);
    }
}

// Its size is known only now.
void CHistoryDialog::showEvent(QShowEvent* event) {
    CDialog::showEvent(event);
    m_list->scrollTo(m_list->currentIndex(), QListView::PositionAtCenter);
}

} // namespace velmor
