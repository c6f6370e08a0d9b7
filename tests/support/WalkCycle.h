#pragma once

#include "image/Color.h"
#include "image/RealPoint.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numbers>
#include <utility>
#include <vector>

namespace velmor::testing {

/// A drawing as a hand makes it: strokes of the pen, and where colours are poured into it. Image coordinates, y up.
struct CHandDrawing {
    struct CPour {
        CRealPoint at;
        ColorRef color;
    };
    std::vector<std::vector<CRealPoint>> strokes;
    std::vector<CPour> pours; ///< more than are needed: where the colour is already, nothing is to be poured
};

/// The drawings of a walk: a figure of rounded limbs seen from the side, on a page of 480 x 360 pixels. As hands
/// do, strokes end a few pixels before they meet.
class CWalkCycle {
public:
    static constexpr int count = 12;
    static constexpr double gap = 5; ///< between strokes that ought to meet, in pixels

    /// 0 to count - 1.
    static CHandDrawing Drawing(int index) {
        const std::vector<CPart> parts = Figure(2 * std::numbers::pi * index / count);
        CHandDrawing drawing;
        for (std::size_t i = 0; i < parts.size(); ++i) {
            AddStrokes(parts, i, drawing.strokes);
            AddPours(parts, i, drawing.pours);
        }
        const CRealPoint eye = Eye(2 * std::numbers::pi * index / count);
        drawing.strokes.push_back({eye, {eye.x + 1, eye.y - 9}});
        return drawing;
    }

private:
    struct CLimb {
        CRealPoint from;
        CRealPoint to;
        double radius;

        /// Below 0 inside.
        double DistanceTo(CRealPoint point) const {
            const double dx = to.x - from.x;
            const double dy = to.y - from.y;
            const double square = dx * dx + dy * dy;
            const double along =
                square == 0 ? 0
                            : std::clamp(((point.x - from.x) * dx + (point.y - from.y) * dy) / square, 0.0, 1.0);
            return std::hypot(point.x - from.x - along * dx, point.y - from.y - along * dy) - radius;
        }
        /// All around, counter-clockwise, a pixel apart.
        std::vector<CRealPoint> Outline() const {
            const double length = std::hypot(to.x - from.x, to.y - from.y);
            const double angle = std::atan2(to.y - from.y, to.x - from.x);
            const int onArc = static_cast<int>(std::numbers::pi * radius);
            const int onSide = static_cast<int>(length);
            std::vector<CRealPoint> outline;
            const auto arc = [&](CRealPoint centre, double start) {
                for (int i = 0; i < onArc; ++i) {
                    const double at = start + std::numbers::pi * i / onArc;
                    outline.push_back({centre.x + radius * std::cos(at), centre.y + radius * std::sin(at)});
                }
            };
            const auto side = [&](CRealPoint start, CRealPoint end) {
                for (int i = 0; i < onSide; ++i) {
                    const double share = static_cast<double>(i) / onSide;
                    outline.push_back({start.x + (end.x - start.x) * share, start.y + (end.y - start.y) * share});
                }
            };
            const CRealPoint out{-radius * std::sin(angle), radius * std::cos(angle)};
            arc(to, angle - std::numbers::pi / 2);
            side({to.x + out.x, to.y + out.y}, {from.x + out.x, from.y + out.y});
            arc(from, angle + std::numbers::pi / 2);
            side({from.x - out.x, from.y - out.y}, {to.x - out.x, to.y - out.y});
            return outline;
        }
    };

    struct CPart {
        std::vector<CLimb> limbs;
        ColorRef color;

        double DistanceTo(CRealPoint point) const {
            double least = limbs.front().DistanceTo(point);
            for (const CLimb& limb : limbs)
                least = std::min(least, limb.DistanceTo(point));
            return least;
        }
    };

    static CRealPoint Beside(CRealPoint point, double angle, double length) {
        return {point.x + length * std::sin(angle), point.y - length * std::cos(angle)};
    }

    static CPart Leg(CRealPoint hip, double phase, ColorRef color) {
        const double thigh = 0.55 * std::sin(phase);
        const double knee = thigh - 0.15 - 0.75 * std::max(0.0, std::cos(phase + 0.4));
        const CRealPoint middle = Beside(hip, thigh, 52);
        const CRealPoint ankle = Beside(middle, knee, 50);
        return {{{hip, middle, 17}, {middle, ankle, 14}, {ankle, {ankle.x + 24, ankle.y - 4}, 12}}, color};
    }

