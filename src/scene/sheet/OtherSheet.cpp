#include "scene/sheet/OtherSheet.h"

#include "scene/SceneEdit.h"
#include "xsheet/XSheetFile.h"

#include <algorithm>
#include <set>

namespace velmor {

namespace {

constexpr std::size_t mostTold = 10;

std::string Told(const std::set<std::string>& missing) {
    std::string text = "These drawings are not in the scene, so their cells are copied empty:\n";
    std::size_t told = 0;
    for (const std::string& name : missing) {
        if (++told > mostTold)
            return text + "\nand " + std::to_string(missing.size() - mostTold) + " more";
        text += "\n" + name;
    }
    return text;
}

// As far from the middle of the frame as it was in another one.
void MoveToFrame(CXSheetCell& cell, CSize from, CSize to) {
    const int dx = to.width / 2 - from.width / 2;
    const int dy = to.height / 2 - from.height / 2;
    static_cast<void>(cell.SetPos(cell.PosX() + dx, cell.PosY() + dy));
}

} // namespace

std::vector<std::string> COtherSheet::Scenes() const {
    std::vector<std::string> scenes = ListScenes(m_context.model.databaseFolder);
    std::erase(scenes, m_context.model.sceneName);
    return scenes;
}

bool COtherSheet::Open(const std::string& scene) {
    CScene read;
    const std::string& database = m_context.model.databaseFolder;
    if (!m_context.Report(LoadXSheet(CScenePaths(database, scene).XSheetFile(), read)))
        return false;
    Close();
    m_other.history.SetLimit(0); // there is nothing to undo
    m_other.databaseFolder = database;
    m_other.sceneName = scene;
    CSceneEdit edit(m_otherContext, "Read Scene", UpdateHint::None, UndoStep::None);
    edit.Scene() = std::move(read);
    edit.CallOff();
    m_other.sceneOpen = m_other.Scene().xsheet.LevelCount() > 0;
    return true;
}

void COtherSheet::Close() {
    m_other.sceneOpen = false;
    m_other.sceneName.clear();
    m_other.cursorLevel = m_other.cursorFrame = 0;
    m_other.selection = {};
    m_corner = {};
}

void COtherSheet::Select(CSheetCell cell, bool extend) {
    const CXSheet& xsheet = m_other.Scene().xsheet;
    if (!m_other.sceneOpen || !xsheet.HasLevel(cell.level) || !xsheet.HasFrame(cell.frame))
        return;
    if (!extend)
        m_corner = cell;
    const auto [firstLevel, lastLevel] = std::minmax(cell.level, m_corner.level);
    const auto [firstFrame, lastFrame] = std::minmax(cell.frame, m_corner.frame);
    m_other.selection = {firstLevel, lastLevel, firstFrame, lastFrame};
    m_other.cursorLevel = cell.level;
    m_other.cursorFrame = cell.frame;
}

void COtherSheet::Copy() {
    if (!CanCopy())
        return;
    CCellClipboard copied = m_other.Scene().xsheet.Copy(m_other.selection);
    const Path folder = m_context.model.Paths().SceneFolder();
    std::set<std::string> missing;
    for (CXSheetCell& cell : copied.cells) {
        if (!cell.IsUsed())
            continue;
        if (!FileExists(AssetFilePath(folder, cell.FolderName(), cell.CelName()))) {
            missing.insert(cell.IsPicture() ? cell.CelName() : cell.FolderName() + " " + cell.CelName());
            cell.Clear();
            continue;
        }
        static_cast<void>(cell.CheckDimensions(folder)); // a damaged one keeps the size that it had
        MoveToFrame(cell, m_other.Scene().geometry.Frame(), m_context.model.Scene().geometry.Frame());
    }
    m_context.model.clipboard = std::move(copied);
    if (!missing.empty())
        m_context.Show(Told(missing));
}

} // namespace velmor
