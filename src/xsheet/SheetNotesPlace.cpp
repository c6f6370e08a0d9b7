#include "xsheet/SheetNotesPlace.h"

#include "platform/files/ContentHash.h"
#include "platform/files/DamagedFile.h"
#include "xsheet/SheetNotesFile.h"

namespace velmor {

namespace {

Path PendingNotesFile(const Path& xsheetFile) {
    Path file = SheetNotesFile(xsheetFile);
    file += ".saving";
    return file;
}

bool GoWith(const Path& notesFile, std::uint64_t xsheet) {
    if (!FileExists(notesFile))
        return false;
    const std::optional<CFileBytes> bytes = ReadWholeFile(notesFile);
    return bytes && XSheetOfNotes(bytes->Span()) == xsheet;
}

} // namespace

Path SheetNotesFile(const Path& xsheetFile) {
    Path file = xsheetFile;
    file += ".notes";
    return file;
}

Path SheetNotesInForce(const Path& xsheetFile, std::uint64_t xsheet) {
    const Path pending = PendingNotesFile(xsheetFile);
    return GoWith(pending, xsheet) ? pending : SheetNotesFile(xsheetFile);
}

Path SheetNotesInForce(const Path& xsheetFile) {
    if (!FileExists(PendingNotesFile(xsheetFile))) // the xsheet need not be read
        return SheetNotesFile(xsheetFile);
    const std::optional<CFileBytes> xsheet = ReadWholeFile(xsheetFile);
    return xsheet ? SheetNotesInForce(xsheetFile, ContentHash(xsheet->Span())) : SheetNotesFile(xsheetFile);
}

bool SetSheetNotesAside(const Path& xsheetFile, Path& kept) {
    kept = FreeNameForDamaged(SheetNotesFile(xsheetFile));
    return MoveIfAbsent(SheetNotesInForce(xsheetFile), kept);
}

CNotesSaving::CNotesSaving(const Path& xsheetFile)
    : m_xsheetFile(xsheetFile), m_file(SheetNotesFile(xsheetFile)), m_pending(PendingNotesFile(xsheetFile)) {}

CNotesSaving::~CNotesSaving() {
    if (m_isPending)
        static_cast<void>(RemoveFile(m_pending)); // if it stays, it goes with an xsheet that is not there
}

// A saving that was cut off may have left notes that are in force, which must not be overwritten before the next
// ones are.
bool CNotesSaving::FinishFormer() const {
    if (SheetNotesInForce(m_xsheetFile) == m_file)
        return true;
    const std::optional<CFileBytes> bytes = ReadWholeFile(m_pending);
    return bytes && WriteFileAtomically(m_file, bytes->Span());
}

CStatus CNotesSaving::Prepare(std::span<const std::uint8_t> notes, bool hasNotes) {
    if (!hasNotes && !FileExists(m_file) && !FileExists(m_pending))
        return {};
    m_notes = notes;
    m_hasNotes = hasNotes;
    m_isPending = FinishFormer() && WriteFileAtomically(m_pending, notes);
    return m_isPending ? CStatus() : CStatus::Failure("Problem writing the sheet notes file");
}

void CNotesSaving::Finish() {
    if (!m_isPending)
        return;
    // Should this fail, the pending file goes on being the one in force.
    const bool isPlaced =
        m_hasNotes ? WriteFileAtomically(m_file, m_notes) : !FileExists(m_file) || RemoveFile(m_file);
    m_isPending = isPlaced;
}

} // namespace velmor
