#include "app/demo/FoxDrawing.h"

#include "app/demo/CelDrawing.h"
#include "app/demo/DemoColors.h"

#include <algorithm>
#include <cmath>

namespace velmor::demo {

namespace {

constexpr double hipHeight = 116;
constexpr double legLength = 104; ///< from hip to ankle
constexpr double ankleHeight = 24;
constexpr CSpot hipJoint{15, 8};   ///< from the middle of the hips
constexpr CSpot shoulder{12, 118}; ///< on the body
constexpr CSpot headSeat{14, 222}; ///< middle of the head, on the body
constexpr double upperArm = 44;
constexpr double forearm = 40;

class CFoxArtist {
public:
    CFoxArtist(CCelImg& cel, const CPalette& palette, const CFoxPose& pose)
        : m_palette(palette), m_pose(pose), m_drawing(cel, ColorNamed(palette, transparentPaper)) {
        const double width = 1 / std::sqrt(pose.stretch);
        m_body = {foxGround + CSpot{pose.hipX, hipHeight + pose.hipY}, -pose.lean, {width, pose.stretch}};
        m_head = {m_body.Of(headSeat) + CSpot{pose.headX, pose.headY},
                  -pose.nod,
                  {std::sqrt(width), std::sqrt(pose.stretch)}};
    }

    void Draw() {
        DrawTail();
        DrawArm(m_pose.farArm, {shoulder.x + 26, shoulder.y}, "Far fur");
        DrawLeg(m_pose.farFoot, {hipJoint.x - 10, hipJoint.y}, "Far fur", "Far boot");
        DrawLeg(m_pose.nearFoot, {hipJoint.x - 20, hipJoint.y}, "Fur shade", "Boot");
        DrawScarfEnd();
        DrawBody();
        DrawEars();
        DrawScarf();
        DrawHead();
        DrawArm(m_pose.nearArm, {shoulder.x - 24, shoulder.y}, "Fur");
        m_drawing.ColorLines(Color("Line"));
        DrawGlints();
    }

private:
    CColor Color(std::string_view name) const { return ColorNamed(m_palette, name); }
    CPour Fur(double lightDegrees = 110) const { return {Color("Fur"), Color("Fur shade"), lightDegrees}; }

    void DrawTail() {
        const CSpot root = m_body.Of({-30, 26});
        const CPlacement tail{root, -m_pose.tail};
        // Along the negative x axis: away behind the fox. The tip turns further than the root.
        const CCurve spine = tail.Of(OpenCurve({{0, 0},
                                                {-48, -8},
                                                CSpot{-98, 0} + Turned({0, 0}, 0),
                                                CSpot{-98, 0} + Turned({-58, 8}, -m_pose.tailTip),
                                                CSpot{-98, 0} + Turned({-112, 32}, -m_pose.tailTip)}));
        const CCurve outline = Tube(spine, {{0, 15}, {0.3, 34}, {0.62, 52}, {0.85, 36}, {1, 5}});
        m_drawing.Shape(outline, Fur());
        const auto cut = static_cast<std::ptrdiff_t>(spine.size() * 62 / 100);
        const CCurve end(spine.begin() + cut, spine.end());
        const CSpot along = end[4] - end[0];
        const CSpot side = CSpot{-along.y, along.x} * (1 / LengthOf(along));
        // A zigzag of fur where the white begins, then wide around the tip: the tail's outline cuts it.
        std::vector<CSpot> white;
        for (int i = -3; i <= 3; ++i)
            white.push_back(end[0] + side * (i * 22.0) + along * (i % 2 == 0 ? 0.0 : 0.9));
        CCurve marking = white;
        marking.push_back(end.back() + side * 70 + along);
        marking.push_back(end.back() - side * 70 + along);
        m_drawing.Marking(marking, CPour(Color("Cream"), Color("Cream shade")), outline);
    }

    void DrawLeg(const CFootPose& foot, CSpot joint, std::string_view fur, std::string_view boot) {
        const CSpot hip = m_body.origin + joint;
        const CPlacement sole{foxGround + CSpot{joint.x - hipJoint.x + 9 + foot.x, foot.lift}, foot.toes};
        const CSpot ankle = sole.Of({-6, ankleHeight + 8});
        const CSpot along = ankle - hip;
        const double reach = std::min(LengthOf(along), legLength);
        const double kneeOut = std::min(std::sqrt(legLength * legLength - reach * reach) * 0.75, 42.0);
        const CSpot forward = CSpot{-along.y, along.x} * (1 / std::max(LengthOf(along), 1.0));
        const CSpot knee = Between(hip, ankle, 0.5) + forward * (kneeOut + 4);
        m_drawing.Shape(Tube(Bow(hip, knee, ankle), {{0, 34}, {1, 17}}), Color(fur));
        const CCurve shoe = sole.Of(ClosedCurve({{-30, 6},
                                                 {-30, 6},
                                                 {-33, 26},
                                                 {-27, 50},
                                                 {-27, 50},
                                                 {16, 50},
                                                 {16, 50},
                                                 {20, 34},
                                                 {44, 28},
                                                 {54, 12},
                                                 {48, 0},
                                                 {48, 0},
                                                 {-26, 0}}));
        m_drawing.Shape(shoe, Color(boot));
        m_drawing.Line(sole.Of(Bow({-27, 38}, {-6, 34}, {16, 38})), PenWidth::Medium);
    }

