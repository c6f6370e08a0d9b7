#pragma once

#include "app/cli/ConsoleProgress.h"
#include "app/cli/NumberList.h"
#include "image/clean/Cleanup.h"
#include "platform/files/PngFile.h"

#include <optional>
#include <string>
#include <vector>

namespace velmor {

// What the subcommands are given, and the subcommands. Each returns whether it succeeded and has shown what is
// wrong.

struct CSceneArguments {
    std::string database;
    std::string scene; ///< may be empty where a command does without
};

struct CCheckArguments {
    std::string database;
    std::vector<std::string> scenes; ///< "all" alone, or none: those of the database
    bool report = false;             ///< a line a scene behind its damaged files
};

/// Work that was not saved when the program ended.
struct CRecoverArguments {
    CSceneArguments scene; ///< without one, all of the database
    std::string journals;  ///< folder; empty for the user's own
    bool list = false;     ///< only tell of it
    bool discard = false;  ///< give it up
};

struct CComposeArguments {
    CSceneArguments scene;
    int frame = 1; ///< from 1
    bool antialias = false;
    std::string output;
};

struct CFlipbookArguments {
    CSceneArguments scene;
    std::optional<std::vector<CNumberRange>> levels; ///< all when absent
    std::optional<CNumberRange> frames;
    int step = 1;
    int scaling = 50;
    int quality = 50;
    bool antialias = false;
    int cursor = 1;
    std::string output; ///< empty: "flipbook.avi" in the database
};

/// Of a render: the scene, or several. With `from` the frames are there already and are joined to a movie.
struct CRenderArguments {
    CSceneArguments scene;
    std::vector<std::string> scenes; ///< "all" alone: those of the database; empty: scene.scene
    std::optional<std::vector<CNumberRange>> levels;
    std::optional<std::vector<CNumberRange>> frames;
    int step = 1;
    int scaling = 100;
    bool antialias = false;
    std::string format = "png";
    std::string codec; ///< empty for the default
    int quality = 100; ///< percent
    PngCompression compression = PngCompression::Normal;
    bool transparent = false;
    bool keepWhole = false; ///< numbered frames that are there and whole stay
    bool forAvi = false;    ///< numbered frames of the size of an AVI's
    bool eachLevel = false; ///< a sequence for each level instead of one of all
    bool dryRun = false;
    LogFormat log = LogFormat::Text;
    std::string from; ///< directory and name of the frames to join; empty: they are composed
    std::string fromFormat = "png";
    std::string output;
};

enum class ImportKind { Cel, Picture, Sound };

struct CImportArguments {
    ImportKind kind = ImportKind::Cel;
    CSceneArguments scene;
    std::string folder; ///< of cels
    std::string name;   ///< empty: the next free number of the folder
    std::optional<int> threshold;
    bool convert = false; ///< a sound of another form
    std::vector<std::string> files;
};

/// Numbered files, as cels or pictures, and onto a level.
struct CSequenceArguments {
    CSceneArguments scene;
    std::string folder;   ///< of cels; empty for pictures
    std::string pictures; ///< what the pictures' names begin with; empty for cels
    std::optional<int> threshold;
    int specks = 0;    ///< pixels of what is no line yet
    std::string level; ///< that they are exposed on, made where there is none; empty for none
    int at = 1;        ///< frame, from 1
    int hold = 1;      ///< frames that each is exposed
    bool holdsGaps = false;
    std::vector<std::string> files;
};

/// An xsheet to or from the file of another program.
struct CSheetArguments {
    CSceneArguments scene;
    std::string file;
    std::string format; ///< "xdts" or "csv"; empty: by the file's extension, XDTS for any but ".csv"
    bool isImport = false;
    bool dryRun = false; ///< of an import: say what would change
    std::string folder;  ///< of an import: cel folder of levels that nothing else tells it of
};

/// What is spoken, to or from a text, or as mouths on a level.
struct CDialogueArguments {
    CSceneArguments scene;
    std::string file;   ///< the text, or of mouths their chart
    std::string level;  ///< that mouths go into, by its name
    std::string folder; ///< of their drawings
    int hold = 1;       ///< frames that a mouth stands at least
    bool dryRun = false;
};

/// What is done to the cels of a folder.
struct CCelsArguments {
    CSceneArguments scene;
    std::string folder;
    std::vector<std::string> cels; ///< names; empty for all of the folder
};

struct CRecolorArguments {
    CCelsArguments cels;
    std::string from; ///< six hexadecimal digits
    std::string to;
    int tolerance = 0;
    bool lines = false; ///< only lines
    bool paint = false; ///< only paint
};

/// Despeckle, thicken, thin, register, or several of them.
struct CCleanArguments {
    CCelsArguments cels;
    CCleanup cleanup;
    std::string reference; ///< name of a cel; empty: level, in the middle
    bool dryRun = false;   ///< only look for peg holes
    bool json = false;
};

struct CPrintArguments {
    CSceneArguments scene;
    std::string paper = "a4";
    bool dialogue = false; ///< print what is spoken as well
    std::string output;    ///< PDF
};

[[nodiscard]] bool RunScenes(const CSceneArguments& arguments);
[[nodiscard]] bool RunInfo(const CSceneArguments& arguments, bool json);
[[nodiscard]] bool RunCompose(const CComposeArguments& arguments);
[[nodiscard]] bool RunFlipbook(const CFlipbookArguments& arguments);
/// Returns the exit status.
[[nodiscard]] int RunRender(const CRenderArguments& arguments);
[[nodiscard]] bool RunImport(const CImportArguments& arguments);
[[nodiscard]] bool RunCheck(const CCheckArguments& arguments);
[[nodiscard]] bool RunRecover(const CRecoverArguments& arguments);
[[nodiscard]] bool RunSequenceImport(const CSequenceArguments& arguments);
/// Says what became of each cel.
[[nodiscard]] bool RunClean(const CCleanArguments& arguments);
[[nodiscard]] bool RunRecolor(const CRecolorArguments& arguments);
/// Has another program do it, which has Qt.
[[nodiscard]] bool RunPrint(const CPrintArguments& arguments);
[[nodiscard]] bool RunSheet(const CSheetArguments& arguments);
[[nodiscard]] bool RunDialogueImport(const CDialogueArguments& arguments);
[[nodiscard]] bool RunDialogueExport(const CDialogueArguments& arguments);
[[nodiscard]] bool RunMouths(const CDialogueArguments& arguments);
/// Makes the scene "Demo" in the database folder, which is made when it is missing. Refuses when there is one
/// already.
[[nodiscard]] bool RunDemo(const CSceneArguments& arguments);

} // namespace velmor
