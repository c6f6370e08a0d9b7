#include "xsheet/SheetNotesFile.h"

#include "xsheet/NoteLine.h"

#include <algorithm>
#include <charconv>
#include <exception>
#include <iterator>
#include <string>
#include <string_view>

namespace velmor {

namespace {

constexpr std::string_view signature = "VELMOR SHEET NOTES 1";
constexpr std::string_view xsheetKind = "xsheet";
constexpr std::string_view markKind = "mark";
constexpr std::string_view commentKind = "comment";
constexpr std::string_view frameMarkKind = "frame mark";
constexpr std::string_view frameCommentKind = "frame comment";
constexpr std::string_view soundKind = "sound";
constexpr std::string_view dialogueKind = "dialogue";

constexpr std::uint64_t mostBytes = std::uint64_t{1} << 28;
/// Of lines that are not known: whoever edits keeps them in memory.
constexpr std::size_t mostUnknownBytes = std::size_t{1} << 24;
constexpr std::size_t hashDigits = 16;

constexpr std::string_view markWords[] = {"none", "key", "breakdown", "inbetween", "stop-hold"};
constexpr std::string_view colorWords[] = {"none", "red", "orange", "yellow", "green", "blue", "violet"};
static_assert(std::size(markWords) == static_cast<std::size_t>(lastMark) + 1);
static_assert(std::size(colorWords) == static_cast<std::size_t>(lastNoteColor) + 1);

CStatus Damaged() {
    return CStatus::Failure("Invalid or corrupted sheet notes file");
}

bool IsMarked(const CSheetNote& note) {
    return note.mark != SheetMark::None || note.color != NoteColor::None;
}

// Frames and levels count from 1, as users see them.

template<class Visit>
void ForEachNotedCell(const CXSheet& xsheet, Visit visit) {
    for (int level = 0; level < xsheet.LevelCount(); ++level)
        for (int frame = 0; frame < xsheet.FrameCount(); ++frame)
            if (const CSheetNote& note = xsheet.Cell(level, frame).Note(); !note.IsEmpty())
                visit(level, frame, note);
}

template<class Visit>
void ForEachNotedFrame(const CScene& scene, Visit visit) {
    for (int frame = 0; frame < CFrameNotes::capacity; ++frame) // behind the end as well: frames come back
        if (const CSheetNote& note = scene.frameNotes.At(frame); !note.IsEmpty())
            visit(frame, note);
}

void WriteNotes(CNoteLines& lines, const CScene& scene) {
    ForEachNotedCell(scene.xsheet, [&lines](int level, int frame, const CSheetNote& note) {
        if (IsMarked(note))
            lines.Line(markKind, level + 1, frame + 1, WordOf(note.mark), WordOf(note.color));
        if (!note.comment.empty())
            lines.Line(commentKind, level + 1, frame + 1, note.comment);
    });
    ForEachNotedFrame(scene, [&lines](int frame, const CSheetNote& note) {
        if (IsMarked(note))
            lines.Line(frameMarkKind, frame + 1, WordOf(note.mark), WordOf(note.color));
        if (!note.comment.empty())
            lines.Line(frameCommentKind, frame + 1, note.comment);
    });
    for (const CSoundPlacement& sound : scene.sounds.All())
        if (!sound.IsPlain())
            lines.Line(soundKind, sound.frame + 1, sound.name, sound.trimIn, sound.trimOut, sound.level);
    for (const CSpokenLine& line : scene.dialogue.Lines())
        lines.Line(dialogueKind, line.firstFrame + 1, line.lastFrame + 1, line.speaker, line.text);
    lines.Append(*scene.unknownNotes);
}

/// What is read goes into the scene line by line, and what cannot in the end.
struct CReadNotes {
    CScene scene;
    std::vector<CSoundPlacement> sounds;
    int soundLines = 0;
    std::vector<CSpokenLine> lines;
    std::string unknown;
};

// A word that a newer version may have added is none here.
void ReadMark(CNoteFields& fields, CSheetNote& note) {
    const auto indexOf = [](std::span<const std::string_view> words, std::string_view word) {
        const auto found = std::ranges::find(words, word);
        return found != words.end() ? found - words.begin() : 0;
    };
    note.mark = static_cast<SheetMark>(indexOf(markWords, fields.TakeWord()));
    note.color = static_cast<NoteColor>(indexOf(colorWords, fields.TakeWord()));
}

void ReadComment(CNoteFields& fields, CSheetNote& note) {
    note.comment = NoteText(fields.TakeText());
}

using ReadNote = void (*)(CNoteFields& fields, CSheetNote& note);

template<ReadNote Read>
void ReadCellLine(CNoteFields& fields, CReadNotes& read) {
    CXSheet& xsheet = read.scene.xsheet;
    const int level = fields.TakeNumber() - 1;
    const int frame = fields.TakeNumber() - 1;
    const bool isThere = xsheet.HasLevel(level) && xsheet.HasFrame(frame);
    CSheetNote note = isThere ? xsheet.Cell(level, frame).Note() : CSheetNote();
    Read(fields, note);
    if (isThere)
        xsheet.MutableCell(level, frame).SetNote(std::move(note));
}

template<ReadNote Read>
void ReadFrameLine(CNoteFields& fields, CReadNotes& read) {
    const int frame = fields.TakeNumber() - 1;
    const bool isThere = frame >= 0 && frame < CFrameNotes::capacity;
    CSheetNote note = isThere ? read.scene.frameNotes.At(frame) : CSheetNote();
    Read(fields, note);
    if (isThere)
        read.scene.frameNotes.Set(frame, std::move(note));
}

void ReadSoundLine(CNoteFields& fields, CReadNotes& read) {
    const int frame = fields.TakeNumber() - 1;
    const std::string name = fields.TakeText();
    const int trimIn = std::max(fields.TakeNumber(), 0);
    const int trimOut = std::max(fields.TakeNumber(), 0);
    const int level = std::clamp(fields.TakeNumber(), CSoundPlacement::leastLevel, CSoundPlacement::mostLevel);
    if (++read.soundLines > CSoundPlacements::mostPlacements)
        return; // each is looked for among all
    const auto sound = std::ranges::find_if(
        read.sounds, [&](const CSoundPlacement& placed) { return placed.frame == frame && placed.name == name; });
    if (sound != read.sounds.end())
        *sound = {frame, name, trimIn, trimOut, level};
}

void ReadDialogueLine(CNoteFields& fields, CReadNotes& read) {
    CSpokenLine line;
    line.firstFrame = fields.TakeNumber() - 1;
    line.lastFrame = fields.TakeNumber() - 1;
    line.speaker = NoteText(fields.TakeText(), CDialogue::mostText);
    line.text = NoteText(fields.TakeText(), CDialogue::mostText);
    if (std::ssize(read.lines) < CDialogue::mostLines)
        read.lines.push_back(std::move(line));
}

struct CLineKind {
    std::string_view word;
    void (*read)(CNoteFields& fields, CReadNotes& read);
};

constexpr CLineKind lineKinds[] = {
    {markKind, ReadCellLine<ReadMark>},
    {commentKind, ReadCellLine<ReadComment>},
    {frameMarkKind, ReadFrameLine<ReadMark>},
    {frameCommentKind, ReadFrameLine<ReadComment>},
    {soundKind, ReadSoundLine},
    {dialogueKind, ReadDialogueLine},
};

std::string_view TakeLine(std::string_view& text) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return line;
}

// The first two lines; what follows is left of the text.
std::optional<std::uint64_t> TakeHead(std::string_view& text) {
    if (TakeLine(text) != signature)
        return std::nullopt;
    CNoteFields fields(TakeLine(text));
    const std::string_view kind = fields.TakeWord();
    const std::string_view digits = fields.TakeWord();
    std::uint64_t hash = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), hash, 16);
    const bool isHash = error == std::errc() && end == digits.data() + digits.size();
    return kind == xsheetKind && isHash && fields.IsAtEnd() ? std::optional(hash) : std::nullopt;
}

