#pragma once

#include "scene/SceneContext.h"
#include "xsheet/XSheet.h"

#include <bitset>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace velmor {

/// How the sheet is looked at: the size of its cells and what they show besides their names, which is remembered,
/// and which levels are folded, which lasts as long as the program. Nothing of it is in the scene.
class CSheetDisplay {
public:
    using Levels = std::bitset<CXSheet::mostLevelsInFile>;
    static constexpr int mostZoom = 3;

    explicit CSheetDisplay(CSceneContext context) : m_context(context) {}

    /// 0: lines of text; from 1 on: pictures of the drawings, larger and larger, up to mostZoom.
    int Zoom() const;
    void SetZoom(int zoom);
    bool ColorsFolders() const;
    void ColorFolders(bool colors);
    /// Holds are lines in place of ditto marks.
    bool DrawsHolds() const;
    void DrawHolds(bool draws);

    /// The levels of the open scene that are folded. A level is known by its name, so it stays folded wherever it
    /// is moved to.
    Levels Folded() const;
    /// Whether all of a range are.
    bool AreFolded(int firstLevel, int lastLevel) const;
    void Fold(int firstLevel, int lastLevel, bool folded);
    void UnfoldAll();

private:
    /// A name, and how many of the same name stand before it.
    using LevelName = std::pair<std::string, int>;

    LevelName NameOf(int level) const;
    std::string SceneKey() const;

    CSceneContext m_context;
    std::map<std::string, std::set<LevelName>> m_folded; ///< by scene
};

} // namespace velmor
