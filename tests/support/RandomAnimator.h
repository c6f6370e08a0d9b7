#pragma once

#include "RandomImages.h"
#include "ScriptedPrompter.h"
#include "scene/AssetOperations.h"
#include "scene/AssetTransforms.h"
#include "scene/CameraOperations.h"
#include "scene/CelPainting.h"
#include "scene/CelSelection.h"
#include "scene/CellOperations.h"
#include "scene/ImportOperations.h"
#include "scene/PaletteOperations.h"
#include "scene/SceneHistory.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneModel.h"
#include "scene/SceneSaving.h"
#include "scene/SoundOperations.h"
#include "scene/VelmorltDoc.h"
#include "scene/XSheetCursor.h"
#include "scene/XSheetOperations.h"
#include "scene/exposing/Exposing.h"
#include "scene/exposing/SheetTiming.h"
#include "scene/notes/SheetNotes.h"
#include "scene/paper/DrawingSteps.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>

namespace velmor::testing {

/// All that a user would miss of an open scene: the scene, every image as the editor or its file has it, palettes
/// and sounds by their bytes.
struct CSceneState {
    CScene scene;
    std::map<std::string, std::string> files;

    bool operator==(const CSceneState&) const = default;

    static CSceneState Of(const CSceneModel& model) {
        CSceneState state{model.Scene(), {}};
        // Behind the sheet's end nothing is seen, and a file has nothing.
        for (int frame = state.scene.xsheet.FrameCount(); frame < CFrameNotes::capacity; ++frame) {
            state.scene.frameNotes.Set(frame, {});
            if (!state.scene.camera.At(frame).IsIdenticalTo({}))
                state.scene.camera.MutableAt(frame) = {};
        }
        const Path folder = model.Paths().SceneFolder();
        std::error_code error;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder, error)) {
            const std::string name = entry.path().lexically_relative(folder).generic_string();
            const std::string ending = entry.path().extension().string();
            CCelImg image;
            if (entry.path() == model.celImg.FilePath())
                state.files[name] = PixelsOf(model.celImg);
            else if ((ending == ".bit" || ending == ".rgba") && image.Load(entry.path()))
                state.files[name] = PixelsOf(image);
            else if (entry.is_regular_file() && !name.starts_with(model.sceneName + ".xsheet"))
                state.files[name] = BytesOf(entry.path());
        }
        return state;
    }
    /// What differs, for a message.
    std::string DifferenceTo(const CSceneState& other) const {
        std::string text;
        const auto tell = [&text](bool isSame, const char* part) { text += isSame ? "" : part; };
        tell(scene.geometry == other.scene.geometry, "geometry ");
        tell(scene.xsheet == other.scene.xsheet, "xsheet ");
        tell(scene.camera == other.scene.camera, "camera ");
        tell(scene.sounds == other.scene.sounds, "sounds ");
        tell(scene.dialogue == other.scene.dialogue, "dialogue ");
        tell(scene.frameNotes == other.scene.frameNotes, "notes ");
        tell(scene == other.scene, "scene ");
        for (const auto& [name, bytes] : files)
            if (const auto mine = other.files.find(name); mine == other.files.end() || mine->second != bytes)
                text += name + " ";
        for (const auto& [name, bytes] : other.files)
            text += files.contains(name) ? "" : "+" + name + " ";
        return text;
    }

private:
    static std::string PixelsOf(const CCelImg& image) {
        std::string pixels = std::to_string(image.Width()) + "x";
        pixels.append(image.LineMask().begin(), image.LineMask().end());
        for (const Channel channel : allChannels)
            pixels.append(image.PlaneOf(channel).begin(), image.PlaneOf(channel).end());
        return pixels;
    }
    static std::string BytesOf(const Path& file) {
        std::ifstream stream(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }
};

/// Does whatever can be done to a scene, without sense, through the document.
class CRandomAnimator {
public:
    CRandomAnimator(CVelmorltDoc& doc, CScriptedPrompter& prompter, unsigned seed)
        : m_doc(doc), m_prompter(prompter), m_random(seed) {}

