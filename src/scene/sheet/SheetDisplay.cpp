#include "scene/sheet/SheetDisplay.h"

#include "scene/Settings.h"

#include <algorithm>

namespace velmor {

int CSheetDisplay::Zoom() const {
    return std::clamp(Get(m_context.profile, setting::sheetZoom), 0, mostZoom);
}

void CSheetDisplay::SetZoom(int zoom) {
    Set(m_context.profile, setting::sheetZoom, std::clamp(zoom, 0, mostZoom));
    m_context.Update(UpdateHint::Cells);
}

bool CSheetDisplay::ColorsFolders() const {
    return Get(m_context.profile, setting::sheetColorsFolders) != 0;
}

void CSheetDisplay::ColorFolders(bool colors) {
    Set(m_context.profile, setting::sheetColorsFolders, colors ? 1 : 0);
    m_context.Update(UpdateHint::Cells);
}

bool CSheetDisplay::DrawsHolds() const {
    return Get(m_context.profile, setting::sheetDrawsHolds) != 0;
}

void CSheetDisplay::DrawHolds(bool draws) {
    Set(m_context.profile, setting::sheetDrawsHolds, draws ? 1 : 0);
    m_context.Update(UpdateHint::Cells);
}

CSheetDisplay::LevelName CSheetDisplay::NameOf(int level) const {
    const CXSheet& xsheet = m_context.model.Scene().xsheet;
    const std::string& name = xsheet.LevelName(level);
    int before = 0;
    for (int other = 0; other < level; ++other)
        before += xsheet.LevelName(other) == name ? 1 : 0;
    return {name, before};
}

std::string CSheetDisplay::SceneKey() const {
    return m_context.model.databaseFolder + m_context.model.sceneName;
}

CSheetDisplay::Levels CSheetDisplay::Folded() const {
    Levels levels;
    const auto folded = m_folded.find(SceneKey());
    if (!m_context.model.sceneOpen || folded == m_folded.end())
        return levels;
    for (int level = 0; level < m_context.model.Scene().xsheet.LevelCount(); ++level)
        levels[static_cast<std::size_t>(level)] = folded->second.contains(NameOf(level));
    return levels;
}

bool CSheetDisplay::AreFolded(int firstLevel, int lastLevel) const {
    const Levels folded = Folded();
    for (int level = firstLevel; level <= lastLevel; ++level)
        if (!folded[static_cast<std::size_t>(level)])
            return false;
    return firstLevel <= lastLevel;
}

void CSheetDisplay::Fold(int firstLevel, int lastLevel, bool folded) {
    std::set<LevelName>& names = m_folded[SceneKey()];
    for (int level = firstLevel; level <= lastLevel; ++level) {
        if (folded)
            names.insert(NameOf(level));
        else
            names.erase(NameOf(level));
    }
    m_context.Update(UpdateHint::Cells);
}

void CSheetDisplay::UnfoldAll() {
    m_folded.erase(SceneKey());
    m_context.Update(UpdateHint::Cells);
}

} // namespace velmor
