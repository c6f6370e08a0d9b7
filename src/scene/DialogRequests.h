#pragma once

#include "image/Color.h"
#include "image/DisplayBitmap.h"
#include "image/Geometry.h"
#include "image/Palette.h"
#include "image/clean/Cleanup.h"
#include "image/paint/Recolor.h"
#include "render/Compressors.h"
#include "render/FlipbookSettings.h"
#include "render/RenderSetup.h"
#include "scene/Dialogs.h"
#include "scene/DropType.h"
#include "scene/FillChoices.h"
#include "scene/PenSettings.h"
#include "scene/SceneSettings.h"
#include "scene/Sequence.h"
#include "scene/history/HistoryEntry.h"
#include "scene/paper/OnionSettings.h"
#include "xsheet/CellForms.h"
#include "xsheet/Dialogue.h"
#include "xsheet/Inbetween.h"
#include "xsheet/SheetNote.h"
#include "xsheet/exchange/ExchangeSheet.h"
#include "xsheet/exchange/SheetImport.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace velmor {

// What a dialog is handed, with the type of its answer: nothing, unless said otherwise, when it is cancelled.
// `accept` is called with the values when the user confirms: it shows whatever is wrong with them, or asks whether
// to overwrite, and false keeps the dialog open. An empty `accept` takes all.

template<class Values>
using AcceptRule = std::function<bool(const Values&)>;

struct CSceneSettingsRequest {
    using Answer = std::optional<CSceneSettings>;

    bool newScene = true; ///< "New Scene"; otherwise "Scene Settings" with the name read-only
    CSceneSettings initial;
    AcceptRule<CSceneSettings> accept;
};

/// "Select Scene to Open".
struct COpenSceneRequest {
    using Answer = std::optional<std::string>;

    std::vector<std::string> scenes;
};

/// Global Settings.
struct CDatabaseFolderRequest {
    using Answer = std::optional<std::string>;

    std::string current;
};

enum class NameKind { Folder, Cel, Picture, Sound, Level };

struct CNameRequest {
    using Answer = std::optional<std::string>;

    NameKind kind = NameKind::Cel;
    std::string initial;
    AcceptRule<std::string> accept;
};

struct CNewCelValues {
    std::string name;
    CSize size;
};

struct CNewCelRequest {
    using Answer = std::optional<CNewCelValues>;

    CNewCelValues initial;
    AcceptRule<CNewCelValues> accept;
};

struct CLevelRequest {
    using Answer = std::optional<int>;

    std::string prompt;
    std::vector<std::string> levelNames; ///< level 0 first
};

struct CSwapLevelsRequest {
    using Answer = std::optional<std::pair<int, int>>;

    std::vector<std::string> levelNames; ///< level 0 first
};

struct CFrameCountRequest {
    using Answer = std::optional<int>;

    std::string prompt;
    int initial = 1;
    AcceptRule<int> accept;
    std::string title = "How many frames ?";
    /// Called with each number that is entered, the first one included; nothing for one that cannot be read.
    std::function<void(std::optional<int>)> show = {};
};

/// Which cell a dialog edits, as it is shown: frame from 1.
struct CCellIdentity {
    std::string name;
    std::string folder;
    std::string level;
    int frame = 1;
};

struct CCellDataRequest {
    using Answer = std::optional<CCellDataForm>;

    CCellIdentity cell;
    CCellDataForm initial;
    AcceptRule<CCellDataForm> accept;
    std::function<void(const CCellDataForm&)> show = {}; ///< called at each change; the caller takes it back
};

struct CBlurRequest {
    using Answer = std::optional<CBlurForm>;

    CCellIdentity cell;
    CBlurForm initial;
    AcceptRule<CBlurForm> accept;
    std::function<void(const CBlurForm&)> show = {}; ///< as above
};

struct CTransparencyRequest {
    using Answer = std::optional<double>;

    CCellIdentity cell;
    double initial = 0;
    AcceptRule<double> accept;
    std::function<void(double)> show = {}; ///< as above
};

struct CCameraDataRequest {
    using Answer = std::optional<CCameraForm>;

    int frame = 1; ///< from 1
    CCameraForm initial;
};

