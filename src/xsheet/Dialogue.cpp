#include "xsheet/Dialogue.h"

#include <algorithm>

namespace velmor {

namespace {

bool IsLine(const CSpokenLine& line) {
    return line.firstFrame >= 0 && line.firstFrame <= line.lastFrame && line.lastFrame <= CDialogue::mostFrame &&
           !line.text.empty() && line.text.size() <= CDialogue::mostText &&
           line.speaker.size() <= CDialogue::mostText;
}

// What is left of a line when these frames are taken out of it; none when it has no other.
void CutOut(CSpokenLine& line, int firstFrame, int lastFrame) {
    const int before = firstFrame - line.firstFrame;
    const int behind = line.lastFrame - lastFrame;
    if (before >= behind)
        line.lastFrame = std::min(line.lastFrame, firstFrame - 1);
    else
        line.firstFrame = std::max(line.firstFrame, lastFrame + 1);
}

bool HasNoFrame(const CSpokenLine& line) {
    return line.firstFrame > line.lastFrame;
}

} // namespace

const CSpokenLine* CDialogue::At(int frame) const {
    const auto found = std::ranges::lower_bound(*m_lines, frame, {}, &CSpokenLine::lastFrame);
    return found != m_lines->end() && found->firstFrame <= frame ? &*found : nullptr;
}

bool CDialogue::Put(CSpokenLine line) {
    if (!IsLine(line))
        return false;
    CDialogue made = *this;
    made.Clear(line.firstFrame, line.lastFrame);
    if (std::ssize(made.Lines()) >= mostLines)
        return false;
    std::vector<CSpokenLine>& lines = made.m_lines.Change();
    lines.insert(std::ranges::upper_bound(lines, line.firstFrame, {}, &CSpokenLine::firstFrame), std::move(line));
    *this = std::move(made);
    return true;
}

void CDialogue::Clear(int firstFrame, int lastFrame) {
    const auto isTouched = [&](const CSpokenLine& line) {
        return line.firstFrame <= lastFrame && line.lastFrame >= firstFrame;
    };
    if (firstFrame > lastFrame || std::ranges::none_of(Lines(), isTouched))
        return;
    std::vector<CSpokenLine>& lines = m_lines.Change();
    for (CSpokenLine& line : lines)
        if (isTouched(line))
            CutOut(line, firstFrame, lastFrame);
    std::erase_if(lines, HasNoFrame);
}

void CDialogue::Set(std::vector<CSpokenLine> lines) {
    *this = CDialogue();
    for (CSpokenLine& line : lines)
        static_cast<void>(Put(std::move(line)));
}

void CDialogue::InsertFrames(int at, int count) {
    if (count <= 0 || IsEmpty())
        return;
    count = std::min(count, mostFrame + 1);
    std::vector<CSpokenLine>& lines = m_lines.Change();
    for (CSpokenLine& line : lines) {
        line.firstFrame += line.firstFrame >= at ? count : 0;
        line.lastFrame += line.lastFrame >= at ? count : 0;
    }
    std::erase_if(lines, [](const CSpokenLine& line) { return line.firstFrame > mostFrame; });
    if (!lines.empty())
        lines.back().lastFrame = std::min(lines.back().lastFrame, mostFrame);
}

void CDialogue::DeleteFrames(int at, int count) {
    if (count <= 0 || IsEmpty())
        return;
    const auto frameAfter = [&](int frame) { return frame < at ? frame : std::max(at, frame - count); };
    std::vector<CSpokenLine>& lines = m_lines.Change();
    for (CSpokenLine& line : lines) {
        const int end = frameAfter(line.lastFrame + 1);
        line.firstFrame = frameAfter(line.firstFrame);
        line.lastFrame = end - 1;
    }
    std::erase_if(lines, HasNoFrame);
}

} // namespace velmor
