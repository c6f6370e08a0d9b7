#pragma once

#include "image/ChangeDirection.h"
#include "xsheet/Scene.h"

#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace velmor {

class CArchiveReader;
class CArchiveWriter;

/// What makes one scene of another and the other way round, as small as the difference: it is kept for undo and
/// written into journals. Levels that only move are told by their places.
class CSceneChange {
public:
    /// Changes nothing.
    CSceneChange() = default;
    CSceneChange(const CScene& before, const CScene& after);

    bool IsEmpty() const;
    /// Makes the one scene of the other. What is not part of the change may differ: it stays as it is. False, and
    /// nothing done, when the scene has other levels or frames than the one that the change starts from.
    [[nodiscard]] bool Apply(CScene& scene, ChangeDirection direction) const;

    /// Puts back the cells and sounds that the change took away, where nothing has come since.
    void RestoreInto(CScene& scene) const;

    /// The levels and frames around every cell that changed, in the sheet as it is afterwards: all frames of a
    /// level that came, went or moved, the first level for what belongs to frames: camera, sounds, notes, dialogue.
    /// Nothing when only other things changed.
    std::optional<CXSheetSelection> ChangedCells() const;
    /// Names of the assets that came into cells or went from them ("Fox 7"), and of the sounds.
    std::set<std::string> AssetNames() const;
    /// Whether all that changed are cells and the camera of this frame.
    bool IsWithinFrame(int frame) const;
    bool ChangesSounds() const { return m_sounds.has_value(); }

    void Write(CArchiveWriter& writer) const;
    /// Nothing when the bytes are not those of a change; memory is taken only for what they hold.
    static std::optional<CSceneChange> Read(CArchiveReader& reader);

private:
    template<class T>
    using CBeforeAndAfter = std::pair<T, T>;

    /// Cells of a level, of which the sheet has one after the other from `frame` on, that all changed alike.
    struct CCellRun {
        int level = 0; ///< as the sheet is afterwards
        int frame = 0;
        int count = 0;
        CBeforeAndAfter<CXSheetCell> cells;
    };
    struct CLevelName {
        int level = 0; ///< as the sheet is afterwards
        CBeforeAndAfter<std::string> names;
    };
    /// A level that is there on one side only.
    struct CLoneLevel {
        int level = 0; ///< on that side
        std::string name;
        std::vector<CCellRun> cells; ///< those that are not empty, as what they are after the change
    };
    struct CCameraChange {
        int frame = 0;
        CBeforeAndAfter<CCameraFrame> cameras;
    };
    struct CNoteChange {
        int frame = 0;
        CBeforeAndAfter<CSheetNote> notes;
    };

    void CompareFrames(const CScene& before, const CScene& after);
    void CompareLevels(const CXSheet& before, const CXSheet& after);
    void CompareCells(const CXSheet& before, int from, const CXSheet& after, int to);
    void AddCell(std::vector<CCellRun>& runs, int level, int frame, CBeforeAndAfter<CXSheetCell> cells) const;
    CLoneLevel LoneLevel(const CXSheet& sheet, int level) const;
    /// The level before that a level afterwards was, -1 for none; for all of these.
    std::vector<int> Sources(ChangeDirection direction) const;
    void ApplyLevels(CXSheet& sheet, ChangeDirection direction) const;
    void WriteFrameParts(CArchiveWriter& writer) const;
    void ReadFrameParts(CArchiveReader& reader);
    bool IsConsistent() const;

    CBeforeAndAfter<int> m_levelCounts{0, 0};
    CBeforeAndAfter<int> m_frameCounts{0, 0};
    std::vector<int> m_sources; ///< for each level afterwards; empty when all levels have stayed
    std::vector<CLoneLevel> m_gone;
    std::vector<CLoneLevel> m_made;
    std::vector<CLevelName> m_names;
    std::vector<CCellRun> m_cells;
    std::vector<CCameraChange> m_camera;
    std::optional<CBeforeAndAfter<CSceneGeometry>> m_geometry;
    std::optional<CBeforeAndAfter<std::vector<CSoundPlacement>>> m_sounds;
    std::vector<CNoteChange> m_frameNotes;
    std::optional<CBeforeAndAfter<std::vector<CSpokenLine>>> m_dialogue;
};

} // namespace velmor
