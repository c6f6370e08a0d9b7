#include "scene/PaletteOperations.h"

#include "image/PaletteNames.h"
#include "image/import/GimpPalette.h"
#include "image/paint/GapFill.h"
#include "platform/files/DamagedFile.h"
#include "scene/DialogRequests.h"
#include "scene/SceneEdit.h"
#include "scene/Settings.h"

#include <algorithm>
#include <array>
#include <utility>

namespace velmor {

namespace {

constexpr int mostBrush = 5;
constexpr int noBrush = -1;
constexpr int noEntry = -1;
constexpr int mostPen = 3;
constexpr int mostBucketMode = 2;
constexpr std::uint64_t mostImportedBytes = 1 << 24;
constexpr const char* exchangeFilter = "GIMP Palettes (*.gpl)|*.gpl|All Files (*.*)|*.*||";

void ReplaceColor(CColor& color, ColorRef value) {
    color = {BlueOf(value), GreenOf(value), RedOf(value), color.alpha};
}

CFillChoices InRange(CFillChoices fill) {
    fill.gap = std::clamp(fill.gap, 0, mostFillGap);
    fill.underLine = std::clamp(fill.underLine, 0, mostUnderLine);
    return fill;
}

int EntryOf(const CPalette& palette, CColor color) {
    for (int i = 0; i < palette.Count(); ++i)
        if (palette.At(i).color == color)
            return i;
    return noEntry;
}

// Where an entry comes to stand when another one is moved.
int AfterMove(int entry, int from, int to) {
    if (entry == from)
        return to;
    if (from < entry && entry <= to)
        return entry - 1;
    return to <= entry && entry < from ? entry + 1 : entry;
}

bool Holds(const CPalette& palette, const CNamedColor& wanted) {
    for (int i = 0; i < palette.Count(); ++i)
        if (palette.At(i) == wanted)
            return true;
    return false;
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
    const CNamedColor entry = changed.At(index);
    CColorRequest request = Request({entry.name, entry.color});
    if (m_repaint.question)
        request.repaintText = m_repaint.question();
    const std::optional<CColorValues> values = m_context.prompter.Ask(request);
    if (!values)
        return;
    changed.Set(index, {values->color, values->name});
    const int foregroundEntry = m_context.model.paint.foregroundEntry;
    if (!Adopt("Edit Color " + values->name, std::move(changed), foregroundEntry))
        return;
    if (index == foregroundEntry)
        SetFGColor(index);
    if (values->repaints && values->color != entry.color)
        m_repaint.repaint(entry.color, values->color);
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

void CPaletteOperations::SwapColors() {
    CPaintChoices& paint = m_context.model.paint;
    std::swap(paint.foreground, paint.background);
    paint.foregroundEntry = EntryOf(m_context.model.palette, paint.foreground);
    m_context.Update(UpdateHint::Colors);
}

void CPaletteOperations::MoveColor(int from, int to) {
    CPalette changed = m_context.model.palette;
    if (from == to || !changed.Contains(from) || !changed.Contains(to))
        return;
    const CNamedColor moved = changed.At(from);
    for (int i = from; i != to; i += from < to ? 1 : -1)
        changed.Set(i, changed.At(from < to ? i + 1 : i - 1));
    changed.Set(to, moved);
    Adopt("Move Color " + moved.name, std::move(changed),
          AfterMove(m_context.model.paint.foregroundEntry, from, to));
}

void CPaletteOperations::AskAndImportPalette() {
    const std::vector<Path> files =
        m_context.prompter.Ask(COpenFilesRequest{{"Import Palette", exchangeFilter, ".gpl", "", false}});
    if (files.empty())
        return;
    const std::optional<CFileBytes> bytes = ReadWholeFile(files.front(), mostImportedBytes);
    CPalette imported;
    if (!m_context.Require(bytes.has_value(), "Unable to open the palette file for reading") ||
        !m_context.Report(ReadGimpPalette(bytes->Span(), imported)))
        return;
    CPalette changed = m_context.model.palette;
    int left = 0;
    for (int i = 0; i < imported.Count(); ++i)
        if (!Holds(changed, imported.At(i)) && !changed.Add(imported.At(i)))
            ++left;
    if (!m_context.Require(changed != m_context.model.palette, "The palette has all colors of this file already"))
        return;
    if (Adopt("Import Palette", std::move(changed), m_context.model.paint.foregroundEntry) && left > 0)
        m_context.Show("The palette is full: " + std::to_string(left) + " colors of the file are left out");
}

void CPaletteOperations::AskAndExportPalette() {
    const std::string& folder = m_context.model.folderName;
    const CSaveFileRequest request{{"Export Palette", exchangeFilter, ".gpl", folder + ".gpl", false}};
    std::optional<Path> file = m_context.prompter.Ask(request);
    while (file && FileExists(*file) && !m_context.prompter.AskYesNo("File Exists, Do you want to overwrite it ?"))
        file = m_context.prompter.Ask(request);
    if (!file)
        return;
    const std::string text = GimpPaletteText(m_context.model.palette, folder);
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(text.data());
    static_cast<void>(m_context.Require(WriteFileAtomically(*file, {bytes, text.size()}),
                                        "Problem writing file: Disk Full? or ReadOnly?"));
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

void CPaletteOperations::SetFill(const CFillChoices& fill) {
    CFillChoices& now = m_context.model.paint.fill;
    now = InRange(fill);
    Set(m_context.profile, setting::lastFillGap, now.gap);
    Set(m_context.profile, setting::lastFillRefusesLeaks, now.refuseLeaks ? 1 : 0);
    Set(m_context.profile, setting::lastFillUnderLine, now.underLine);
    Set(m_context.profile, setting::lastFillLines, static_cast<int>(now.lines));
    Set(m_context.profile, setting::lastFillOverAreas, now.overAreas ? 1 : 0);
    m_context.Update(UpdateHint::Tools);
}

void CPaletteOperations::EditFillSettings() {
    if (const std::optional<CFillChoices> fill =
            m_context.prompter.Ask(CFillSettingsRequest{m_context.model.paint.fill}))
        SetFill(*fill);
}

void CPaletteOperations::ReadChoices() {
    CPaintChoices& paint = m_context.model.paint;
    paint.brush = std::clamp(Get(m_context.profile, setting::lastBrush), noBrush, mostBrush);
    paint.pen = std::clamp(Get(m_context.profile, setting::lastPen), 0, mostPen);
    paint.bucketMode = std::clamp(Get(m_context.profile, setting::lastBucketMode), 0, mostBucketMode);
    const CProfile& profile = m_context.profile;
    const bool ofVisibleCels = Get(profile, setting::lastFillLines) == static_cast<int>(FillLines::VisibleCels);
    paint.fill = InRange({Get(profile, setting::lastFillGap), Get(profile, setting::lastFillRefusesLeaks) != 0,
                          Get(profile, setting::lastFillUnderLine),
                          ofVisibleCels ? FillLines::VisibleCels : FillLines::ThisCel,
                          Get(profile, setting::lastFillOverAreas) != 0});
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
    LoadNames(PaletteNamesFile(file));
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
    if (!m_context.Require(model.sceneOpen, "Internal Error: Scene is not open in SaveColors") ||
        !m_context.Require(!model.folderName.empty(), "Internal error : folder not open for SaveColors"))
        return false;
    const Path file = model.Paths().PaletteFile(model.folderName);
    const Path names = PaletteNamesFile(file);
    if (!SetDamagedFileAside(file) || !m_context.Report(SavePaletteNames(names, palette)))
        return false;
    if (m_context.Report(SavePalette(file, palette)))
        return true;
    static_cast<void>(SavePaletteNames(names, model.palette)); // the palette is still that one
    return false;
}

void CPaletteOperations::LoadNames(const Path& file) {
    if (!m_context.Report(LoadPaletteNames(file, m_context.model.palette)))
        static_cast<void>(KeepAside(file, "The damaged color names file is kept as ")); // nothing depends on it
}

bool CPaletteOperations::SetDamagedFileAside(const Path& file) const {
    CPalette palette;
    if (!FileExists(file) || LoadPalette(file, palette))
        return true;
    return m_context.Require(KeepAside(file, "The damaged color data file is kept as "),
                             "Problem opening the color data file for writing");
}

bool CPaletteOperations::KeepAside(const Path& file, const char* what) const {
    const Path kept = FreeNameForDamaged(file);
    if (!MoveFile(file, kept))
        return false;
    m_context.Show(what + Utf8Of(kept.filename()));
    return true;
}

CColorRequest CPaletteOperations::Request(const CColorValues& initial) const {
    return {initial, {}};
}

bool CPaletteOperations::Adopt(const std::string& deed, CPalette changed, int foregroundEntry) {
    CSceneModel& model = m_context.model;
    CSceneEdit edit(m_context, deed, UpdateHint::Palette);
    if (model.HasFolder()) {
        const Path file = model.Paths().PaletteFile(model.folderName);
        edit.KeepFiles(std::array{file, PaletteNamesFile(file)});
    }
    if (!Save(changed)) {
        edit.CallOff();
        return false;
    }
    model.palette = std::move(changed);
    model.paint.foregroundEntry = foregroundEntry;
    return true;
}

} // namespace velmor
