#include "image/clean/Pegs.h"

#include "image/clean/Blobs.h"
#include "image/clean/DarkGrid.h"
#include "image/clean/PegGuesses.h"
#include "image/clean/PegOutline.h"
#include "image/transform/Transforms.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <numbers>

namespace velmor {

namespace {

constexpr CPegStandard standards[] = {{"Acme", 4, 0.5, 0.125, 0.25}, {"Oxberry", 4, 0.4375, 0.125, 0.25}};
constexpr double usualInchesFromEdge = 0.4;

/// Looks at a page, and by how many pixels everything dark has grown for each: outlines that are broken close, and
/// what hangs together with dirt comes apart (below 0).
constexpr int growths[] = {0, 1, 2, -1};

std::optional<CPegs> FindOn(const CDarkGrid& page, std::optional<double> spacing) {
    const CBlobs blobs(page);
    std::optional<CPegs> best;
    for (const CPegGuess& guess : GuessPegs(blobs, page.Size(), spacing))
        if (const std::optional<CPegs> pegs = CPegOutline(page, blobs, guess).Fit();
            pegs && (!best || pegs->confidence > best->confidence))
            best = pegs;
    return best;
}

/// From a place of the grid to one of the page.
CPegs Scaled(CPegs pegs, int scale, int height) {
    const double shift = (scale - 1) / 2.0;
    pegs.x = pegs.x * scale + shift;
    pegs.y = pegs.y * scale + shift;
    for (double* length : {&pegs.spacing, &pegs.slotLength, &pegs.slotWidth, &pegs.round})
        *length *= scale;
    pegs.areAtTop = pegs.y > height / 2.0;
    return pegs;
}

} // namespace

std::span<const CPegStandard> PegStandards() {
    return standards;
}

const char* CPegs::StandardName() const {
    const auto misfit = [this](const CPegStandard& standard) {
        return std::abs(slotLength / spacing - standard.slotLengthInches / standard.slotSpacingInches);
    };
    return std::ranges::min_element(standards, {}, misfit)->name;
}

std::array<CPegs::CPlace, 3> CPegs::Middles() const {
    const double acrossX = spacing * std::cos(degrees * std::numbers::pi / 180);
    const double acrossY = spacing * std::sin(degrees * std::numbers::pi / 180);
    return {{{x - acrossX, y - acrossY}, {x, y}, {x + acrossX, y + acrossY}}};
}

CStatus FindPegs(const CCelImg& page, const CPegSearch& search, CPegs& pegs) try {
    if (page.GetLoadState() == LoadState::Nothing)
        return CStatus::Failure("Internal Error : cel/picture is not loaded in FindPegs");
    const CDarkGrid grid(page, search.threshold);
    std::optional<double> spacing;
    if (search.dpi)
        spacing = *search.dpi * standards[0].slotSpacingInches / grid.Scale();
    for (const int growth : growths) {
        CDarkGrid look = grid;
        look.Grow(growth);
        if (const std::optional<CPegs> found = FindOn(look, spacing)) {
            pegs = Scaled(*found, grid.Scale(), page.Height());
            return {};
        }
    }
    return CStatus::Failure("No peg holes were found: a round one between two slots, at the top or the bottom");
} catch (const std::bad_alloc&) {
    return CStatus::Failure("Unable to allocate memory for cel!");
}

CPegs StraightPegs(const CPegs& pegs, CSize page) {
    CPegs straight = pegs;
    const double fromEdge = usualInchesFromEdge / standards[0].slotSpacingInches * pegs.spacing;
    straight.x = (page.width - 1) / 2.0;
    straight.y = pegs.areAtTop ? page.height - 1 - fromEdge : fromEdge;
    straight.degrees = 0;
    return straight;
}

CStatus PutOnPegs(CCelImg& page, const CPegs& pegs, const CPegs& reference, CSize size) {
    constexpr double mostScale = 1.03;
    if (pegs.areAtTop != reference.areAtTop)
        return CStatus::Failure("The peg holes lie at the other edge than those of the reference");
    if (pegs.spacing > reference.spacing * mostScale || pegs.spacing * mostScale < reference.spacing)
        return CStatus::Failure("The peg holes are not as far apart as those of the reference");
    return TurnAndMove(page, {pegs.x, pegs.y, reference.x, reference.y, reference.degrees - pegs.degrees, size});
}

void ErasePegs(CCelImg& page, const CPegs& pegs) {
    const double margin = std::max(3.0, pegs.spacing / 80);
    const double cosine = std::cos(pegs.degrees * std::numbers::pi / 180);
    const double sine = std::sin(pegs.degrees * std::numbers::pi / 180);
    for (const CPegs::CPlace& hole : pegs.Middles()) {
        const bool isRound = hole.x == pegs.x && hole.y == pegs.y;
        const double halfLength = (isRound ? pegs.round : pegs.slotLength) / 2 + margin;
        const double halfWidth = (isRound ? pegs.round : pegs.slotWidth) / 2 + margin;
        const auto first = [](double at) { return static_cast<int>(std::max(at, 0.0)); };
        for (int y = first(hole.y - halfLength); y < page.Height() && y <= hole.y + halfLength; ++y)
            for (int x = first(hole.x - halfLength); x < page.Width() && x <= hole.x + halfLength; ++x) {
                const double dx = x - hole.x, dy = y - hole.y;
                if (std::abs(dx * cosine + dy * sine) > halfLength || std::abs(dy * cosine - dx * sine) > halfWidth)
                    continue;
                if (page.GetLoadState() == LoadState::Cel)
                    page.SetLine(x, y, false);
                page.SetColorAt(x, y, {255, 255, 255, 255});
            }
    }
    page.SetModified(true);
}

} // namespace velmor
