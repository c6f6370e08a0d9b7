#include "scene/history/History.h"
#include "FuzzTarget.h"
#include "MemoryFolder.h"
#include "platform/files/Archive.h"

#include <algorithm>
#include <array>

namespace velmor::fuzz {

namespace {

constexpr const char* xsheetFile = "Wild.xsheet";
constexpr const char* celFile = "Fox/1.bit";

CScene SmallScene() {
    CScene scene;
    scene.xsheet = CXSheet(2, 4);
    static_cast<void>(scene.xsheet.MutableCell(0, 1).Set("/scene", "Fox", "1", {64, 48}));
    static_cast<void>(scene.sounds.Place(1, "Meow"));
    return scene;
}

CCelImg SmallCel() {
    CCelImg cel;
    Require(static_cast<bool>(cel.CreateCel(70, 40, celFile)));
    return cel;
}

/// A step that has something of everything.
CStepChanges GoodChanges() {
    const CScene before = SmallScene();
    CScene after = before;
    static_cast<void>(after.xsheet.MutableCell(1, 2).Set("/scene", "Owl", "7", {64, 48}));
    after.camera.MutableAt(3).panX = 4;
    after.sounds.RemoveNamed("Meow");
    after.xsheet.MutableCell(1, 2).SetNote({SheetMark::Key, NoteColor::Red, "up"});
    after.frameNotes.Set(1, {SheetMark::None, NoteColor::Blue, "cut"});
    Require(after.dialogue.Put({0, 2, "Fox", "Who?"}));
    CCelImg cel = SmallCel();
    CKeptTiles kept;
    kept.Keep(cel, {3, 3, 6, 6});
    cel.SetColorAt(4, 4, {1, 2, 3, 255});
    const KeptFile file = std::make_shared<const std::vector<std::uint8_t>>(9, std::uint8_t{5});
    return {CSceneChange(before, after),
            celFile,
            CImageChange(kept, cel),
            {{"Fox/2.bit", file, {}, {}}, {"Fox/3.bit", {}, {}, "Fox/4.bit"}}};
}

CStepHeading GoodHeading(const CStepChanges& changes) {
    CStepHeading heading;
    heading.name = "Stroke on Fox 1";
    heading.picture = {2, 1, {1, 2, 3, 4, 5, 6}};
    Describe(heading, changes, SmallScene().xsheet);
    return heading;
}

CHistorySession GoodSession() {
    return {"Fox", SourceMode::Cels, celFile, 1, 2, {0, 1, 1, 2}};
}

JournalBytes WriteContents() {
    const CStepChanges changes = GoodChanges();
    CArchiveWriter writer;
    writer.WriteByte(3);
    for (std::uint8_t step = 0; step < 3; ++step) {
        writer.WriteBlock(WriteHeading(GoodHeading(changes)));
        writer.WriteBlock(WriteChanges(changes));
    }
    const std::array<std::uint8_t, 5> moves{3, 5, 4, 2, 7}; // twice the step, and one more for forward
    writer.WriteBlock(moves);
    CArchiveWriter saved;
    saved.WriteWord(1);
    CFileStamp().Write(saved);
    for (const char* name : {"saved/Wild.xsheet", "saved/Fox/1.bit"}) {
        writer.WriteText(name);
        writer.WriteBlock(saved.Bytes());
    }
    writer.WriteText("session");
    writer.WriteBlock(WriteSession(GoodSession()));
    CArchiveWriter unfinished;
    unfinished.WriteByte(1);
    unfinished.WriteBlock(WriteChanges(changes));
    writer.WriteText("unfinished");
    writer.WriteBlock(unfinished.Bytes());
    return std::move(writer).Take();
}

bool IsInside(const std::string& file) {
    const std::string path = (Path("/scene") / PathOf(file)).lexically_normal().string();
    return path.starts_with("/scene/") && file.find('\0') == std::string::npos &&
           file.find('\\') == std::string::npos;
}

void UseChanges(Bytes bytes) {
    const std::optional<CStepChanges> changes = ReadChanges(bytes);
    if (!changes)
        return;
    Require(changes->image.empty() || IsInside(changes->image));
    for (const CFileChange& change : changes->files)
        Require(IsInside(change.file) && (change.movedFrom.empty() || IsInside(change.movedFrom)));
    const std::vector<std::uint8_t> written = WriteChanges(*changes);
    const std::optional<CStepChanges> again = ReadChanges(written);
    Require(again && WriteChanges(*again) == written);
    for (const ChangeDirection direction : {ChangeDirection::Forward, ChangeDirection::Back}) {
        CScene scene = SmallScene();
        CCelImg cel = SmallCel();
        if (changes->scene.Apply(scene, direction))
            changes->scene.RestoreInto(scene);
        changes->painting.Apply(cel, direction);
    }
    CStepHeading heading;
    Describe(heading, *changes, SmallScene().xsheet);
}

void UseHeading(Bytes bytes) {
    if (const std::optional<CStepHeading> heading = ReadHeading(bytes, true))
        Require(WriteHeading(ReadHeading(WriteHeading(*heading), true).value()) == WriteHeading(*heading));
}

void UseSession(Bytes bytes) {
    const CHistorySession session = ReadSession(bytes);
    Require(ReadSession(WriteSession(session)) == session);
    Require(session.image.empty() || IsInside(session.image));
    Require(session.folder.empty() || IsInside(session.folder));
    Require(session.selection.firstLevel >= 0 && session.selection.firstFrame >= 0);
}

/// What the bytes make of a journal: sound in itself, since the journal sees to that.
CJournalEntry ReadContents(Bytes bytes) {
    CArchiveReader reader(bytes);
    CJournalEntry entry;
    const int steps = reader.ReadByte() % 8;
    for (int id = 1; id <= steps && !reader.Failed(); ++id) {
        const auto heading = reader.ReadBlock();
        const auto body = reader.ReadBlock();
        entry.put.push_back({id, {heading.begin(), heading.end()}, {body.begin(), body.end()}});
    }
    const auto moves = reader.ReadBlock();
    for (const std::uint8_t move : moves.first(std::min<std::size_t>(moves.size(), 30)))
        entry.moves.push_back({static_cast<std::int64_t>(entry.moves.size()) + 1, move >> 1 & 7, (move & 1) != 0});
    while (reader.Remaining() > 0 && !reader.Failed() && entry.notes.size() < 10) {
        std::string name = reader.ReadText();
        const auto value = reader.ReadBlock();
        entry.notes.insert_or_assign(std::move(name), JournalBytes(value.begin(), value.end()));
    }
    return entry;
}

void Open(CHistory& history, const Path& file, CJournalEntry entry) {
    std::unique_ptr<CJournal> journal;
    CJournalContents contents;
    Require(static_cast<bool>(CJournal::Open(file, journal, contents)));
    journal->Write(std::move(entry));
    Require(static_cast<bool>(journal->Fault()));
    journal.reset();
    Require(static_cast<bool>(CJournal::Open(file, journal, contents)));
    history.Open(std::move(journal), std::move(contents), xsheetFile, file.parent_path() / "scene");
}

void Move(CHistory& history, CScene& scene, CCelImg& cel, ChangeDirection direction) {
    const bool isBack = direction == ChangeDirection::Back;
    while (const CHistory::CStep* step = isBack ? history.NextUndo() : history.NextRedo()) {
        const std::int64_t id = step->id;
        const std::optional<CStepChanges> changes = history.Changes(id);
        if (changes && changes->scene.Apply(scene, direction)) {
            history.ClearDeleted(scene, id);
            changes->painting.Apply(cel, direction);
            history.NoteMove(id, direction, GoodSession());
        } else {
            history.Drop(id);
        }
    }
}

void UseJournal(Bytes bytes) {
    const CMemoryFolder folder;
    CScene scene = SmallScene();
    CCelImg cel = SmallCel();
    CHistory history;
    Open(history, folder / "journal", ReadContents(bytes));
    static_cast<void>(history.Unsaved(folder / "scene"));
    static_cast<void>(history.Replay(scene));
    static_cast<void>(history.Replay(cel, history.Session().image));
    static_cast<void>(history.Entries());
    Move(history, scene, cel, ChangeDirection::Back);
    Move(history, scene, cel, ChangeDirection::Forward);
    Require(history.NextRedo() == nullptr);
    const CStepChanges changes = GoodChanges();
    history.Record(GoodHeading(changes), changes, scene.xsheet, GoodSession());
    Require(history.NextUndo() != nullptr && history.Changes(history.NextUndo()->id).has_value());
    history.NoteSaved(celFile, {});
    history.DiscardUnsaved();
    Require(history.NextUndo() == nullptr);
    history.NoteAllSaved(GoodSession());
    Require(!history.Unsaved(folder / "scene"));
    Require(history.HasJournal());
}

struct CPart {
    JournalBytes good;
    void (*use)(Bytes);
};

} // namespace

// The first byte tells the part; in its fourth bit, that what follows only changes a good one: two bytes say where,
// one to what.
void Read(Bytes input) {
    static const std::array<CPart, 4> parts{CPart{WriteChanges(GoodChanges()), UseChanges},
                                            {WriteHeading(GoodHeading(GoodChanges())), UseHeading},
                                            {WriteSession(GoodSession()), UseSession},
                                            {WriteContents(), UseJournal}};
    if (input.empty())
        return;
    const CPart& part = parts[input[0] % parts.size()];
    const bool isChanged = (input[0] & 8) != 0;
    input = input.subspan(1);
    if (!isChanged)
        return part.use(input);
    JournalBytes bytes = part.good;
    for (; input.size() >= 3; input = input.subspan(3))
        bytes[(input[0] * 256U + input[1]) % bytes.size()] = input[2];
    part.use(bytes);
}

} // namespace velmor::fuzz
