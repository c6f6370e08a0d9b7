#include "views/xsheet/SheetTyping.h"

#include "scene/SceneModel.h"
#include "scene/VelmorltDoc.h"
#include "scene/exposing/Exposing.h"
#include "scene/exposing/SheetTiming.h"
#include "views/AssetThumbnails.h"
#include "views/Text.h"

#include <QAbstractScrollArea>
#include <QKeyEvent>
#include <algorithm>

namespace velmor {

namespace {

using Key = CEntryKey::Kind;
using Typed = CTypedExposure::Kind;

std::optional<CEntryKey> EditingKeyOf(int key) {
    switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return CEntryKey{Key::Enter};
    case Qt::Key_Escape:
        return CEntryKey{Key::Escape};
    case Qt::Key_Backspace:
        return CEntryKey{Key::Backspace};
    case Qt::Key_Left:
    case Qt::Key_Up:
        return CEntryKey{Key::Back};
    case Qt::Key_Right:
    case Qt::Key_Down:
        return CEntryKey{Key::On};
    default:
        return std::nullopt;
    }
}

// By the character and not by the key: on some keyboards digits are typed with Shift.
std::optional<CEntryKey> TypedKeyOf(QChar typed, bool onKeypad, bool isOpen) {
    if (typed >= '0' && typed <= '9')
        return CEntryKey{Key::Digit, typed.unicode() - '0'};
    if (typed == '.' || (onKeypad && typed == ','))
        return CEntryKey{Key::Dot};
    const bool isZoom = onKeypad && !isOpen;
    if (typed == '-' && !isZoom)
        return CEntryKey{Key::Minus};
    if (typed == '+' && !isZoom)
        return CEntryKey{Key::Plus};
    return std::nullopt;
}

QString Frames(int count) {
    return count == 1 ? QStringLiteral("1 frame") : QString("%1 frames").arg(count);
}

} // namespace

std::optional<CEntryKey> EntryKeyOf(const QKeyEvent& event, bool isOpen) {
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~(Qt::KeypadModifier | Qt::ShiftModifier);
    const int key = event.key();
    if (modifiers == Qt::ControlModifier && key >= Qt::Key_0 && key <= Qt::Key_9)
        return CEntryKey{Key::ControlDigit, key - Qt::Key_0};
    if (modifiers != Qt::NoModifier)
        return std::nullopt;
    if (event.text().size() == 1)
        if (const auto typed =
                TypedKeyOf(event.text().front(), event.modifiers().testFlag(Qt::KeypadModifier), isOpen))
            return typed;
    return event.modifiers().testFlag(Qt::ShiftModifier) ? std::nullopt : EditingKeyOf(key);
}

CSheetTyping::CSheetTyping(CVelmorltDoc& doc, QAbstractScrollArea& view, CAssetThumbnails& thumbnails)
    : m_doc(doc), m_view(view), m_thumbnails(thumbnails), m_chooser(view) {}

bool CSheetTyping::Takes(const QKeyEvent& event) const {
    const std::optional<CEntryKey> key = EntryKeyOf(event, m_entry.IsOpen());
    return key && m_entry.Takes(*key);
}

bool CSheetTyping::Press(const QKeyEvent& event) {
    const std::optional<CEntryKey> key = EntryKeyOf(event, m_entry.IsOpen());
    if (!key)
        return false;
    if (!m_entry.IsOpen())
        m_cell = m_doc.Model().CursorCell();
    switch (m_entry.Press(*key)) {
    case CExposureEntry::Outcome::NotTaken:
        return false;
    case CExposureEntry::Outcome::Taken:
        ShowTyped();
        break;
    case CExposureEntry::Outcome::Entered:
        Enter();
        break;
    case CExposureEntry::Outcome::GivenUp:
        m_doc.Timing().HideOutcome();
        break;
    }
    return true;
}

