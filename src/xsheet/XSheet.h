#pragma once

#include "platform/Shared.h"
#include "xsheet/XSheetCell.h"

#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmor {

/// An inclusive range of levels and frames.
struct CXSheetSelection {
    int firstLevel = 0;
    int lastLevel = 0;
    int firstFrame = 0;
    int lastFrame = 0;

    bool operator==(const CXSheetSelection&) const = default;
};

/// Cells copied from the grid: rows are frames, columns levels.
struct CCellClipboard {
    int width = 0;  ///< levels
    int height = 0; ///< frames
    std::vector<CXSheetCell> cells;

    bool IsEmpty() const { return width == 0 || height == 0; }
};

/// The grid of the exposure sheet: levels by frames, level 0 in front. Indices are 0-based and must be in range;
/// the document checks them. Knows no messages, cursor or undo.
///
/// A note moves with its cell; where cells are repeated, only the first of them has it.
///
/// Copies share what they have in common, so that keeping a state of the largest sheet costs a pointer a level, and
/// changing a cell afterwards a few kilobytes.
class CXSheet {
public:
    static constexpr int mostLevels = 49;
    static constexpr int mostFrames = 1999;
    /// Bounds of what a file may hold.
    static constexpr int mostLevelsInFile = 50;
    static constexpr int mostFramesInFile = 2000;
    static constexpr int defaultFrames = 100;

    /// One level "Default" of 100 empty frames.
    CXSheet();
    /// Empty cells, empty names. `levels` 0 to mostLevelsInFile, `frames` 1 to mostFramesInFile.
    CXSheet(int levels, int frames);

    int LevelCount() const { return static_cast<int>(m_levels.size()); }
    int FrameCount() const { return m_frameCount; }
    bool HasLevel(int level) const { return level >= 0 && level < LevelCount(); }
    bool HasFrame(int frame) const { return frame >= 0 && frame < m_frameCount; }

    const CXSheetCell& Cell(int level, int frame) const {
        return m_levels[static_cast<std::size_t>(level)]->cells[static_cast<std::size_t>(frame)];
    }
    /// The cell to be written, valid until the sheet is copied.
    CXSheetCell& MutableCell(int level, int frame) {
        return m_levels[static_cast<std::size_t>(level)].Change().cells.Change(static_cast<std::size_t>(frame));
    }
    const std::string& LevelName(int level) const { return m_levels[static_cast<std::size_t>(level)]->name; }
    void SetLevelName(int level, std::string name) {
        m_levels[static_cast<std::size_t>(level)].Change().name = std::move(name);
    }

    /// Text of a cell: folder and cel name joined, a picture's name alone, the ditto mark for a held drawing, empty
    /// for an empty cell.
    std::string CellText(int level, int frame) const;

    // In the pictures of the edits a row is a level, its frames stand from left to right, a letter is a drawing, a
    // dot an empty cell, and brackets hold the selection. A selection lies inside the grid and starts before it
    // ends.

    /// Inserts an empty level in front of all others; false (and nothing done) when there are mostLevels.
    ///
    ///     0  A A B        0  . . .
    ///     1  C C C   ->   1  A A B
    ///                     2  C C C
    [[nodiscard]] bool AddLevel(std::string name);
    /// Removes a level, here level 1:
    ///
    ///     0  A A B        0  A A B
    ///     1  C C C   ->   1  D D .
    ///     2  D D .
    void DeleteLevel(int level);
    /// Exchanges two levels with their names, here 0 and 2:
    ///
    ///     0  A A B        0  D D .
    ///     1  C C C   ->   1  C C C
    ///     2  D D .        2  A A B
    void SwapLevels(int a, int b);
    /// Keeps every level's first frames; new ones are empty. `frames` 1 to mostFramesInFile; here 5, and 2:
    ///
    ///     A A B   ->   A A B . .        A A B   ->   A A
    void SetFrameCount(int frames);

