#pragma once

#include "platform/Shared.h"
#include "xsheet/SheetNote.h"

namespace velmor {

/// What is noted at every frame that an xsheet can have, beside the camera. Copies share what they have in common.
class CFrameNotes {
public:
    static constexpr int capacity = 2000;

    CFrameNotes() { m_notes.resize(capacity); }

    /// `frame` 0 to capacity - 1.
    const CSheetNote& At(int frame) const { return m_notes[static_cast<std::size_t>(frame)]; }
    /// An empty note for none.
    void Set(int frame, CSheetNote note);

    /// `count` frames come before frame `at`, without notes; those pushed past the end are lost.
    void InsertFrames(int at, int count);
    /// The frames from `at` on go, with their notes.
    void DeleteFrames(int at, int count);

    /// Calls visit(frame) for each frame at which two tracks differ.
    template<class Visit>
    void ForEachDifference(const CFrameNotes& other, Visit visit) const {
        m_notes.ForEachDifference(other.m_notes, std::equal_to<CSheetNote>(),
                                  [&visit](std::size_t frame) { visit(static_cast<int>(frame)); });
    }

    bool operator==(const CFrameNotes&) const = default;

private:
    CSharedVector<CSheetNote, 32> m_notes;
};

} // namespace velmor
