#pragma once

#include "image/CelImg.h"
#include "image/select/PieceTransform.h"
#include "image/select/SelectShapes.h"
#include "image/select/SelectionMask.h"
#include "scene/SceneContext.h"

#include <optional>
#include <span>
#include <string>

namespace velmor {

class CCelPainting;

/// What is selected of the image under edit, and the piece of it that floats.
///
/// Moving, turning, scaling or mirroring what is selected lifts it out. It then floats: the image has it where it
/// is, and each placement is made of the piece as it was lifted. It is put down, and becomes one step of the
/// history, by Drop() or by whatever is done next to the image, its file or the history. Another image, or one of
/// another size, has nothing selected.
///
/// What changes the image returns what has changed of it; the views are not told.
class CCelSelection {
public:
    /// The painting outlives the object.
    CCelSelection(CSceneContext context, CCelPainting& painting) : m_context(context), m_painting(painting) {}

    bool HasSelection() const;
    bool IsFloating() const;
    /// What of a cel is taken, whether a colour is selected only as far as it hangs together, and how near a colour
    /// counts as the same, 0 to 255. Remembered.
    SelectWhat What() const;
    void SetWhat(SelectWhat what);
    bool IsConnected() const;
    void SetConnected(bool connected);
    int Tolerance() const;

    /// Each puts down what floats first.
    void Select(const CSelectionMask& mask, SelectMode mode);
    void SelectRectangle(const CRect& rect, SelectMode mode);
    void SelectLasso(std::span<const CRealPoint> line, SelectMode mode);
    /// The colour of a pixel, by IsConnected() and Tolerance().
    void SelectColor(CPoint pixel, SelectMode mode);
    /// The colour that was selected last, while it is the last thing that was.
    const std::optional<CColor>& Color() const { return m_color; }
    void SelectAll();
    void SelectNone();
    void Invert();
    /// Selects what was selected before the last piece was lifted: undo has put it back.
    void SelectAgain();

    /// Puts down what floats; it stays selected.
    void Drop();

    /// The rectangle around what is selected as it was lifted, and how it is placed.
    CRect Frame() const;
    CPiecePlacement Placement() const;
    /// Whether a pixel belongs to what is selected, as it was before it was lifted and placed.
    bool HasOriginal(int x, int y) const { return m_original.Has(x, y); }
    const CRect& OriginalBounds() const { return m_original.Bounds(); }
    /// Grows whenever HasOriginal() changes.
    int Changes() const { return m_changes; }

    /// Lifts what is selected, if it does not float yet, and places it. Nothing happens where nothing is selected
    /// or the placement has no room.
    CPaintResult Place(const CPiecePlacement& placement);
    CPaintResult MoveBy(int dx, int dy);
    /// About the middle of what is selected.
    CPaintResult MirrorX();
    CPaintResult MirrorY();
    /// Counter-clockwise as it is seen.
    CPaintResult TurnBy(double degrees);

    /// What is selected as it is now; nothing where nothing is.
    std::optional<CPiece> Copied() const;
    /// Empties what is selected; `step` is what undo calls it.
    CPaintResult Delete(const std::string& step = "Delete Selection");
    /// Lets a piece float at its place or, if that lies beside the image, in its middle.
    CPaintResult Paste(CPiece piece);

private:
    struct CFloating {
        CPiece piece; ///< as it was lifted
        CPiecePlacement placement;
        CPiece placed;            ///< where it would be without its move
        CPiecePlacement placedAs; ///< the placement of that
        CCelImg ground;           ///< the image without the piece
        CRect shown;              ///< where the image differs from the ground
        std::string step;         ///< what undo will call it
        bool keepsStep = false;   ///< whatever is done to it
    };

    bool IsCurrent() const;
    /// Lets go of what belongs to another image, and of a piece that has been put down by others.
    void Sync();
    void SetOriginal(CSelectionMask mask);
    /// False when there is nothing to lift.
    bool Lift();
    void Float(CPiece piece, const CCelImg& ground, const CRect& shown);
    void NameStep(const CPiecePlacement& to);
    CPaintResult Show(const CPiecePlacement& placement);
    CRect PlaceShown() const;
    /// What `change` does, or the message that memory is short.
    template<class Change>
    CPaintResult WithMemory(Change change);

    CSceneContext m_context;
    CCelPainting& m_painting;
    Path m_file;               ///< of the image that it belongs to
    CSelectionMask m_original; ///< before it was lifted
    CSelectionMask m_last;     ///< m_original, when the last piece was lifted
    std::optional<CFloating> m_floating;
    std::optional<CColor> m_color;
    int m_changes = 0;
};

} // namespace velmor
