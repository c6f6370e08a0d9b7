#include "scene/history/HistorySession.h"

#include "platform/files/Archive.h"
#include "scene/history/StepChanges.h"

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
    const bool isInScene = (session.folder.empty() ||
                            (IsSceneFile(session.folder) && session.folder.find('/') == std::string::npos)) &&
                           (session.image.empty() || IsSceneFile(session.image));
    if (reader.Failed() || !isInScene || mode < static_cast<int>(SourceMode::Cels) ||
        mode > static_cast<int>(SourceMode::Pictures))
        return {};
    const CXSheetSelection& chosen = session.selection;
    if (chosen.firstLevel < 0 || chosen.firstLevel > chosen.lastLevel || chosen.firstFrame < 0 ||
        chosen.firstFrame > chosen.lastFrame)
        session.selection = {};
    session.sourceMode = static_cast<SourceMode>(mode);
    return session;
}

} // namespace velmor
