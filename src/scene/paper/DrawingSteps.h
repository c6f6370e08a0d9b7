#pragma once

#include "scene/SceneContext.h"
#include "scene/paper/Neighbours.h"

#include <optional>

namespace velmor {

class CAssetOperations;
class COnion;
class CSceneLifecycle;
class CXSheetCursor;

enum class DrawingDirection { Previous, Next };

/// From one drawing to the next without leaving the cel editor, in the order that the onion skin goes by.
class CDrawingSteps {
public:
    /// How long a new drawing can be held.
    static constexpr int mostHold = 3;

    /// The parts of the document that are given outlive the object.
    CDrawingSteps(CSceneContext context, const COnion& onion, CSceneLifecycle& lifecycle, CAssetOperations& assets,
                  CXSheetCursor& cursor)
        : m_context(context), m_onion(onion), m_lifecycle(lifecycle), m_assets(assets), m_cursor(cursor) {}

    /// The drawing beside the one under edit.
    std::optional<CNeighbour> Neighbour(DrawingDirection direction) const;
    /// Opens it, and goes to its exposure. With nothing under edit, the drawing at the cursor.
    void Step(DrawingDirection direction);

    /// Frames that a new drawing is held: 1 to mostHold, remembered.
    int Hold() const;
    void SetHold(int frames);
    /// Makes a blank cel that follows the drawing under edit, in name, size and place, exposes it, puts the cursor
    /// there and opens it. Where no cel folder is chosen, that of the level's name is, or is made.
    void NewDrawing();
    /// Makes one in the empty cell at the cursor, that follows the drawing which the level shows above it, in the
    /// folder of that; without one above, like NewDrawing(). Nothing on a cell that is exposed.
    void NewDrawingAtCursor();

private:
    /// `like`: in whose place it lies; null for what stands before it.
    void NewDrawing(const CDrawing& after, const CXSheetCell* like);
    void Open(const CNeighbour& neighbour);
    [[nodiscard]] bool ChooseFolder();
    std::string NewName(const CDrawing& after) const;
    CSize NewSize(const CDrawing& after, const CXSheetCell* before) const;

    CSceneContext m_context;
    const COnion& m_onion;
    CSceneLifecycle& m_lifecycle;
    CAssetOperations& m_assets;
    CXSheetCursor& m_cursor;
};

} // namespace velmor
