#include "views/dialogs/NoteDialog.h"

#include "views/Text.h"
#include "views/dialogs/RunDialog.h"
#include "views/widgets/FormParts.h"
#include "views/xsheet/NoteSigns.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QVBoxLayout>

namespace velmor {

namespace {

constexpr int commentHeight = 96;

QComboBox* NewChoice(const char* name) {
    auto* choice = new QComboBox;
    choice->setObjectName(name);
    return choice;
}

} // namespace

CNoteDialog::CNoteDialog(QWidget* parent, const CNoteRequest& request)
    : CDialog(parent, "Note"),
      m_accept(request.accept),
      m_mark(NewChoice("mark")),
      m_color(NewChoice("color")),
      m_comment(new QPlainTextEdit(ToQt(request.initial.comment))) {
    setObjectName("Note");
    for (int mark = 0; mark <= static_cast<int>(lastMark); ++mark)
        m_mark->addItem(NoteIcon({static_cast<SheetMark>(mark), {}, {}}, palette()),
                        ToQt(TextOf(static_cast<SheetMark>(mark))));
    for (int color = 0; color <= static_cast<int>(lastNoteColor); ++color)
        m_color->addItem(NoteIcon({{}, static_cast<NoteColor>(color), {}}, palette()),
                         ToQt(TextOf(static_cast<NoteColor>(color))));
    m_mark->setCurrentIndex(static_cast<int>(request.initial.mark));
    m_color->setCurrentIndex(static_cast<int>(request.initial.color));
    m_comment->setObjectName("comment");
    m_comment->setTabChangesFocus(true);
    m_comment->setMinimumHeight(commentHeight);
    m_comment->selectAll();
    QFormLayout& form = AddForm();
    auto* place = new QLabel(ToQt(request.place));
    place->setObjectName("place");
    form.addRow("At :", place);
    form.addRow("&Mark :", m_mark);
    form.setRowVisible(m_mark, request.hasMark);
    form.addRow("&Color :", m_color);
    form.addRow("Comm&ent :", m_comment);
    m_comment->setFocus(Qt::TabFocusReason);
    resize(380, 260);
}

CSheetNote CNoteDialog::Values() const {
    return {static_cast<SheetMark>(m_mark->currentIndex()), static_cast<NoteColor>(m_color->currentIndex()),
            FromQt(m_comment->toPlainText().trimmed())};
}

bool CNoteDialog::Accepts() {
    return IsAccepted(m_accept, Values());
}

} // namespace velmor
