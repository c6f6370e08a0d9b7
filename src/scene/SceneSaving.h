#pragma once

#include "scene/SceneContext.h"

#include <string>
#include <vector>

namespace velmor {

/// How the open scene gets to its files: its xsheet and the image under edit. Where one cannot be written its
/// message is shown, with the file.
class CSceneSaving {
public:
    explicit CSceneSaving(CSceneContext context) : m_context(context) {}

    /// Writes the xsheet; true also when no scene is open.
    [[nodiscard]] bool SaveXSheet();
    /// Writes the xsheet and the image under edit, which is then read again. False when something could not be
    /// written.
    [[nodiscard]] bool SaveAll();
    /// Saves all. What could not be written is named in the question whether to do something ("exit") all the same.
    [[nodiscard]] bool SaveAllOrAsk(const std::string& deed);
    /// As SaveAllOrAsk("go on"), with the image left as it is and the views not told.
    [[nodiscard]] bool WriteAllOrAsk();

private:
    // What could not be written.
    std::vector<Path> WriteAll();
    std::vector<Path> SaveWhatCanBe();
    bool MayLeave(const std::string& deed, const std::vector<Path>& unsaved) const;

    CSceneContext m_context;
};

} // namespace velmor