/// Chosen source and type of an inbetween dialog, as indices of its radio groups.
/// The note at a cell or a frame.
struct CNoteRequest {
    using Answer = std::optional<CSheetNote>;

    std::string place;   ///< "Fox, frame 12"
    bool hasMark = true; ///< frames have none
    CSheetNote initial;
    AcceptRule<CSheetNote> accept;
};

struct CListedNote {
    std::string place;
    CSheetNote note;
};

/// All that is noted in the sheet; the answer is the one to go to.
struct CNoteListRequest {
    using Answer = std::optional<std::size_t>;

    std::vector<CListedNote> notes;
    std::size_t current = 0;
};

struct CInbetweenChoice {
    int source = 0;
    int type = 0;
    int hold = 1;          ///< frames that each value stands, 1 to mostInbetweenHold
    CPaceCurve curve = {}; ///< where the type is the drawn one
};

/// How an inbetween dialog was closed; the choices are remembered either way.
struct CInbetweenAnswer {
    bool confirmed = false;
    CInbetweenChoice choice;
};

struct CInbetweenRequest {
    using Answer = CInbetweenAnswer;

    bool camera = false;
    std::string levelName; ///< empty for the camera
    int firstFrame = 1;    ///< from 1
    int lastFrame = 1;
    CInbetweenChoice initial;
};

/// "Motion Path Setup": 0 all levels, 1 movement-selected levels, 2 none.
struct CMotionPathRequest {
    using Answer = std::optional<int>;

    int current = 0;
};

enum class RecoveryAnswer {
    Later, ///< nothing is touched, and it is asked again at the next opening; also when it is cancelled
    Recover,
    Discard
};

/// Work was found that was not saved when the program ended.
struct CRecoveryRequest {
    using Answer = RecoveryAnswer;

    std::string scene;
    int changes = 0;
    std::int64_t firstTime = 0; ///< of the changes; milliseconds since 1970, UTC
    std::int64_t lastTime = 0;
    CHistoryPicture picture; ///< of the last one
    bool fits = true;        ///< otherwise it cannot be recovered, for this reason
    std::string reason;
    std::function<void()> look; ///< opens the list of the steps; the question stays
};

/// The list of the steps of a scene.
struct CHistoryRequest {
    std::string title;
    std::function<std::vector<CHistoryEntry>()> entries; ///< oldest first
    /// The picture of an entry that came without one, asked for when its line is seen.
    std::function<CHistoryPicture(std::int64_t id)> pictureOf;
    std::function<void(std::int64_t id)> goTo;      ///< makes an entry the last one that is done; 0: none is
    std::function<void(std::int64_t id)> bringBack; ///< what it has deleted or overwritten
    bool isReadOnly = false;                        ///< to look at only: there is nothing to go to
};

struct CLineCheckRequest {
    int frameCount = 1;
    int initial = 1;                    ///< frame from 1
    std::function<void(int)> showFrame; ///< called with the frame, from 1, at each move of the slider
};

struct CColorValues {
    std::string name = "New Col";
    CColor color{128, 128, 128, 255};
    bool repaints = false; ///< what is painted with the colour before
};

struct CColorRequest {
    using Answer = std::optional<CColorValues>;

    CColorValues initial;
    AcceptRule<CColorValues> accept;
    std::string repaintText = {}; ///< of the check box for repainting; empty for none
};

/// "Fill Settings". The gap and what goes under lines are held to their ranges.
struct CFillSettingsRequest {
    using Answer = std::optional<CFillChoices>;

    CFillChoices initial;
};

/// Where "Replace Color" looks.
enum class RecolorWhere {
    Edited, ///< the image under edit
    Chosen, ///< the assets that are chosen in the list
    All     ///< the whole folder, or all pictures
};

struct CReplaceColorValues {
    CRecoloring recoloring; ///< a tolerance of -1 could not be read
    RecolorWhere where = RecolorWhere::Edited;
};

/// "Replace Color".
struct CReplaceColorRequest {
    using Answer = std::optional<CReplaceColorValues>;

    CReplaceColorValues initial;
    std::vector<CNamedColor> colors; ///< to choose from: those of the image under edit, the most frequent first
    bool hasEdited = false;          ///< there is an image under edit
    int chosen = 0;                  ///< assets that are chosen
    int all = 0;
    /// How many pixels of the image under edit would be found.
    std::function<std::int64_t(const CRecoloring&)> count;
    AcceptRule<CReplaceColorValues> accept;
};