    void DrawArm(const CArmPose& arm, CSpot joint, std::string_view fur) {
        const CSpot from = m_body.Of(joint);
        const double swing = arm.swing - m_pose.lean * 0.5;
        const CSpot elbow = from + Turned({0, -upperArm}, swing);
        const CSpot wrist = elbow + Turned({0, -forearm}, swing + arm.bend);
        const CSpot hand = elbow + Turned({0, -forearm - 12}, swing + arm.bend);
        m_drawing.Shape(
            Tube(Bow(from, elbow + (elbow - Between(from, wrist, 0.5)) * 0.5, wrist), {{0, 23}, {1, 17}}),
            Color(fur));
        const CPlacement paw{hand, swing + arm.bend};
        m_drawing.Shape(
            paw.Of(ClosedCurve({{-20, 8}, {-21, -10}, {-8, -24}, {12, -22}, {22, -6}, {20, 10}, {0, 16}})),
            Color(fur == "Fur" ? "Paw" : "Far boot"));
        m_drawing.Line(paw.Of(Bow({12, 6}, {22, 0}, {14, -8})), PenWidth::Medium);
    }

    void DrawBody() {
        const CCurve body = m_body.Of(ClosedCurve({{0, -28},
                                                   {44, -20},
                                                   {67, 14},
                                                   {66, 60},
                                                   {52, 112},
                                                   {40, 158},
                                                   {0, 170},
                                                   {-40, 158},
                                                   {-54, 112},
                                                   {-66, 56},
                                                   {-64, 10},
                                                   {-42, -20}}));
        m_drawing.Shape(body, Fur(60));
        const CCurve belly = m_body.Of(ClosedCurve(
            {{30, -14}, {62, 6}, {80, 60}, {66, 120}, {40, 160}, {18, 140}, {8, 96}, {2, 44}, {10, 4}}));
        m_drawing.Marking(belly, CPour(Color("Cream"), Color("Cream shade")), body);
    }

    void DrawScarfEnd() {
        const CPlacement knot{m_body.Of({-34, 146}), 0};
        const double wave = m_pose.scarf;
        const CSpot middle = Turned({-6, -42}, -wave);
        const CSpot end = middle + Turned({-8, -52}, -wave * 0.75 - 10);
        const CCurve ribbon = knot.Of(OpenCurve({{12, 6}, {-2, -12}, middle, end}));
        m_drawing.Shape(Tube(ribbon, {{0, 14}, {0.8, 23}, {1, 20}}), CPour(Color("Scarf"), Color("Scarf shade")));
    }

    void DrawScarf() {
        m_drawing.Shape(m_body.Of(ClosedCurve({{-62, 150},
                                               {-60, 122},
                                               {-24, 100},
                                               {30, 97},
                                               {66, 114},
                                               {74, 142},
                                               {50, 172},
                                               {0, 184},
                                               {-46, 174}})),
                        CPour(Color("Scarf"), Color("Scarf shade"), 80));
        m_drawing.Line(m_body.Of(Bow({-54, 138}, {4, 100}, {68, 134})), PenWidth::Medium);
    }

    void DrawEar(CSpot base, double degrees, std::string_view inside) {
        const CPlacement ear{m_head.Of(base), m_head.degrees + degrees + m_pose.ears, m_head.scale};
        const CCurve outline = ear.Of(
            ClosedCurve({{-44, -24}, {-44, 22}, {-22, 78}, {2, 112}, {2, 112}, {30, 76}, {46, 20}, {44, -24}}));
        m_drawing.Shape(outline, Fur(140));
        m_drawing.Marking(
            ear.Of(ClosedCurve({{-20, -20}, {-20, 22}, {-8, 56}, {3, 82}, {3, 82}, {18, 54}, {28, 16}, {26, -20}})),
            Color(inside), outline);
    }

    void DrawEars() {
        DrawEar({66, 66}, -20, "Inner ear");
        DrawEar({-62, 62}, 22, "Inner ear");
    }

