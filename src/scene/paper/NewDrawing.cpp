#include "scene/paper/NewDrawing.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace velmor {

namespace {

/// The parts of a cel's name; the letter small, 0 for none.
struct CNumberedName {
    int number = 0;
    char letter = 0;

    bool operator==(const CNumberedName&) const = default;
};

std::optional<CNumberedName> Parse(const std::string& name) {
    CNumberedName parsed;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), parsed.number);
    if (error != std::errc() || parsed.number == std::numeric_limits<int>::max())
        return std::nullopt;
    if (end != name.data() + name.size())
        parsed.letter = static_cast<char>(*end | 0x20); // as a small letter
    return parsed;
}

} // namespace

std::optional<std::string> NameAfter(const std::string& name, std::span<const std::string> titles) {
    const std::optional<CNumberedName> here = Parse(name);
    if (!here)
        return std::nullopt;
    const auto isTaken = [&](const CNumberedName& wanted) {
        return std::ranges::any_of(titles, [&](const std::string& title) { return Parse(title) == wanted; });
    };
    const auto liesBetween = [&](const std::string& title) {
        const std::optional<CNumberedName> other = Parse(title);
        return other && other->number == here->number && other->letter > here->letter;
    };
    if (!isTaken({here->number + 1, 0}) && std::ranges::none_of(titles, liesBetween))
        return std::to_string(here->number + 1);
    for (char letter = here->letter == 0 ? 'a' : static_cast<char>(here->letter + 1); letter <= 'z'; ++letter)
        if (!isTaken({here->number, letter}))
            return std::to_string(here->number) + letter;
    return std::nullopt;
}

std::optional<CNewExposure> ExposureAfter(const CXSheet& sheet, CSheetCell cursor, const CDrawing& after,
                                          int hold) {
    CNewExposure exposure{cursor.level, cursor.frame, hold, 0, sheet.FrameCount()};
    if (sheet.Cell(cursor.level, cursor.frame).IsUsed()) {
        const int standing = StandingFrame(sheet, cursor, after);
        exposure.frame = HoldAround(sheet, {cursor.level, standing}).endFrame;
    }
    int room = 0;
    while (room < hold &&
           (!sheet.HasFrame(exposure.frame + room) || !sheet.Cell(cursor.level, exposure.frame + room).IsUsed()))
        ++room;
    exposure.inserted = hold - room;
    int used = sheet.FrameCount();
    while (used > 0 && !sheet.Cell(cursor.level, used - 1).IsUsed())
        --used;
    exposure.frameCount = std::max({sheet.FrameCount(), exposure.frame + hold, used + exposure.inserted});
    return exposure.frameCount <= CXSheet::mostFrames ? std::optional(exposure) : std::nullopt;
}

void Expose(CXSheet& sheet, const CNewExposure& exposure, const CXSheetCell& cell) {
    if (exposure.frameCount > sheet.FrameCount())
        sheet.SetFrameCount(exposure.frameCount);
    if (exposure.inserted > 0)
        sheet.InsertFrames(exposure.level, exposure.frame, exposure.inserted);
    for (int frame = exposure.frame; frame < exposure.frame + exposure.held; ++frame)
        sheet.MutableCell(exposure.level, frame).Expose(cell);
}

} // namespace velmor
