#include "scene/PaletteOperations.h"

#include "scene/DialogRequests.h"
#include "scene/NamingRules.h"
#include "scene/SceneEdit.h"
#include "scene/Settings.h"

#include <algorithm>

namespace velmor {

namespace {

constexpr int mostBrush = 5;
constexpr int noBrush = -1;
constexpr int noEntry = -1;
constexpr int mostPen = 3;
constexpr int mostBucketMode = 2;

void ReplaceColor(CColor& color, ColorRef value) {
    color = {BlueOf(value), GreenOf(value), RedOf(value), color.alpha};
}

// Where a damaged file can be kept: "Fox.colors.damaged", "Fox.colors.damaged2" and so on.
Path FreeNameFor(const Path& damaged) {
    Path name = damaged;
    name += ".damaged";
    const Path first = name;
    for (int number = 2; FileExists(name) || FolderExists(name); ++number) {
        name = first;
        name += std::to_string(number);
    }
    return name;
}

} // namespace

CColor CPaletteOperations::GetColor(int index) const {
    const CPalette& palette = m_context.model.palette;
    return m_context.Require(palette.Contains(index), "Internal error : color index out of range in GetColor")
               ? palette.At(index).color
               : CColor{0, 0, 0, 255};
}

std::string CPaletteOperations::GetColorName(int index) const {
    const CPalette& palette = m_context.model.palette;
    return m_context.Require(palette.Contains(index), "Internal error : color index out of range in GetColorName")
               ? palette.At(index).name
               : std::string();
}

void CPaletteOperations::SetFGColor(int index) {
    CSceneModel& model = m_context.model;
    if (!m_context.Require(model.palette.Contains(index),
                           "Internal error : color index out of range in SetFGColor"))
        return;
    model.paint.foreground = model.palette.At(index).color;
    model.paint.foregroundEntry = index;
    m_context.Update(UpdateHint::Colors);
}

void CPaletteOperations::SetBGColor(int index) {
    CSceneModel& model = m_context.model;
    if (!m_context.Require(model.palette.Contains(index),
                           "Internal error : color index out of range in SetBGColor"))
        return;
    model.paint.background = model.palette.At(index).color;
    m_context.Update(UpdateHint::Colors);
}

void CPaletteOperations::SetFGColorValue(ColorRef color) {
    ReplaceColor(m_context.model.paint.foreground, color);
    m_context.model.paint.foregroundEntry = noEntry;
    m_context.Update(UpdateHint::Colors);
}

void CPaletteOperations::SetBGColorValue(ColorRef color) {
    ReplaceColor(m_context.model.paint.background, color);
    m_context.Update(UpdateHint::Colors);
}

void CPaletteOperations::SetFGAlpha(std::uint8_t alpha) {
    m_context.model.paint.foreground.alpha = alpha;
    m_context.model.paint.foregroundEntry = noEntry;
    m_context.Update(UpdateHint::Colors);
}

void CPaletteOperations::AddColor(const CColor& color, const std::string& name) {
    CPalette changed = m_context.model.palette;
    if (m_context.Require(changed.Add({color, name}), "Internal error : AddColor called exceeding MAXCOLOR"))
        Adopt("Add Color " + name, std::move(changed), m_context.model.paint.foregroundEntry);
}

void CPaletteOperations::EditColor(int index) {
    CPalette changed = m_context.model.palette;
    if (!m_context.Require(changed.Contains(index), "Internal error : color index out of range in EditColor"))
        return;
    const CNamedColor& entry = changed.At(index);
    const std::optional<CColorValues> values = m_context.prompter.Ask(Request({entry.name, entry.color}));
    if (!values)
        return;
    changed.Set(index, {values->color, values->name});
    const int foregroundEntry = m_context.model.paint.foregroundEntry;
    if (Adopt("Edit Color " + values->name, std::move(changed), foregroundEntry) && index == foregroundEntry)
        SetFGColor(index);
}

void CPaletteOperations::DeleteColor(int index) {
    CPalette changed = m_context.model.palette;
    if (!m_context.Require(changed.Count() >= 1, "Internal error : no colors to delete in DeleteColor") ||
        !m_context.Require(changed.Contains(index), "Internal error : color index out of range in DeleteColor"))
        return;
    const std::string name = changed.At(index).name;
    changed.Remove(index);
    const int entry = m_context.model.paint.foregroundEntry;
    Adopt("Delete Color " + name, std::move(changed), entry == index ? noEntry : entry > index ? entry - 1 : entry);
}

void CPaletteOperations::AskAndDeleteColor(int index) {
    const CSceneModel& model = m_context.model;
    const int count = model.palette.Count();
    if (model.palette.Contains(index) && !m_context.prompter.Confirm("Are you sure you want to delete color\n \"" +
                                                                     model.palette.At(index).name + "\" ?"))
        return;
    const bool isForeground = model.paint.foregroundEntry == index;
    DeleteColor(index);
    if (isForeground && model.palette.Count() < count && model.palette.Count() > 0)
        SetFGColor(std::min(index, model.palette.Count() - 1));
}

void CPaletteOperations::AskAndAddColor() {
    if (!m_context.Require(!m_context.model.palette.IsFull(), "Sorry the maximum color allowed exceeded"))
        return;
    const std::optional<CColorValues> values = m_context.prompter.Ask(Request({}));
    if (!values)
        return;
    const int added = m_context.model.palette.Count();
    AddColor(values->color, values->name);
    if (m_context.model.palette.Contains(added))
        SetFGColor(added);
}

void CPaletteOperations::SetBrush(int brush) {
    if (!m_context.Require(brush >= noBrush && brush <= mostBrush,
                           "Internal Error: brush no out of range in SetBrush"))
        return;
    m_context.model.paint.brush = brush;
    Set(m_context.profile, setting::lastBrush, brush);
    m_context.Update(UpdateHint::Tools);
}

void CPaletteOperations::SetPen(int pen) {
    if (!m_context.Require(pen >= 0 && pen <= mostPen, "Internal Error: pen no out of range in SetPen"))
        return;
    m_context.model.paint.pen = pen;
    Set(m_context.profile, setting::lastPen, pen);
    m_context.Update(UpdateHint::Tools);
}

void CPaletteOperations::SetBucketMode(int mode) {
    if (!m_context.Require(mode >= 0 && mode <= mostBucketMode,
                           "Internal Error: Invalid mode at CVelmorltDoc::SetBucketMode"))
        return;
    m_context.model.paint.bucketMode = mode;
    Set(m_context.profile, setting::lastBucketMode, mode);
    m_context.Update(UpdateHint::Tools);
}

void CPaletteOperations::ReadChoices() {
    CPaintChoices& paint = m_context.model.paint;
    paint.brush = std::clamp(Get(m_context.profile, setting::lastBrush), noBrush, mostBrush);
    paint.pen = std::clamp(Get(m_context.profile, setting::lastPen), 0, mostPen);
    paint.bucketMode = std::clamp(Get(m_context.profile, setting::lastBucketMode), 0, mostBucketMode);
}

bool CPaletteOperations::SaveColors() const {
    return Save(m_context.model.palette);
}

bool CPaletteOperations::LoadColors() {
    CSceneModel& model = m_context.model;
    if (!m_context.Require(model.sceneOpen, "Internal Error: Scene is not open in LoadColors") ||
        !m_context.Require(!model.folderName.empty(), "Internal error : folder not open for LoadColors"))
        return false;
    const Path file = model.Paths().PaletteFile(model.folderName);
    const bool loaded = m_context.Report(LoadPalette(file, model.palette));
    // Not the colours of the folder before, which would soon be saved here.
    if (!loaded && FileExists(file))
        model.palette = SalvagePalette(file);
    // The foreground stays, whatever stands at its entry's place in this palette.
    CPaintChoices& paint = model.paint;
    if (!model.palette.Contains(paint.foregroundEntry) ||
        model.palette.At(paint.foregroundEntry).color != paint.foreground)
        paint.foregroundEntry = noEntry;
    return loaded;
}

void CPaletteOperations::ClearPalette() {
    CSceneModel& model = m_context.model;
    model.palette = CPalette::Default();
    model.paint.foreground = model.palette.At(0).color;
    model.paint.foregroundEntry = 0;
    model.paint.background = model.palette.At(1).color;
}

bool CPaletteOperations::Save(const CPalette& palette) const {
    const CSceneModel& model = m_context.model;
    return m_context.Require(model.sceneOpen, "Internal Error: Scene is not open in SaveColors") &&
           m_context.Require(!model.folderName.empty(), "Internal error : folder not open for SaveColors") &&
           SetDamagedFileAside(model.Paths().PaletteFile(model.folderName)) &&
           m_context.Report(SavePalette(model.Paths().PaletteFile(model.folderName), palette));
}

bool CPaletteOperations::SetDamagedFileAside(const Path& file) const {
    CPalette palette;
    if (!FileExists(file) || LoadPalette(file, palette))
        return true;
    const Path kept = FreeNameFor(file);
    if (!m_context.Require(MoveFile(file, kept), "Problem opening the color data file for writing"))
        return false;
    m_context.Show("The damaged color data file is kept as " + Utf8Of(kept.filename()));
    return true;
}

CColorRequest CPaletteOperations::Request(const CColorValues& initial) const {
    return {initial, [this](const CColorValues& values) { return m_context.Report(CheckFreeText(values.name)); }};
}

bool CPaletteOperations::Adopt(const std::string& deed, CPalette changed, int foregroundEntry) {
    CSceneModel& model = m_context.model;
    CSceneEdit edit(m_context, deed, UpdateHint::Palette);
    if (model.HasFolder())
        edit.KeepFile(model.Paths().PaletteFile(model.folderName));
    if (!Save(changed)) {
        edit.CallOff();
        return false;
    }
    model.palette = std::move(changed);
    model.paint.foregroundEntry = foregroundEntry;
    return true;
}

} // namespace velmor
