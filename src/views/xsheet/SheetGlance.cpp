#include "views/xsheet/SheetGlance.h"

#include "xsheet/Scene.h"

namespace velmor {

namespace {

constexpr unsigned fullTurn = 360;

void AddTo(CCellLook& look, const CXSheet& xsheet, CSheetCell at, const CSheetGlance& glance) {
    const CXSheetCell& cell = xsheet.Cell(at.level, at.frame);
    if (!cell.IsUsed())
        return;
    if (glance.colorsFolders)
        look.hue = HueOf(cell.FolderName());
    if (glance.drawsHolds && look.held) {
        const bool goesOn = xsheet.HasFrame(at.frame + 1) && cell.ShowsSameAs(xsheet.Cell(at.level, at.frame + 1));
        look.hold = goesOn ? HoldLine::Through : HoldLine::End;
    }
    if (glance.picture && !look.held)
        look.picture.pixmap = glance.picture(cell);
}

} // namespace

// A prime and the golden section keep the hues of names that differ in a letter apart.
int HueOf(const std::string& folder) {
    unsigned hash = 2166136261U;
    for (const char letter : folder)
        hash = (hash ^ static_cast<unsigned char>(letter)) * 16777619U;
    return static_cast<int>((hash >> 8U) * 0x9e3779b9U % fullTurn);
}

void AddGlance(CXSheetLook& look, const CScene& shown, const CSheetGlance& glance) {
    for (std::size_t row = 0; row < look.frames.size(); ++row)
        for (std::size_t column = 0; column < look.levels.size(); ++column)
            AddTo(look.cells[row * look.levels.size() + column], shown.xsheet,
                  {look.geometry.firstLevel + static_cast<int>(column),
                   look.geometry.firstFrame + static_cast<int>(row)},
                  glance);
}

} // namespace velmor