    /// Folders, cels, a picture and a sound to begin with, in the open scene.
    void SetUp() {
        for (const char* folder : {"Fox", "Owl"}) {
            m_prompter.Answer(std::string(folder));
            m_doc.Assets().NewFolder();
            for (int cel = 1; cel <= 3; ++cel)
                NewCel(std::to_string(cel));
        }
        CCelImg picture;
        if (picture.CreatePicture(70, 40, m_doc.Model().Paths().PictureFile("Sky"))) {
            static_cast<void>(CreateFolder(m_doc.Model().Paths().PicturesFolder()));
            static_cast<void>(picture.Save());
        }
        static_cast<void>(m_doc.Sounds().StoreSound("Bell", 22050, std::vector<std::uint8_t>(500, 200)));
    }

    /// One command; deletions of assets only when they are asked for.
    void Act(bool mayDelete) {
        ChoosePlace();
        if (Number(12) == 0)
            return Note();
        const int kinds = mayDelete ? 35 : 33;
        const int kind = Number(kinds);
        if (kind < 12)
            EditSheet(kind);
        else if (kind < 20)
            EditCellsAndCamera(kind);
        else if (kind < 26)
            Paint();
        else
            EditAssets(kind);
        m_prompter.ForgetAnswers();
    }

private:
    int Number(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }

    void NewCel(const std::string& name) {
        m_prompter.Answer(CNewCelValues{name, {60 + Number(20), 70}});
        m_doc.Assets().NewCel();
    }

    void ChoosePlace() {
        const CXSheet& sheet = m_doc.Model().Scene().xsheet;
        const CSheetCell cell{Number(sheet.LevelCount()), Number(sheet.FrameCount())};
        m_doc.Cursor().GoTo(cell);
        m_doc.Cursor().SetSelEndY(std::min(cell.frame + Number(6), sheet.FrameCount() - 1));
    }

    std::vector<std::string> AssetsOf(SourceMode kind) {
        m_doc.Scenes().SetSourceMode(kind);
        std::vector<std::string> names;
        const CSceneModel& model = m_doc.Model();
        for (const CListedAsset& asset : ListAssets(model.Paths(), kind, model.folderName))
            names.push_back(asset.title);
        return names;
    }
    /// Selects an asset; false when there is none.
    bool SelectAsset(SourceMode kind) {
        const std::vector<std::string> names = AssetsOf(kind);
        if (names.empty())
            return false;
        m_doc.Scenes().SetSourceSelection(
            {names[static_cast<std::size_t>(Number(static_cast<int>(names.size())))]});
        return true;
    }
    void SelectAnyFolder() { m_doc.Scenes().SetFolderName(Number(2) == 0 ? "Fox" : "Owl"); }

    void EditSheet(int kind) {
        CXSheetOperations& sheet = m_doc.XSheet();
        const CSceneModel& model = m_doc.Model();
        const int level = Number(model.Scene().xsheet.LevelCount());
        switch (kind) {
        case 0:
            m_prompter.Answer("Level " + std::to_string(Number(50)));
            return sheet.AddLevel();
        case 1:
            m_prompter.Answer(level);
            return sheet.DeleteLevel();
        case 2:
            m_prompter.Answer(level);
            m_prompter.Answer("Name " + std::to_string(Number(50)));
            return sheet.RenameLevel();
        case 3:
            if (Number(2) == 0)
                return sheet.MoveLevels(level, level, Number(model.Scene().xsheet.LevelCount() + 1));
            m_prompter.Answer(std::pair(0, level));
            return sheet.SwapLevels();
        case 4:
            m_prompter.Answer(1 + Number(9));
            return Number(2) == 0 ? sheet.AddFrames() : sheet.DeleteFrames();
        case 5:
            return sheet.Cut();
        case 6:
            sheet.Copy();
            ChoosePlace();
            return sheet.Paste();
        case 7:
            return Number(4) == 0 ? sheet.Reverse() : EditTiming();
        case 8:
            return Number(2) == 0 ? sheet.Condense() : sheet.Expand();
        case 9:
            if (SelectAsset(SourceMode::Sounds))
                m_doc.Sounds().DropSound(model.cursorFrame);
            return;
        case 10:
            return m_doc.Sounds().RemoveSelectedSounds();
        default:
            if (SelectAsset(Number(4) == 0 ? SourceMode::Pictures : SourceMode::Cels))
                sheet.DropCels(model.cursorLevel, model.cursorFrame, 1 + Number(4), Number(2) == 0);
        }
    }

