#pragma once

#include "platform/Status.h"
#include "platform/files/Files.h"

#include <cstdint>
#include <span>

namespace velmor {

// An xsheet and its notes are replaced one after the other. So the new notes are written beside the old ones first,
// with the hash of the xsheet that they go with: whichever xsheet is there tells which notes are in force.

/// "Walk.xsheet.notes" of "Walk.xsheet".
Path SheetNotesFile(const Path& xsheetFile);

/// The file with the notes of an xsheet, which may not be there. `xsheet` is the hash of the xsheet.
Path SheetNotesInForce(const Path& xsheetFile, std::uint64_t xsheet);
/// The same, for the xsheet as it is on the disk.
Path SheetNotesInForce(const Path& xsheetFile);

/// Puts notes that cannot be read aside, under another name beside the xsheet; false when that fails. `kept` is
/// that name.
bool SetSheetNotesAside(const Path& xsheetFile, Path& kept);

/// The notes' part in the saving of a sheet: Prepare(), then the xsheet is replaced, then Finish(). What was
/// prepared and does not come to that goes with its life.
class CNotesSaving {
public:
    explicit CNotesSaving(const Path& xsheetFile);
    CNotesSaving(const CNotesSaving&) = delete;
    CNotesSaving& operator=(const CNotesSaving&) = delete;
    ~CNotesSaving();

    /// Nothing is written for no notes where there were none.
    CStatus Prepare(std::span<const std::uint8_t> notes, bool hasNotes);
    void Finish();

private:
    bool FinishFormer() const;

    Path m_xsheetFile;
    Path m_file;
    Path m_pending;
    std::span<const std::uint8_t> m_notes;
    bool m_hasNotes = false;
    bool m_isPending = false;
};

} // namespace velmor
