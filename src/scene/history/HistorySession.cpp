#include "scene/history/HistorySession.h"

#include "platform/files/Archive.h"

namespace velmor {

std::vector<std::uint8_t> WriteSession(const CHistorySession& session) {
    CArchiveWriter writer;
    writer.WriteText(session.folder);
    writer.WriteText(session.image);
    for (const int value : {static_cast<int>(session.sourceMode), session.cursorLevel, session.cursorFrame,
                            session.selection.firstLevel, session.selection.lastLevel, session.selection.firstFrame,
                            session.selection.lastFrame})
        writer.WriteInt(value);
    return std::move(writer).Take();
}

CHistorySession ReadSession(std::span<const std::uint8_t> bytes) {
    CArchiveReader reader(bytes);
    CHistorySession session;
    session.folder = reader.ReadText();
    session.image = reader.ReadText();
    const int mode = reader.ReadInt();
    for (int* value : {&session.cursorLevel, &session.cursorFrame, &session.selection.firstLevel,
                       &session.selection.lastLevel, &session.selection.firstFrame, &session.selection.lastFrame})
        *value = reader.ReadInt();
    if (reader.Failed() || mode < static_cast<int>(SourceMode::Cels) ||
        mode > static_cast<int>(SourceMode::Pictures))
        return {};
    session.sourceMode = static_cast<SourceMode>(mode);
    return session;
}

} // namespace velmor