/// The choices of the rotate dialog, in its order.
enum class RotationKind { Clockwise90, CounterClockwise90, HalfTurn, Free };

struct CRotationValues {
    RotationKind kind = RotationKind::Clockwise90;
    double freeDegrees = 0; ///< of a free rotation, counter-clockwise
};

struct CRotationRequest {
    using Answer = std::optional<CRotationValues>;
};

enum class FlipDirection { Horizontal, Vertical };

struct CFlipRequest {
    using Answer = std::optional<FlipDirection>;
};

struct CColorKeyValues {
    CColor color;
    int tolerance = 5; ///< 0 to 255
    int process = 0;   ///< 0 add, 1 subtract, 2 replace
    int underKey = 0;  ///< 0 keep, 1 black, 2 white
};

struct CColorKeyRequest {
    using Answer = std::optional<CColorKeyValues>;

    CColorKeyValues initial;
    AcceptRule<CColorKeyValues> accept;
};

/// Import Settings: the grey threshold, 0 to 255.
struct CImportSettingsRequest {
    using Answer = std::optional<int>;

    int threshold = 128;
};

/// Where on the screen the assets were dropped, and the choices, which are remembered as they are made.
struct CDropTypeRequest {
    /// True for "Drop".
    using Answer = bool;

    CPoint screenPoint;
    CDropType& choices;
};

struct CGridSettingsRequest {
    using Answer = std::optional<CGridSettings>;

    CGridSettings initial;
    AcceptRule<CGridSettings> accept;
};

/// "Pen Settings".
struct CPenSettingsRequest {
    using Answer = std::optional<CPenSettings>;

    CPenSettings initial;
    AcceptRule<CPenSettings> accept;
};

/// How the flipbook dialog was closed; step, scaling, quality and antialias are remembered either way.
struct CFlipbookAnswer {
    bool confirmed = false;
    CFlipbookSettings settings;
};

struct COnionSkinRequest {
    using Answer = std::optional<COnionSettings>;

    COnionSettings initial;
    std::function<void(const COnionSettings&)> show; ///< called at each change; the caller takes it back
};

struct CFlipbookRequest {
    using Answer = CFlipbookAnswer;

    std::vector<std::string> levelNames; ///< level 0 first
    CFlipbookSettings initial;
    AcceptRule<CFlipbookSettings> accept;
    int frameCount = 1; ///< of the xsheet
};

struct CRenderSetupRequest {
    using Answer = std::optional<CRenderSetup>;

    std::vector<std::string> levelNames; ///< level 0 first
    int frameCount = 1;
    CSize scene; ///< its frame, pixels
    CRenderSetup initial;
    /// Asks for the compressor of an AVI, starting from the current one; nothing when cancelled.
    std::function<std::optional<std::string>(const std::string& current)> chooseCompressor;
    AcceptRule<CRenderSetup> accept;
};

/// What the final output has become.
struct CRenderedRequest {
    Path file; ///< the movie, or the first of the pictures
    bool isMovie = false;
    int frameCount = 0;
    std::function<void()> play; ///< in our own player; empty where that does not play it
};

struct CCompressorRequest {
    /// The name of the compressor that was chosen.
    using Answer = std::optional<std::string>;

    std::vector<CCompressor> compressors;
    std::string initial; ///< name of one of them
};

enum class Appearance { System, Light, Dark };

struct CAppearanceRequest {
    using Answer = std::optional<Appearance>;

    Appearance initial = Appearance::System;
    std::function<void(Appearance)> show; ///< called at each choice, and with the initial one when it is cancelled
};

/// What an xsheet loses on its way to other programs, and in which format it goes.
struct CSheetExportRequest {
    using Answer = std::optional<ExchangeFormat>;

    ExchangeFormat initial = ExchangeFormat::Xdts;
    int levelCount = 1;
    int frameCount = 1;
    int soundCount = 0;
    std::vector<std::string> losses; ///< a line each
};

/// What a sheet from outside would change, before it does. The answer is the cel folder of levels that nothing
/// else tells of.
struct CSheetImportRequest {
    using Answer = std::optional<std::string>;

