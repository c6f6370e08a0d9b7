#include "platform/journal/Journal.h"

#include "platform/journal/JournalConnection.h"
#include "platform/journal/JournalFile.h"
#include "platform/journal/JournalFormat.h"
#include "platform/journal/JournalWriter.h"

#include <new>
#include <system_error>
#include <utility>

namespace velmor {

namespace {

std::string TextOf(const CSqliteFault& fault) {
    if (fault.IsBusy())
        return "The journal is used by another program.";
    if (fault.IsDamaged())
        return journalDamaged;
    return "The journal could not be opened: " + fault.Reason() + ".";
}

} // namespace

CStatus CJournal::Open(const Path& file, std::unique_ptr<CJournal>& journal, CJournalContents& contents,
                       bool* isDamaged) {
    journal.reset();
    contents = {};
    std::string text;
    bool damaged = false;
    try {
        const Path path = std::filesystem::weakly_canonical(file);
        MakeJournalFile(path);
        std::uint64_t seals = 0;
        CSqlite connection = ConnectToJournal(path, contents, seals);
        auto writer = std::make_unique<CWriter>(path, std::move(connection), seals, contents);
        journal = std::unique_ptr<CJournal>(new CJournal(std::move(writer)));
        return {};
    } catch (const CJournalDamage& damage) {
        text = damage.what();
        damaged = true;
    } catch (const CJournalRefusal& refusal) {
        text = refusal.what();
    } catch (const CSqliteFault& fault) {
        text = TextOf(fault);
        damaged = fault.IsDamaged();
    } catch (const std::bad_alloc&) {
        text = "The journal could not be opened: out of memory.";
    } catch (const std::system_error& error) {
        text = "The journal could not be opened: " + error.code().message() + ".";
    }
    contents = {};
    if (isDamaged != nullptr)
        *isDamaged = damaged;
    return CStatus::Failure(text + "\n" + Utf8Of(file));
}

CJournal::CJournal(std::unique_ptr<CWriter> writer) : m_writer(std::move(writer)) {}

CJournal::~CJournal() = default;

void CJournal::Write(CJournalEntry entry) {
    m_writer->Write(std::move(entry));
}

void CJournal::WaitUntilWritten() {
    m_writer->WaitUntilWritten();
}

std::optional<JournalBytes> CJournal::ReadBody(std::int64_t step) {
    return m_writer->ReadBody(step);
}

std::uint64_t CJournal::StoredBytes(std::int64_t step) {
    return m_writer->StoredBytes(step);
}

CStatus CJournal::Fault() const {
    return m_writer->Fault();
}

} // namespace velmor
