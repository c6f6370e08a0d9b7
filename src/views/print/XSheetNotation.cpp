#include "views/print/XSheetNotation.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <numbers>

namespace velmor {

namespace {

template<class... Values>
std::string Format(const char* format, Values... values) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), format, values...);
    return text.data();
}

// With one decimal where there is one.
std::string Number(double value) {
    const double tenths = std::round(value * 10) / 10;
    return Format(tenths == std::round(tenths) ? "%.0f" : "%.1f", tenths == 0 ? 0.0 : tenths);
}

// One number for both directions when they agree.
std::string Pair(double x, double y) {
    return Number(x) == Number(y) ? Number(x) : Number(x) + "/" + Number(y);
}

void Append(std::string& marks, char kind, const std::string& value, const char* none) {
    if (value == none)
        return;
    if (!marks.empty())
        marks += ' ';
    marks += kind;
    marks += value;
}

} // namespace

std::string CellMarks(const CXSheetCell& cell) {
    std::string marks;
    if (!cell.IsUsed())
        return marks;
    Append(marks, 'T', Number(cell.Transparency()), "0");
    Append(marks, 'B', Pair(cell.BlurX(), cell.BlurY()), "1");
    Append(marks, 'S', Pair(cell.ScaleX() * 100, cell.ScaleY() * 100), "100");
    Append(marks, 'R', Number(cell.Rotation() * 180 / std::numbers::pi), "0");
    return marks;
}

std::string HeldName(const CXSheet& xsheet, int level, int frame) {
    const CXSheetCell& cell = xsheet.Cell(level, frame);
    if (frame == 0 || !cell.IsUsed() || !cell.ShowsSameAs(xsheet.Cell(level, frame - 1)))
        return {};
    return cell.IsPicture() ? cell.CelName() : cell.FolderName() + cell.CelName();
}

std::string ChangedMarks(const CXSheet& xsheet, int level, int frame) {
    std::string marks = CellMarks(xsheet.Cell(level, frame));
    if (HeldName(xsheet, level, frame).empty())
        return marks;
    const std::string before = CellMarks(xsheet.Cell(level, frame - 1));
    if (marks == before)
        return {};
    return marks.empty() ? "-" : marks;
}

std::string PanText(const CCameraFrame& camera) {
    // Adding 0 takes the sign off a zero.
    return Format("%4.0f,%4.0f", std::round(camera.panX) + 0.0, std::round(camera.panY) + 0.0);
}

std::string ZoomText(const CCameraFrame& camera) {
    return Format("%4.0f%%", camera.zoom * 100);
}

std::string RotationText(const CCameraFrame& camera) {
    return std::to_string(RotationInDegrees(camera.rotation)) + "\u00b0";
}

std::string LengthText(int frames, int framesPerSecond) {
    const int rate = framesPerSecond < 1 ? 1 : framesPerSecond;
    return std::to_string(frames) + (frames == 1 ? " frame = " : " frames = ") + std::to_string(frames / rate) +
           " s + " + std::to_string(frames % rate) + " fr";
}

} // namespace velmor
