#pragma once

#include "scene/SceneContext.h"

#include <string>
#include <vector>

namespace velmor {

/// The sheet of another scene of the database, to be looked at and copied from. It is what the file held when it
/// was opened, and never written.
class COtherSheet {
public:
    explicit COtherSheet(CSceneContext context)
        : m_context(context), m_otherContext{m_other, context.prompter, m_noViews, m_noProfile} {}
    COtherSheet(const COtherSheet&) = delete;
    COtherSheet& operator=(const COtherSheet&) = delete;

    /// The scenes that there are, the open one excepted.
    std::vector<std::string> Scenes() const;
    /// False, after the message, when its sheet cannot be read; what was shown before stays.
    [[nodiscard]] bool Open(const std::string& scene);
    void Close();
    /// The scene as far as its sheet goes, with cursor and selection; none is open before Open().
    const CSceneModel& Model() const { return m_other; }
    /// Puts the cursor there and selects the cell, or with `extend` from where it was selected first to there.
    void Select(CSheetCell cell, bool extend);
    bool CanCopy() const { return m_other.sceneOpen && m_context.model.sceneOpen; }
    /// Copies the selected cells, to be pasted into the open scene. They keep their effects and their place, from
    /// the middle of the frame on. Cells whose image the open scene does not have are copied empty, and told.
    void Copy();

private:
    CSceneContext m_context;
    CSceneModel m_other;
    CViewList m_noViews;
    CProfile m_noProfile;
    CSceneContext m_otherContext;
    CSheetCell m_corner; ///< of the selection, which stays when it is extended
};

} // namespace velmor