    std::string file;                 ///< its name
    std::vector<std::string> folders; ///< of cels
    std::string initial;              ///< one of them, or empty
    std::function<CSheetImport(const std::string& folder)> preview;
};

struct CSequenceRequest {
    using Answer = std::optional<CSequence>;

    CSequence initial;
    std::vector<std::string> folders;    ///< of cels
    std::vector<std::string> levelNames; ///< level 0 first
    /// A file as it would be imported.
    std::function<CImportedImage(const CSequence& sequence, const Path& file)> read;
    /// Whether there is an asset of a name already.
    std::function<bool(const CSequence& sequence, const std::string& name)> exists;
    /// What exposing would do; empty for nothing.
    std::function<std::string(const CSequence& sequence)> exposure;
    AcceptRule<CSequence> accept;
};

struct CCleanupValues {
    CCleanup cleanup;
    bool all = false;      ///< every drawing there is, instead of those that are chosen
    std::string reference; ///< the drawing on whose pegs the others are put; empty: level, in the middle
};

/// A drawing as it is and as it would be.
struct CCleanupPreview {
    CStatus status; ///< why it cannot be read or cleaned up
    CCelImg before;
    CCelImg after;
    CCleanedUp done;
};

/// Clean up cels or pictures.
struct CCleanupRequest {
    using Answer = std::optional<CCleanupValues>;

    SourceMode kind = SourceMode::Cels;
    std::vector<std::string> chosen; ///< names, maybe none
    std::vector<std::string> all;
    CCleanupValues initial;
    std::function<CCleanupPreview(const CCleanupValues& values, const std::string& name)> preview;
    std::function<CStatus(const CCleanupValues& values, const std::string& name, CPegs& pegs)> findPegs;
    AcceptRule<CCleanupValues> accept;
};

/// What of a placed sound is heard, as it is entered.
struct CSoundShape {
    double trimIn = 0;  ///< frames left out at its beginning
    double trimOut = 0; ///< and at its end
    double level = 0;   ///< decibels
};

/// Trim and level of a sound of the xsheet.
struct CSoundShapeRequest {
    using Answer = std::optional<CSoundShape>;

    std::string sound;
    int frame = 1;     ///< where it starts, from 1
    double frames = 0; ///< that all of it lasts
    CSoundShape initial;
    AcceptRule<CSoundShape> accept;
};

/// What is spoken, and over which frames; without a text nothing is.
struct CDialogueRequest {
    using Answer = std::optional<CSpokenLine>;

    CSpokenLine initial;
    std::vector<std::string> speakers; ///< of other lines
    AcceptRule<CSpokenLine> accept;
};

/// How mouths are made of what is spoken.
struct CMouthChoices {
    int level = 0; ///< that they go into
    std::string folder;
    std::string chart; ///< as CMouthChart reads it
    int hold = 1;      ///< frames that a mouth stands at least
};

/// What would become of the level.
struct CMouthPreview {
    CStatus status;                 ///< why nothing can be done
    std::vector<std::string> lines; ///< what shows when
    std::vector<std::string> losses;
    bool changes = false;
};

struct CMouthRequest {
    using Answer = std::optional<CMouthChoices>;

    std::vector<std::string> levelNames;
    std::vector<std::string> folders;
    CMouthChoices initial;
    std::function<std::string(const std::string& folder)> chartOf; ///< the one that was used last with a folder
    std::function<CMouthPreview(const CMouthChoices& choices)> preview;
};

struct CFileRequest {
    std::string title;
    std::string filter; ///< "text|*.ext|text|*.ext||"
    std::string defaultExtension;
    std::string defaultName;
    bool several = false;
    std::size_t firstFilter = 0; ///< the one that is chosen until the user has chosen another
};

struct COpenFilesRequest : CFileRequest {
    using Answer = std::vector<Path>; ///< empty when cancelled
};

struct CSaveFileRequest : CFileRequest {
    using Answer = std::optional<Path>;
};

template<class Request>
struct CDialogOf {
    explicit CDialogOf(const Request& handed) : request(handed) {}

    const Request& request;
    typename Request::Answer answer{};
};

} // namespace velmor
