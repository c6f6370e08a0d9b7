#include "xsheet/Inbetween.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <utility>

namespace velmor {

namespace {

constexpr std::size_t unknowns = 4;

/// One equation: the factors of the unknowns and the right side.
using Row = std::array<float, unknowns + 1>;
using System = std::array<Row, unknowns>;

// Brings the row whose factor of `column` is largest to its place.
void Pivot(System& system, std::size_t column) {
    std::size_t largest = column;
    for (std::size_t row = column + 1; row < unknowns; ++row)
        if (std::abs(system[row][column]) > std::abs(system[largest][column]))
            largest = row;
    std::swap(system[column], system[largest]);
}

// Gaussian elimination with row pivoting. What has no single solution gives values that are not finite.
std::array<float, unknowns> Solve(System system) {
    for (std::size_t column = 0; column < unknowns; ++column) {
        Pivot(system, column);
        for (std::size_t row = column + 1; row < unknowns; ++row) {
            const float factor = system[row][column] / system[column][column];
            for (std::size_t i = column; i <= unknowns; ++i)
                system[row][i] -= factor * system[column][i];
        }
    }
    std::array<float, unknowns> solution{};
    for (std::size_t row = unknowns; row-- > 0;) {
        float rest = system[row][unknowns];
        for (std::size_t i = row + 1; i < unknowns; ++i)
            rest -= system[row][i] * solution[i];
        solution[row] = rest / system[row][row];
    }
    return solution;
}

bool StartsFlat(InbetweenType type) {
    return type == InbetweenType::SlowOut || type == InbetweenType::SlowOutSlowIn;
}

bool EndsFlat(InbetweenType type) {
    return type == InbetweenType::SlowIn || type == InbetweenType::SlowOutSlowIn;
}

// The frames that an inbetween writes: keys.first + 1 to this - 1.
int EndOfWriting(CInbetweenKeys keys, InbetweenType type) {
    return type == InbetweenType::Constant ? keys.last + 1 : keys.last;
}

/// What a number may be.
struct CBounds {
    double least = -std::numeric_limits<double>::infinity();
    double most = std::numeric_limits<double>::infinity();
};
constexpr CBounds transparencies{0, 100};
constexpr CBounds blurs{1, 50};

void InbetweenTrack(CCameraTrack& camera, CInbetweenKeys keys, const CInbetweenPace& pace,
                    double CCameraFrame::*value) {
    const CBetweenValues between(pace, keys, camera.At(keys.first).*value, camera.At(keys.last).*value);
    for (int frame = keys.first + 1; frame < EndOfWriting(keys, pace.type); ++frame)
        camera.MutableAt(frame).*value = between.At(frame);
}

/// The keys and the used cells between them on one level.
class CLevelInbetween {
public:
    CLevelInbetween(CXSheet& xsheet, int level, CInbetweenKeys keys, const CInbetweenPace& pace)
        : m_xsheet(xsheet), m_level(level), m_keys(keys), m_pace(pace) {}

    using Getter = double (CXSheetCell::*)() const;
    void Write(Getter get, CStatus (CXSheetCell::*set)(double), CBounds bounds = {}) {
        const CBetweenValues values = ValuesOf(get);
        ForEachUsedCell(
            [&](CXSheetCell& cell, int frame) { return (cell.*set)(Within(bounds, values.At(frame))); });
    }
    void Write(Getter getX, Getter getY, CStatus (CXSheetCell::*set)(double, double), CBounds bounds = {}) {
        const CBetweenValues valuesX = ValuesOf(getX);
        const CBetweenValues valuesY = ValuesOf(getY);
        ForEachUsedCell([&](CXSheetCell& cell, int frame) {
            return (cell.*set)(Within(bounds, valuesX.At(frame)), Within(bounds, valuesY.At(frame)));
        });
    }

private:
    CBetweenValues ValuesOf(Getter get) const {
        return {m_pace, m_keys, (m_xsheet.Cell(m_level, m_keys.first).*get)(),
                (m_xsheet.Cell(m_level, m_keys.last).*get)()};
    }
    // Only a drawn curve leaves the range between its keys.
    double Within(CBounds bounds, double value) const {
        return m_pace.type == InbetweenType::Drawn ? std::clamp(value, bounds.least, bounds.most) : value;
    }
    template<class Change>
    void ForEachUsedCell(Change change) {
        for (int frame = m_keys.first + 1; frame < EndOfWriting(m_keys, m_pace.type); ++frame)
            if (m_xsheet.Cell(m_level, frame).IsUsed())
                static_cast<void>(change(m_xsheet.MutableCell(m_level, frame), frame)); // fails on empty cells only
    }

