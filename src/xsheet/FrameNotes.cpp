#include "xsheet/FrameNotes.h"

#include <algorithm>
#include <utility>

namespace velmor {

void CFrameNotes::Set(int frame, CSheetNote note) {
    if (At(frame) != note)
        m_notes.Change(static_cast<std::size_t>(frame)) = std::move(note);
}

void CFrameNotes::InsertFrames(int at, int count) {
    if (at < 0 || at >= capacity || count <= 0)
        return;
    std::vector<CSheetNote> notes = m_notes.All();
    const auto from = notes.begin() + at;
    const int inserted = std::min(count, capacity - at);
    std::move_backward(from, notes.end() - inserted, notes.end());
    std::fill(from, from + inserted, CSheetNote());
    m_notes.Assign(std::move(notes));
}

void CFrameNotes::DeleteFrames(int at, int count) {
    if (at < 0 || at >= capacity || count <= 0)
        return;
    std::vector<CSheetNote> notes = m_notes.All();
    const auto from = notes.begin() + at;
    const auto end = std::move(from + std::min(count, capacity - at), notes.end(), from);
    std::fill(end, notes.end(), CSheetNote());
    m_notes.Assign(std::move(notes));
}

} // namespace velmor