bool ReadLine(std::string_view line, CReadNotes& read) {
    CNoteFields fields(line);
    const std::string_view word = fields.TakeWord();
    const auto* const kind = std::ranges::find(lineKinds, word, &CLineKind::word);
    if (kind == std::end(lineKinds)) {
        read.unknown.append(line).append(line.empty() ? "" : "\n");
        return read.unknown.size() <= mostUnknownBytes;
    }
    kind->read(fields, read);
    return fields.IsAtEnd();
}

std::string_view TextOf(std::span<const std::uint8_t> bytes) {
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

} // namespace

std::string_view WordOf(SheetMark mark) {
    return markWords[static_cast<std::size_t>(mark)];
}

std::string_view WordOf(NoteColor color) {
    return colorWords[static_cast<std::size_t>(color)];
}

bool HoldsSheetNotes(std::span<const std::uint8_t> bytes) {
    std::string_view text = TextOf(bytes);
    return TakeHead(text) && !text.empty();
}

std::vector<std::uint8_t> EncodeSheetNotes(const CScene& scene, std::uint64_t xsheet) {
    std::string digits(hashDigits, '0');
    for (auto digit = digits.rbegin(); digit != digits.rend(); ++digit, xsheet >>= 4)
        *digit = "0123456789abcdef"[xsheet & 15];
    CNoteLines lines;
    lines.Line(signature);
    lines.Line(xsheetKind, std::string_view(digits));
    WriteNotes(lines, scene);
    return {lines.Text().begin(), lines.Text().end()};
}

CStatus DecodeSheetNotes(std::span<const std::uint8_t> bytes, CScene& scene) {
    try {
        std::string_view text = TextOf(bytes);
        if (bytes.size() > mostBytes || !TakeHead(text))
            return Damaged();
        CReadNotes read{scene, scene.sounds.All(), 0, {}, {}};
        while (!text.empty())
            if (!ReadLine(TakeLine(text), read))
                return Damaged();
        read.scene.sounds.Set(std::move(read.sounds));
        read.scene.dialogue.Set(std::move(read.lines));
        read.scene.unknownNotes = CShared<std::string>(std::move(read.unknown));
        scene = std::move(read.scene);
        return {};
    } catch (const std::exception&) { // no memory
        return Damaged();
    }
}

std::optional<std::uint64_t> XSheetOfNotes(std::span<const std::uint8_t> bytes) {
    std::string_view text = TextOf(bytes);
    return TakeHead(text);
}

CStatus LoadSheetNotes(const Path& file, CScene& scene) {
    if (!FileExists(file))
        return {};
    const std::optional<CFileBytes> bytes = ReadWholeFile(file, mostBytes);
    return bytes ? DecodeSheetNotes(bytes->Span(), scene) : Damaged();
}

} // namespace velmor