    void DrawHead() {
        const CCurve head = m_head.Of(ClosedCurve({{0, 98},
                                                   {58, 88},
                                                   {100, 50},
                                                   {114, 0},
                                                   {138, -40},
                                                   {138, -40},
                                                   {92, -68},
                                                   {40, -92},
                                                   {-14, -90},
                                                   {-76, -70},
                                                   {-138, -48},
                                                   {-138, -48},
                                                   {-112, 2},
                                                   {-98, 50},
                                                   {-56, 88}}));
        m_drawing.Shape(head, Fur());
        const CCurve mask = m_head.Of(ClosedCurve({{-150, -56},
                                                   {-150, -56},
                                                   {-84, -24},
                                                   {-34, -30},
                                                   {2, -6},
                                                   {24, 16},
                                                   {24, 16},
                                                   {46, -8},
                                                   {68, 16},
                                                   {68, 16},
                                                   {92, -6},
                                                   {112, -22},
                                                   {150, -44},
                                                   {150, -44},
                                                   {96, -90},
                                                   {20, -130},
                                                   {-80, -100}}));
        m_drawing.Marking(mask, CPour(Color("Cream"), Color("Cream shade")), head);
        m_drawing.Spot(m_head.Of(Ellipse({-42, -42}, 20, 12)), Color("Blush"));
        m_drawing.Spot(m_head.Of(Ellipse({104, -38}, 14, 11)), Color("Blush"));
        DrawEye({-6, 8}, 15, 24);
        DrawEye({84, 10}, 13, 23);
        DrawBrow({-12, 50}, 20, 8);
        DrawBrow({88, 51}, 16, -10);
        DrawMouth();
        m_drawing.Shape(m_head.Of(ClosedCurve({{28, -20}, {46, -13}, {65, -19}, {60, -32}, {47, -39}, {34, -33}})),
                        Color("Eye"), PenWidth::Medium);
    }

    void DrawEye(CSpot centre, double radiusX, double radiusY) {
        const double open = m_pose.eyesOpen;
        if (open < 0.2) {
            const double bend = m_pose.eyesLaugh ? 22 : -16;
            const CSpot corner{radiusX + 5, m_pose.eyesLaugh ? -8.0 : -2.0};
            m_drawing.Line(m_head.Of(Bow(centre + CSpot{-corner.x, corner.y}, centre + CSpot{0, bend},
                                         centre + CSpot{corner.x, corner.y})),
                           PenWidth::Broad);
            return;
        }
        const CSpot middle = centre + CSpot{m_pose.gaze.x * 5, m_pose.gaze.y * 5};
        m_drawing.Shape(m_head.Of(Ellipse(middle, radiusX, radiusY * open)), Color("Eye"), PenWidth::Medium);
        m_eyes.push_back(middle);
    }

    void DrawBrow(CSpot centre, double half, double slope) {
        m_drawing.Line(m_head.Of(Bow(centre + CSpot{-half, -slope / 2}, centre + CSpot{0, 10},
                                     centre + CSpot{half, slope / 2})),
                       PenWidth::Medium);
    }

    void DrawMouth() {
        const CSpot lip{47, -54};
        const double width = 20 + 8 * m_pose.smile;
        const CSpot left = lip + CSpot{-width - 4, 5};
        const CSpot right = lip + CSpot{width, 6};
        if (m_pose.smile > 0.5) {
            const double depth = 8 + 38 * (m_pose.smile - 0.3);
            const CCurve mouth = m_head.Of(
                Joined(Bow(left, lip + CSpot{-2, -4}, right), Bow(right, lip + CSpot{0, -2 * depth}, left)));
            m_drawing.Shape(mouth, Color("Mouth"), PenWidth::Medium);
            m_drawing.Marking(m_head.Of(Ellipse(lip + CSpot{0, -depth - 2}, width * 0.62, depth * 0.5)),
                              Color("Tongue"), mouth);
        }
        m_drawing.Line(m_head.Of(Bow(left, lip + CSpot{-14, -15}, lip)), PenWidth::Medium);
        m_drawing.Line(m_head.Of(Bow(lip, lip + CSpot{14, -15}, right)), PenWidth::Medium);
        m_drawing.Line(m_head.Of({{47, -38}, lip}), PenWidth::Medium);
    }

    /// After the lines have their colour: the glints lie within them.
    void DrawGlints() {
        for (const CSpot& eye : m_eyes) {
            m_drawing.Spot(m_head.Of(Ellipse(eye + CSpot{4, 10}, 5.5, 7)), Color("Glint"));
            m_drawing.Spot(m_head.Of(Ellipse(eye + CSpot{-5, -9}, 3, 3.5)), Color("Glint"));
        }
        m_drawing.Spot(m_head.Of(Ellipse({44, -20}, 6, 2.5, -8)), Color("Glint"));
    }

    const CPalette& m_palette;
    const CFoxPose& m_pose;
    CCelDrawing m_drawing;
    CPlacement m_body;
    CPlacement m_head;
    std::vector<CSpot> m_eyes; ///< the open ones, on the head
};

} // namespace

void DrawFox(CCelImg& cel, const CPalette& palette, const CFoxPose& pose) {
    CFoxArtist(cel, palette, pose).Draw();
    cel.SetModified(true);
}

} // namespace velmor::demo