    CXSheet& m_xsheet;
    int m_level;
    CInbetweenKeys m_keys;
    CInbetweenPace m_pace;
};

} // namespace

CKeyCurve::CKeyCurve(InbetweenType type, CInbetweenKeys keys, double firstValue, double lastValue) {
    const auto x0 = static_cast<float>(keys.first);
    const auto x1 = static_cast<float>(keys.last);
    const auto y0 = static_cast<float>(firstValue);
    const auto y1 = static_cast<float>(lastValue);
    const float slope = (y1 - y0) / (x1 - x0);
    const float slope0 = StartsFlat(type) ? 0 : slope;
    const float slope1 = EndsFlat(type) ? 0 : slope;
    const auto [a, b, c, d] =
        Solve({Row{x0 * x0 * x0, x0 * x0, x0, 1, y0}, Row{x1 * x1 * x1, x1 * x1, x1, 1, y1},
               Row{3 * x0 * x0, 2 * x0, 1, 0, slope0}, Row{3 * x1 * x1, 2 * x1, 1, 0, slope1}});
    // In single precision the equations of a few late keys (1551 and 1561, 1900 and 1911) have no single solution:
    // a straight line then, rather than cells without numbers.
    const bool solved = std::isfinite(a) && std::isfinite(b) && std::isfinite(c) && std::isfinite(d);
    m_a = solved ? a : 0;
    m_b = solved ? b : 0;
    m_c = solved ? c : slope;
    m_d = solved ? d : y0 - slope * x0;
}

double CKeyCurve::At(int frame) const {
    const auto x = static_cast<float>(frame);
    return ((x * m_a + m_b) * x + m_c) * x + m_d;
}

CBetweenValues::CBetweenValues(const CInbetweenPace& pace, CInbetweenKeys keys, double firstValue, double lastValue)
    : m_pace(pace), m_keys(keys), m_first(firstValue), m_last(lastValue) {
    m_pace.hold = std::clamp(pace.hold, 1, mostInbetweenHold);
    if (pace.type != InbetweenType::Constant && pace.type != InbetweenType::Drawn)
        m_curve.emplace(pace.type, keys, firstValue, lastValue);
}

double CBetweenValues::At(int frame) const {
    if (m_pace.type == InbetweenType::Constant)
        return m_first;
    const int passed = frame - m_keys.first;
    const int shown = frame < m_keys.last ? passed - passed % m_pace.hold : passed;
    if (shown == 0)
        return m_first;
    if (m_curve)
        return m_curve->At(m_keys.first + shown);
    const double part = m_pace.curve.At(static_cast<double>(shown) / (m_keys.last - m_keys.first));
    return m_first + (m_last - m_first) * part;
}

void InbetweenCamera(CCameraTrack& camera, CInbetweenKeys keys, CameraSource source, const CInbetweenPace& pace) {
    switch (source) {
    case CameraSource::Pan:
        InbetweenTrack(camera, keys, pace, &CCameraFrame::panX);
        InbetweenTrack(camera, keys, pace, &CCameraFrame::panY);
        break;
    case CameraSource::Tilt:
        InbetweenTrack(camera, keys, pace, &CCameraFrame::rotation);
        break;
    case CameraSource::Zoom:
        InbetweenTrack(camera, keys, pace, &CCameraFrame::zoom);
        break;
    }
}

std::optional<CInbetweenKeys> FindLevelKeys(const CXSheet& xsheet, int level, int firstFrame, int lastFrame) {
    CInbetweenKeys keys{firstFrame, lastFrame};
    while (keys.last - keys.first >= 2 && !xsheet.Cell(level, keys.first).IsUsed())
        ++keys.first;
    while (keys.last - keys.first >= 2 && !xsheet.Cell(level, keys.last).IsUsed())
        --keys.last;
    return keys.last - keys.first >= 2 ? std::optional(keys) : std::nullopt;
}

void InbetweenLevel(CXSheet& xsheet, int level, CInbetweenKeys keys, LevelSource source,
                    const CInbetweenPace& pace) {
    CLevelInbetween inbetween(xsheet, level, keys, pace);
    switch (source) {
    case LevelSource::Position:
        return inbetween.Write(&CXSheetCell::PosX, &CXSheetCell::PosY, &CXSheetCell::SetPos);
    case LevelSource::Rotation:
        return inbetween.Write(&CXSheetCell::Rotation, &CXSheetCell::SetRot);
    case LevelSource::Zoom:
        return inbetween.Write(&CXSheetCell::ScaleX, &CXSheetCell::ScaleY, &CXSheetCell::SetScale);
    case LevelSource::Transparency:
        return inbetween.Write(&CXSheetCell::Transparency, &CXSheetCell::SetTrans, transparencies);
    case LevelSource::Blur:
        return inbetween.Write(&CXSheetCell::BlurX, &CXSheetCell::BlurY, &CXSheetCell::SetBlur, blurs);
    }
}

} // namespace velmor