    static CPart Arm(CRealPoint shoulder, double phase, ColorRef color) {
        const double upper = -0.6 * std::sin(phase);
        const CRealPoint elbow = Beside(shoulder, upper, 42);
        return {{{shoulder, elbow, 12}, {elbow, Beside(elbow, upper + 0.5, 38), 11}}, color};
    }

    /// The nearest part first.
    static std::vector<CPart> Figure(double phase) {
        const CRealPoint hip{230, 138 + 5 * std::cos(2 * phase)};
        const CRealPoint shoulder{hip.x + 8, hip.y + 82};
        const CRealPoint head{shoulder.x + 10, shoulder.y + 66};
        return {Arm(shoulder, phase, MakeColorRef(236, 112, 99)),
                {{{head, head, 44}}, MakeColorRef(250, 215, 160)},
                {{{hip, shoulder, 34}}, MakeColorRef(231, 76, 60)},
                Leg(hip, phase, MakeColorRef(52, 152, 219)),
                Leg(hip, phase + std::numbers::pi, MakeColorRef(40, 116, 166)),
                Arm(shoulder, phase + std::numbers::pi, MakeColorRef(176, 58, 46))};
    }

    static CRealPoint Eye(double phase) { return {272, 294 + 5 * std::cos(2 * phase)}; }

    /// Not behind a nearer part, nor inside of its own.
    static bool IsSeen(const std::vector<CPart>& parts, std::size_t index, const CLimb& own, CRealPoint point) {
        for (std::size_t i = 0; i < index; ++i)
            if (parts[i].DistanceTo(point) < 1)
                return false;
        return std::ranges::all_of(parts[index].limbs,
                                   [&](const CLimb& limb) { return &limb == &own || limb.DistanceTo(point) >= 0; });
    }

    static void AddStrokes(const std::vector<CPart>& parts, std::size_t index,
                           std::vector<std::vector<CRealPoint>>& strokes) {
        for (const CLimb& limb : parts[index].limbs) {
            std::vector<CRealPoint> outline = limb.Outline();
            // A stroke begins where the limb comes into sight, or anywhere when all of it is seen.
            const auto isSeen = [&](CRealPoint point) { return IsSeen(parts, index, limb, point); };
            const auto hidden = std::ranges::find_if_not(outline, isSeen);
            std::rotate(outline.begin(), hidden == outline.end() ? outline.begin() : hidden, outline.end());
            std::vector<CRealPoint> stroke;
            for (const CRealPoint& point : outline) {
                if (isSeen(point)) {
                    stroke.push_back(point);
                } else if (!stroke.empty()) {
                    Keep(stroke, strokes);
                    stroke.clear();
                }
            }
            Keep(stroke, strokes);
        }
    }

    static void Keep(std::vector<CRealPoint> stroke, std::vector<std::vector<CRealPoint>>& strokes) {
        constexpr auto short_of = static_cast<std::ptrdiff_t>(gap);
        if (std::ssize(stroke) < 3 * short_of)
            return; // the next hold of the pen covers it
        stroke.erase(stroke.end() - short_of, stroke.end());
        strokes.push_back(std::move(stroke));
    }

    /// Places inside what is seen of a part, those first that are farthest from all lines: what lies before it may
    /// divide it.
    static void AddPours(const std::vector<CPart>& parts, std::size_t index,
                         std::vector<CHandDrawing::CPour>& pours) {
        constexpr double leastRoom = 4;
        std::vector<std::pair<double, CRealPoint>> places;
        for (double y = 4; y < 356; y += 4)
            for (double x = 4; x < 476; x += 4) {
                double distance = -parts[index].DistanceTo({x, y});
                for (std::size_t i = 0; i < index; ++i)
                    distance = std::min(distance, parts[i].DistanceTo({x, y}));
                if (distance > leastRoom)
                    places.push_back({distance, {x, y}});
            }
        std::ranges::stable_sort(places, std::greater<>(), &std::pair<double, CRealPoint>::first);
        for (const auto& [distance, at] : places)
            pours.push_back({at, parts[index].color});
    }
};

} // namespace velmor::testing