    void EditTiming() {
        CSheetTiming& timing = m_doc.Timing();
        const CSceneModel& model = m_doc.Model();
        timing.SetWhatFollows(Number(2) == 0 ? Following::Push : Following::Eat);
        m_doc.Drawings().SetHold(1 + Number(3));
        m_prompter.Answer(1 + Number(6));
        switch (Number(10)) {
        case 0:
            return timing.ExposeOn(1 + Number(4));
        case 1:
            return timing.Swing();
        case 2:
            return timing.Random();
        case 3:
            return timing.AskAndShift();
        case 4:
            return timing.AskAndRoll();
        case 5:
            return timing.AskAndStretch();
        case 6:
            return timing.AskAndInsertTime();
        case 7:
            return timing.AskAndDeleteTime();
        case 8:
            return timing.Do({Number(2) == 0 ? SheetEditKind::Repeat : SheetEditKind::HoldOn, model.selection,
                              6 + Number(9), Following::Eat});
        default:
            const auto kind = static_cast<CTypedExposure::Kind>(1 + Number(5));
            static_cast<void>(
                m_doc.Exposing().Enter({kind, std::to_string(1 + Number(3)), 1 + Number(4)}, Number(2)));
        }
    }

    void Note() {
        CSheetNotes& notes = m_doc.Notes();
        const CSceneModel& model = m_doc.Model();
        switch (Number(5)) {
        case 0:
            return notes.Mark(static_cast<SheetMark>(Number(5)));
        case 1:
            return notes.SetColor(static_cast<NoteColor>(Number(7)));
        case 2:
            return notes.Clear();
        case 3:
            return notes.SetAt(model.CursorCell(), {SheetMark::Key, {}, "Say\n\t\\ " + std::to_string(Number(50))});
        default:
            return notes.SetAtFrame(model.cursorFrame,
                                    {{}, NoteColor::Red, std::string(static_cast<std::size_t>(Number(3)), 'x')});
        }
    }

    void EditCellsAndCamera(int kind) {
        CCellOperations& cells = m_doc.Cells();
        const CSceneModel& model = m_doc.Model();
        switch (kind) {
        case 12:
            m_prompter.Answer(1.0 * Number(100));
            return cells.OnXSheetDoTrans(model.cursorLevel);
        case 13:
            m_prompter.Answer(CBlurForm{1.0 + Number(20), 1.0 + Number(20), false});
            return cells.OnXSheetDoBlur(model.cursorLevel);
        case 14:
            m_prompter.Answer(CInbetweenAnswer{true, {0, Number(4)}});
            return Number(2) == 0 ? cells.Inbetween() : m_doc.Camera().Inbetween();
        case 15:
            m_prompter.Answer(CCameraForm{1.0 * Number(90), 5, 100.0 + Number(50), {}});
            return m_doc.Camera().EditCameraData();
        case 16: {
            CSceneSettings settings;
            settings.name = model.sceneName;
            settings.length = 20 + Number(20);
            settings.geometry = {64 + Number(9), 48, 24, static_cast<ColorRef>(Number(9000))};
            settings.preset = customPreset;
            m_prompter.Answer(settings);
            return m_doc.Scenes().EditSceneSettings();
        }
        default:
            m_doc.Camera().SetMode(static_cast<InputMode>(Number(3)));
            m_doc.Cursor().SetLevelCanMove(model.cursorLevel);
            m_doc.Camera().StartCamInput();
            for (int move = Number(4); move > 0; --move)
                m_doc.Camera().ProcessCamInput(Number(9), Number(9) - 4);
            m_doc.Camera().EndCamInput(0, 2 * Number(2)); // single pixels would become one step with those before
        }
    }

