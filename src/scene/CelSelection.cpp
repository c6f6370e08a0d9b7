#include "scene/CelSelection.h"

#include "image/select/CopyPixels.h"
#include "scene/CelPainting.h"
#include "scene/Settings.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <utility>

namespace velmor {

namespace {

constexpr int mostTolerance = 255;
constexpr int lastWhat = 2;

CSize SizeOf(const CCelImg& image) {
    return {image.Width(), image.Height()};
}

} // namespace

template<class Change>
CPaintResult CCelSelection::WithMemory(Change change) {
    try {
        Sync();
        return change();
    } catch (const std::bad_alloc&) {
        return {CStatus::Failure("Unable to allocate memory for cel!"), CRect{}};
    }
}

SelectWhat CCelSelection::What() const {
    return static_cast<SelectWhat>(std::clamp(Get(m_context.profile, setting::lastSelectWhat), 0, lastWhat));
}

void CCelSelection::SetWhat(SelectWhat what) {
    if (what == What())
        return;
    Drop(); // it was lifted by the other choice
    Set(m_context.profile, setting::lastSelectWhat, static_cast<int>(what));
}

bool CCelSelection::IsConnected() const {
    return Get(m_context.profile, setting::lastSelectConnected) != 0;
}

void CCelSelection::SetConnected(bool connected) {
    Set(m_context.profile, setting::lastSelectConnected, connected ? 1 : 0);
}

int CCelSelection::Tolerance() const {
    return std::clamp(Get(m_context.profile, setting::lastSelectTolerance), 0, mostTolerance);
}

bool CCelSelection::IsCurrent() const {
    const CCelImg& image = m_context.model.celImg;
    return image.GetLoadState() != LoadState::Nothing && image.FilePath() == m_file &&
           SizeOf(image) == m_original.Size();
}

bool CCelSelection::HasSelection() const {
    return IsCurrent() && (IsFloating() || !m_original.IsEmpty());
}

bool CCelSelection::IsFloating() const {
    return m_floating.has_value() && m_painting.IsGoingOn() && IsCurrent();
}

void CCelSelection::Sync() {
    const CCelImg& image = m_context.model.celImg;
    if (!IsCurrent()) {
        m_floating.reset();
        m_file = image.FilePath();
        m_last = CSelectionMask(SizeOf(image));
        SetOriginal(m_last);
    } else if (m_floating && !m_painting.IsGoingOn()) {
        SetOriginal(MaskOf(m_floating->placed, SizeOf(image), m_floating->placement.move));
        m_floating.reset();
    }
}

void CCelSelection::SetOriginal(CSelectionMask mask) {
    m_original = std::move(mask);
    ++m_changes;
}

void CCelSelection::Drop() {
    static_cast<void>(WithMemory([this] {
        if (m_floating)
            m_painting.Finish();
        Sync();
        return CPaintResult();
    }));
}

void CCelSelection::Select(const CSelectionMask& mask, SelectMode mode) {
    Drop();
    m_color.reset();
    static_cast<void>(WithMemory([&] {
        if (mask.Size() == m_original.Size()) {
            CSelectionMask combined = m_original;
            combined.Combine(mask, mode);
            SetOriginal(std::move(combined));
        }
        return CPaintResult();
    }));
}

void CCelSelection::SelectRectangle(const CRect& rect, SelectMode mode) {
    Select(velmor::SelectRectangle(SizeOf(m_context.model.celImg), rect), mode);
}

void CCelSelection::SelectLasso(std::span<const CRealPoint> line, SelectMode mode) {
    Select(SelectPolygon(SizeOf(m_context.model.celImg), line), mode);
}

void CCelSelection::SelectColor(CPoint pixel, SelectMode mode) {
    const CCelImg& image = m_context.model.celImg;
    Drop(); // before it is looked at
    Select(velmor::SelectColor(image, pixel, Tolerance(), IsConnected()), mode);
    if (pixel.x >= 0 && pixel.y >= 0 && pixel.x < image.Width() && pixel.y < image.Height())
        m_color = image.ColorAt(pixel.x, pixel.y);
}

void CCelSelection::SelectAll() {
    CSelectionMask all(SizeOf(m_context.model.celImg));
    all.SelectAll();
    Select(all, SelectMode::Replace);
}

void CCelSelection::SelectNone() {
    if (HasSelection())
        Select(CSelectionMask(SizeOf(m_context.model.celImg)), SelectMode::Replace);
}

void CCelSelection::Invert() {
    Drop();
    CSelectionMask inverse = m_original;
    inverse.Invert();
    Select(inverse, SelectMode::Replace);
}

void CCelSelection::SelectAgain() {
    if (const CSelectionMask last = m_last; last.Size() == SizeOf(m_context.model.celImg))
        Select(last, SelectMode::Replace);
}

CRect CCelSelection::Frame() const {
    return IsFloating() ? m_floating->piece.place : IsCurrent() ? m_original.Bounds() : CRect{};
}

CPiecePlacement CCelSelection::Placement() const {
    return IsFloating() ? m_floating->placement : CPiecePlacement();
}

bool CCelSelection::Lift() {
    const CCelImg& image = m_context.model.celImg;
    CPiece piece = LiftedFrom(image, m_original, What());
    if (piece.IsEmpty())
        return false;
    m_last = m_original;
    CCelImg ground = image;
    ground.SetModified(false);
    if (!TakeOut(ground, piece).status)
        throw std::bad_alloc();
    const CRect place = piece.place;
    Float(std::move(piece), ground, place);
    return true;
}

void CCelSelection::Float(CPiece piece, const CCelImg& ground, const CRect& shown) {
    CFloating floating;
    floating.placed = piece;
    floating.piece = std::move(piece);
    floating.ground = ground;
    floating.ground.SetModified(false);
    floating.shown = shown;
    m_floating = std::move(floating);
}

void CCelSelection::NameStep(const CPiecePlacement& to) {
    if (m_floating->keepsStep)
        return;
    const CPiecePlacement& from = m_floating->placement;
    const bool mirrors = (to.scaleX < 0) != (from.scaleX < 0) || (to.scaleY < 0) != (from.scaleY < 0);
    const bool scales =
        std::abs(to.scaleX) != std::abs(from.scaleX) || std::abs(to.scaleY) != std::abs(from.scaleY);
    const std::string name = scales                       ? "Scale Selection"
                             : mirrors                    ? "Mirror Selection"
                             : to.degrees != from.degrees ? "Turn Selection"
                                                          : "Move Selection";
    std::string& step = m_floating->step;
    step = step.empty() || step == name ? name : "Transform Selection";
}

CPaintResult CCelSelection::Place(const CPiecePlacement& placement) {
    return WithMemory([&]() -> CPaintResult {
        if (!m_floating && (m_original.IsEmpty() || !Lift()))
            return {};
        if (!CanPlace(m_floating->piece, placement, SizeOf(m_context.model.celImg)))
            return {};
        NameStep(placement);
        return Show(placement);
    });
}

CPaintResult CCelSelection::Show(const CPiecePlacement& placement) {
    CFloating& floating = *m_floating;
    CPiecePlacement inPlace = placement;
    inPlace.move = {};
    if (floating.placedAs != inPlace) {
        floating.placed = Placed(floating.piece, inPlace);
        floating.placedAs = inPlace;
    }
    floating.placement = placement;
    const CRect before = std::exchange(floating.shown, PlaceShown());
    const CRect changed = Union(before, floating.shown);
    CPaintResult result = m_painting.GoOn(floating.step, changed, [&](CCelImg& image) {
        CopyPixels(floating.ground, before, image);
        const CPaintResult dropped = velmor::Drop(image, floating.placed, placement.move);
        image.SetModified(true);
        return CPaintResult{dropped.status, changed};
    });
    if (!m_painting.IsGoingOn()) // no memory to keep what was there
        m_floating.reset();
    return result;
}

// As far as it lies in the image.
CRect CCelSelection::PlaceShown() const {
    const CRect& place = m_floating->placed.place;
    const CPoint move = m_floating->placement.move;
    const CCelImg& image = m_context.model.celImg;
    return Intersection({place.x + move.x, place.y + move.y, place.endX + move.x, place.endY + move.y},
                        {0, 0, image.Width(), image.Height()});
}

CPaintResult CCelSelection::MoveBy(int dx, int dy) {
    CPiecePlacement placement = Placement();
    placement.move = {placement.move.x + dx, placement.move.y + dy};
    return Place(placement);
}

// What is turned is mirrored as it is seen.
CPaintResult CCelSelection::MirrorX() {
    CPiecePlacement placement = Placement();
    placement.scaleX = -placement.scaleX;
    placement.degrees = -placement.degrees;
    return Place(placement);
}

CPaintResult CCelSelection::MirrorY() {
    CPiecePlacement placement = Placement();
    placement.scaleY = -placement.scaleY;
    placement.degrees = -placement.degrees;
    return Place(placement);
}

CPaintResult CCelSelection::TurnBy(double degrees) {
    CPiecePlacement placement = Placement();
    placement.degrees = std::fmod(placement.degrees + degrees, 360);
    return Place(placement);
}

std::optional<CPiece> CCelSelection::Copied() const {
    if (!HasSelection())
        return std::nullopt;
    CPiece piece = IsFloating() ? Placed(m_floating->piece, m_floating->placement)
                                : LiftedFrom(m_context.model.celImg, m_original, What());
    return piece.IsEmpty() ? std::nullopt : std::optional(std::move(piece));
}

CPaintResult CCelSelection::Delete(const std::string& step) {
    return WithMemory([&]() -> CPaintResult {
        CPaintResult result;
        if (m_floating) {
            const CFloating floating = std::move(*m_floating);
            m_floating.reset();
            result = m_painting.GoOn(step, floating.shown, [&](CCelImg& image) {
                CopyPixels(floating.ground, floating.shown, image);
                image.SetModified(true);
                return CPaintResult{CStatus(), floating.shown};
            });
            m_painting.Finish();
        } else if (const CPiece piece = LiftedFrom(m_context.model.celImg, m_original, What()); !piece.IsEmpty()) {
            m_last = m_original;
            result = m_painting.Change(step, [&](CCelImg& image) { return TakeOut(image, piece); });
        }
        SetOriginal(CSelectionMask(SizeOf(m_context.model.celImg)));
        return result;
    });
}

CPaintResult CCelSelection::Paste(CPiece piece) {
    Drop();
    return WithMemory([&]() -> CPaintResult {
        const CCelImg& image = m_context.model.celImg;
        if (image.GetLoadState() == LoadState::Nothing || piece.IsEmpty())
            return {};
        if (Intersection(piece.place, {0, 0, image.Width(), image.Height()}).IsEmpty()) {
            const int x = (image.Width() - piece.Width()) / 2;
            const int y = (image.Height() - piece.Height()) / 2;
            piece.place = {x, y, x + piece.Width(), y + piece.Height()};
        }
        m_last = CSelectionMask(SizeOf(image));
        SetOriginal(MaskOf(piece, SizeOf(image)));
        Float(std::move(piece), image, CRect{});
        m_floating->step = "Paste";
        m_floating->keepsStep = true;
        return Show({});
    });
}

} // namespace velmor
