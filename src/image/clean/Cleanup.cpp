#include "image/clean/Cleanup.h"

#include "image/clean/LineWeight.h"
#include "image/clean/PageTurn.h"
#include "image/import/LineThreshold.h"
#include "image/paint/Despeckle.h"
#include "image/transform/Transforms.h"

#include <algorithm>
#include <cmath>
#include <new>
#include <numbers>
#include <utility>

namespace velmor {

namespace {

constexpr int usualThreshold = 128;
constexpr double leastDegrees = 0.005; // below which turning would only cost sharpness

/// A picture as a cel, what is darker than the threshold being its lines.
CStatus MakeCel(CCelImg& image, int threshold) {
    CCelImg cel;
    if (CStatus created = cel.CreateCel(image.Width(), image.Height(), image.FilePath()); !created)
        return created;
    const CLineThreshold rule(threshold);
    for (int y = 0; y < image.Height(); ++y)
        for (int x = 0; x < image.Width(); ++x) {
            const CColor color = image.ColorAt(x, y);
            if (color.alpha == 0 || !rule.IsLine(color.red, color.green, color.blue))
                continue;
            cel.SetLine(x, y, true);
            cel.SetColorAt(x, y, {0, 0, 0, 255});
        }
    image = std::move(cel);
    image.SetModified(true);
    return {};
}

CStatus MakePicture(CCelImg& image) {
    CCelImg picture;
    if (CStatus created = picture.CreatePicture(image.Width(), image.Height(), image.FilePath()); !created)
        return created;
    for (const Channel channel : {Channel::Red, Channel::Green, Channel::Blue, Channel::Alpha})
        std::ranges::copy(image.PlaneOf(channel), picture.PlaneOf(channel).begin());
    image = std::move(picture);
    image.SetModified(true);
    return {};
}

/// Where pegs come to lie when the image is turned around its middle.
CPegs Turned(CPegs pegs, CSize size, double degrees) {
    const double cosine = std::cos(degrees * std::numbers::pi / 180),
                 sine = std::sin(degrees * std::numbers::pi / 180);
    const double middleX = (size.width - 1) / 2.0, middleY = (size.height - 1) / 2.0;
    const double x = pegs.x - middleX, y = pegs.y - middleY;
    pegs.x = middleX + x * cosine - y * sine;
    pegs.y = middleY + x * sine + y * cosine;
    pegs.degrees += degrees;
    return pegs;
}

class CCleaning {
public:
    CCleaning(CCelImg& image, const CCleanup& cleanup, const std::optional<CPegReference>& reference,
              CCleanedUp& done)
        : m_image(image), m_cleanup(cleanup), m_reference(reference), m_done(done) {}

    CStatus Run() {
        if (m_cleanup.NeedsPegs())
            FindHoles();
        const bool becomesCel = m_image.GetLoadState() == LoadState::Picture && m_cleanup.threshold > 0;
        if (becomesCel)
            if (CStatus made = MakeCel(m_image, m_cleanup.threshold); !made)
                return made;
        m_done.specks = RemoveSpecks(m_image, m_cleanup.specks, UnderSpecks::Surrounding);
        if (CStatus moved = Move(); !moved)
            return moved;
        m_done.placed = m_pegs;
        if (m_cleanup.erasesPegs && m_pegs)
            ErasePegs(m_image, *m_pegs);
        if (CStatus weighted = ChangeWeight(); !weighted)
            return weighted;
        return becomesCel ? MakePicture(m_image) : CStatus();
    }

private:
    void FindHoles() {
        CPegs pegs;
        const CStatus found = FindPegs(m_image, PegSearchOf(m_cleanup), pegs);
        if (found)
            m_done.pegs = m_pegs = pegs;
        if (m_cleanup.registers)
            m_done.registered = found;
    }

    CStatus Move() {
        if (m_cleanup.registers && m_pegs) {
            m_done.registered = Register();
            if (m_done.registered)
                return {};
        }
        return m_cleanup.straightens ? Straighten() : CStatus();
    }

    CStatus Register() {
        const CSize size = m_reference ? m_reference->size : CSize{m_image.Width(), m_image.Height()};
        CPegs target = m_reference ? m_reference->pegs : StraightPegs(*m_pegs, size);
        if (m_cleanup.straightens)
            target.degrees = 0;
        if (CStatus put = PutOnPegs(m_image, *m_pegs, target, size); !put)
            return put;
        m_done.degrees = target.degrees - m_pegs->degrees;
        const CPegs was = std::exchange(*m_pegs, target);
        m_pegs->slotLength = std::max(was.slotLength, target.slotLength); // of its own holes
        m_pegs->slotWidth = std::max(was.slotWidth, target.slotWidth);
        m_pegs->round = std::max(was.round, target.round);
        return {};
    }

    CStatus Straighten() {
        const std::optional<double> turn =
            m_pegs ? m_pegs->degrees
                   : FindPageTurn(m_image, m_cleanup.threshold > 0 ? m_cleanup.threshold : usualThreshold);
        if (!turn || std::abs(*turn) < leastDegrees)
            return {};
        const CSize size{m_image.Width(), m_image.Height()};
        const double x = (size.width - 1) / 2.0, y = (size.height - 1) / 2.0;
        if (CStatus turned = TurnAndMove(m_image, {x, y, x, y, -*turn, size}); !turned)
            return turned;
        m_done.degrees = -*turn;
        if (m_pegs)
            m_pegs = Turned(*m_pegs, size, -*turn);
        return {};
    }

    CStatus ChangeWeight() {
        if (m_cleanup.weight == 0 || m_image.GetLoadState() != LoadState::Cel)
            return {};
        return m_cleanup.weight > 0 ? ThickenLines(m_image, m_cleanup.weight)
                                    : ThinLines(m_image, -m_cleanup.weight);
    }

    CCelImg& m_image;
    const CCleanup& m_cleanup;
    const std::optional<CPegReference>& m_reference;
    CCleanedUp& m_done;
    std::optional<CPegs> m_pegs; ///< where they are now
};

} // namespace

CPegSearch PegSearchOf(const CCleanup& cleanup) {
    return {cleanup.threshold > 0 ? cleanup.threshold : usualThreshold, cleanup.dpi};
}

CStatus CleanUp(CCelImg& image, const CCleanup& cleanup, const std::optional<CPegReference>& reference,
                CCleanedUp& done) try {
    done = {};
    if (image.GetLoadState() == LoadState::Nothing)
        return CStatus::Failure("Internal Error : cel/picture is not loaded in CleanUp");
    CCelImg changed = image;
    if (CStatus cleaned = CCleaning(changed, cleanup, reference, done).Run(); !cleaned)
        return cleaned;
    image = std::move(changed);
    return {};
} catch (const std::bad_alloc&) {
    return CStatus::Failure("Unable to allocate memory for cel!");
}

} // namespace velmor