    void Paint() {
        if (m_doc.Model().celImg.GetLoadState() == LoadState::Nothing || Number(8) == 0) {
            SelectAnyFolder();
            if (SelectAsset(Number(5) == 0 ? SourceMode::Pictures : SourceMode::Cels))
                m_doc.Assets().EditCel(m_doc.Model().sourceSelection.front());
        }
        if (Number(4) == 0)
            return Select();
        m_doc.Palette().SetFGColorValue(static_cast<ColorRef>(m_random() & 0xffffff));
        m_doc.Palette().SetBrush(Number(7) - 1);
        m_doc.Palette().SetPen(Number(4));
        m_doc.Palette().SetBucketMode(Number(3));
        const auto anywhere = [this] { return CPoint{Number(80) - 5, Number(80) - 5}; };
        if (!m_doc.Painting().Begin(static_cast<CelTool>(Number(4)), anywhere()))
            return;
        for (int move = Number(5); move > 0; --move)
            m_doc.Painting().Move(anywhere());
        m_doc.Painting().End(anywhere());
    }

    /// One step with what is selected, placed several times and put down, or none.
    void Select() {
        CCelSelection& selection = m_doc.Selection();
        selection.SetWhat(static_cast<SelectWhat>(Number(3)));
        const CPoint corner{Number(70) - 5, Number(70) - 5};
        if (Number(3) == 0)
            selection.SelectColor(corner, SelectMode::Replace);
        else
            selection.SelectRectangle({corner.x, corner.y, corner.x + 5 + Number(50), corner.y + 5 + Number(50)},
                                      static_cast<SelectMode>(Number(3)));
        if (Number(4) == 0) {
            static_cast<void>(selection.Delete());
            return;
        }
        if (std::optional<CPiece> piece = selection.Copied(); piece && Number(4) == 0)
            static_cast<void>(selection.Paste(std::move(*piece)));
        for (int placement = 1 + Number(3); placement > 0; --placement) {
            static_cast<void>(selection.Place({{Number(40) - 20, Number(40) - 20},
                                               Number(2) * 45.0 * Number(8),
                                               0.5 + Number(4) * 0.5,
                                               Number(2) == 0 ? 1.0 : -1.0}));
            static_cast<void>(selection.MoveBy(Number(3) - 1, Number(3) - 1));
        }
        selection.Drop();
    }

    void EditAssets(int kind) {
        SelectAnyFolder();
        const SourceMode shown = Number(4) == 0 ? SourceMode::Pictures : SourceMode::Cels;
        switch (kind) {
        case 26:
            AssetsOf(SourceMode::Cels);
            return NewCel(std::to_string(1 + Number(6)));
        case 27:
            if (SelectAsset(Number(5) == 0 ? SourceMode::Sounds : shown)) {
                m_prompter.Answer(std::to_string(1 + Number(6)));
                m_doc.Assets().RenameSelected();
            }
            return;
        case 28:
            if (SelectAsset(shown)) {
                m_prompter.Answer(std::to_string(7 + Number(3)));
                m_doc.Assets().DuplicateSelected();
            }
            return;
        case 29:
            if (SelectAsset(shown)) {
                m_prompter.Answer(CRotationValues{RotationKind::Clockwise90, 0});
                m_doc.Transforms().RotateSelected();
            }
            return;
        case 30:
            if (SelectAsset(shown)) {
                m_prompter.Answer(Number(2) == 0 ? FlipDirection::Horizontal : FlipDirection::Vertical);
                m_doc.Transforms().FlipSelected();
            }
            return;
        case 31:
            m_prompter.Answer(CColorValues{"Color " + std::to_string(Number(20)), RandomColor(m_random)});
            return Number(2) == 0 ? m_doc.Palette().AskAndAddColor() : m_doc.Palette().EditColor(0);
        case 32:
            static_cast<void>(m_doc.Saving().SaveAll());
            return;
        default:
            if (SelectAsset(Number(6) == 0 ? SourceMode::Sounds : shown))
                m_doc.Assets().DeleteSelected();
        }
    }

    CVelmorltDoc& m_doc;
    CScriptedPrompter& m_prompter;
    std::mt19937 m_random;
};

} // namespace velmor::testing