    /// Here a clipboard 2 levels wide and 2 frames high, drawn like the grid:
    ///
    ///     0  A[A B]        A B
    ///     1  C[C D]   ->   C D
    CCellClipboard Copy(const CXSheetSelection& selection) const;
    /// Empties the selected cells:
    ///
    ///     A[A B]B   ->   A . . B
    void ClearCells(const CXSheetSelection& selection);
    /// Puts a clipboard with its first cell at `level` and `frame`; cells that would fall outside the grid are
    /// dropped. A note at an empty cell stays when what comes there has none. Here X X Y at frame 2:
    ///
    ///     A A B B   ->   A A X X
    void Paste(const CCellClipboard& clipboard, int level, int frame);
    /// Turns the order of the selected frames round:
    ///
    ///     [A A B .]C   ->   . B A A C
    void Reverse(const CXSheetSelection& selection);
    /// Takes one frame off each hold that ends before the selection's last frame (the drawing's last one: a hold
    /// is a run of cells with the same asset, or of empty ones). The cells behind move up, whether selected or not,
    /// and the sheet's last cell is repeated:
    ///
    ///     [A A B B]   ->   A B B B        A[A A B . .]C D   ->   A A B . . C D D
    void Condense(const CXSheetSelection& selection);
    /// Holds each exposure of the selection one frame longer, by repeating its last selected cell: a run of cells
    /// with the same asset counts once, and so does a run of empty ones, so that pauses keep their share of the
    /// time, as Condense() counts them too. The cells behind move down; those pushed past the end
    /// are lost, and a run that reaches the sheet's last frame has no room to grow:
    ///
    ///     [A B B]C D . .   ->   A A B B B C D        A[A B]B   ->   A A A B
    void Expand(const CXSheetSelection& selection);
    /// Moves a level's cells from `frame` on down by `count` (0 or more), leaving empty ones; those pushed past the
    /// end are lost. Here 2 at frame 1:
    ///
    ///     A B C D   ->   A . . B
    void InsertFrames(int level, int frame, int count);
    /// Gives each frame of a level the cell that another one had: as many sources as frames, each a frame, or below
    /// 0 for an empty cell. A note goes to the first frame that takes it. Here 0, 0, 1, -1:
    ///
    ///     A B C D   ->   A A B .
    void TakeFrames(int level, std::span<const int> sources);

    // The cells that show an asset, on all levels. Each returns how many there were. The names must not be those of
    // a cell of this sheet, which change on the way.

    /// Empties every cell that shows A, or any asset of a folder; notes stay:
    ///
    ///     A A B   ->   . . B
    int ClearReferences(std::string_view folder, std::string_view name);
    int ClearFolderReferences(std::string_view folder);
    /// A to C:
    ///
    ///     A A B   ->   C C B
    int RenameReferences(std::string_view folder, std::string_view oldName, const std::string& newName);
    /// Gives every cell that shows the asset its new size, read from its file; none when it cannot be read.
    int ResizeReferences(std::string_view folder, std::string_view name, const Path& sceneFolder);

    bool operator==(const CXSheet&) const = default;

    // How one sheet differs from another, at the cost of the difference as long as they share the rest.

    /// Whether a level is the same in memory as one of another sheet.
    bool SharesLevel(int level, const CXSheet& other, int otherLevel) const {
        return m_levels[static_cast<std::size_t>(level)].IsSharedWith(
            other.m_levels[static_cast<std::size_t>(otherLevel)]);
    }
    /// Calls visit(frame) for each frame, of those that both sheets have, at which the cells of two levels are not
    /// the same to the bit.
    template<class Visit>
    void ForEachDifference(int level, const CXSheet& other, int otherLevel, Visit visit) const {
        if (SharesLevel(level, other, otherLevel))
            return;
        m_levels[static_cast<std::size_t>(level)]->cells.ForEachDifference(
            other.m_levels[static_cast<std::size_t>(otherLevel)]->cells,
            [](const CXSheetCell& a, const CXSheetCell& b) { return a.IsIdenticalTo(b); },
            [&visit](std::size_t frame) { visit(static_cast<int>(frame)); });
    }
    /// Puts the levels in another order: sources[i] is the level that becomes level i, or -1 for one without a name
    /// and cells. A level may be left out, and come twice.
    void Arrange(std::span<const int> sources);

private:
    /// Few pieces are few pointers to copy with a level, small ones few cells: together they are least at about the
    /// root of the frames.
    static constexpr std::size_t cellsInPiece = 16;

    struct CLevel {
        std::string name;
        CSharedVector<CXSheetCell, cellsInPiece> cells;

        bool operator==(const CLevel&) const = default;
    };

    /// Has edit(cels) change all cells of a level.
    template<class Edit>
    void EditLevel(int level, Edit edit);
    /// The same for each level of a selection.
    template<class Edit>
    void EditLevels(const CXSheetSelection& selection, Edit edit);
    /// Changes the cells for which matches(cel) holds; returns how many.
    template<class Matches, class Change>
    int ChangeCells(Matches matches, Change change);

    std::vector<CShared<CLevel>> m_levels;
    int m_frameCount = 0;
};

} // namespace velmor