void CSheetTyping::ShowTyped() {
    const CTypedExposure typed = m_entry.Typed();
    const std::optional<CSheetEdit> edit = m_doc.Exposing().EditFor(typed, m_entry.Choice());
    m_possible = edit.has_value();
    m_chooser.Show(ChoiceOf(typed));
    if (edit)
        m_doc.Timing().ShowOutcome(*edit);
    else
        m_doc.Timing().HideOutcome();
}

// What cannot be done leaves the line, to be mended.
void CSheetTyping::Enter() {
    if (!m_possible)
        return;
    const CTypedExposure typed = m_entry.Typed();
    const int choice = m_entry.Choice();
    m_entry.Clear();
    static_cast<void>(m_doc.Exposing().Enter(typed, choice));
}

void CSheetTyping::GiveUp() {
    if (!m_entry.IsOpen())
        return;
    m_entry.Clear();
    m_chooser.hide();
    m_doc.Timing().HideOutcome();
}

void CSheetTyping::Follow() {
    if (!m_entry.IsOpen())
        return;
    const CSceneModel& model = m_doc.Model();
    const bool isStale = m_possible && m_doc.Timing().Outcome() == nullptr;
    if (!model.sceneOpen || model.CursorCell() != m_cell || isStale)
        GiveUp();
}

std::optional<CEntryLook> CSheetTyping::Look() const {
    if (!m_entry.IsOpen())
        return std::nullopt;
    return CEntryLook{m_cell, m_entry.Text(), m_possible};
}

void CSheetTyping::PlaceChooser(const CXSheetGeometry& geometry) {
    if (!m_entry.IsOpen() || !m_view.isVisible()) {
        m_chooser.hide();
        return;
    }
    const QRect cell = geometry.CellRect(m_cell);
    m_chooser.PlaceBeside(QRect(m_view.viewport()->mapToGlobal(cell.topLeft()), cell.size()));
}

CDrawingChoice CSheetTyping::ChoiceOf(const CTypedExposure& typed) const {
    CDrawingChoice choice;
    choice.text = SaidOf(typed);
    if (typed.kind != Typed::Drawing)
        return choice;
    const CSceneModel& model = m_doc.Model();
    const std::string folder = m_doc.Exposing().Folder();
    const std::vector<std::string> names = m_doc.Exposing().DrawingsFor(typed.number);
    const int count = static_cast<int>(names.size());
    if (count == 0)
        return choice;
    const int chosen = ((m_entry.Choice() % count) + count) % count;
    const int first = std::clamp(chosen - CDrawingChoice::mostSeen + 1, 0, count - 1);
    for (int name = first; name < std::min(count, first + CDrawingChoice::mostSeen); ++name) {
        const std::string& title = names[static_cast<std::size_t>(name)];
        const Path file = AssetFilePath(model.Paths().SceneFolder(), folder, title);
        choice.drawings.push_back({ToQt(title), m_thumbnails.Find(file)});
    }
    choice.chosen = chosen - first;
    choice.more = count - first - static_cast<int>(choice.drawings.size());
    return choice;
}

QString CSheetTyping::SaidOf(const CTypedExposure& typed) const {
    const QString frames = Frames(typed.frames > 0 ? typed.frames : m_doc.Exposing().Step());
    const QString pushes =
        m_doc.Timing().WhatFollows() == Following::Push ? ", pushing what follows" : ", eating what follows";
    const QString folder = ToQt(m_doc.Exposing().Folder());
    switch (typed.kind) {
    case Typed::Drawing:
        if (folder.isEmpty())
            return "No folder is chosen";
        if (!m_possible)
            return QString("No %1 in %2").arg(QString::fromStdString(typed.number), folder);
        return QString("%1, for %2").arg(folder, frames);
    case Typed::Empty:
        return "Nothing, for " + frames;
    case Typed::Hold:
        return m_possible ? "Hold for " + frames : QString("There is nothing above to hold");
    case Typed::Lengthen:
        return m_possible ? Frames(std::max(1, typed.frames)) + " longer" + pushes
                          : QString("There is no drawing here");
    default:
        return m_possible ? "Exposed for " + Frames(typed.frames) + pushes : QString("There is no drawing here");
    }
}

} // namespace velmor
