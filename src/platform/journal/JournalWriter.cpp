#include "platform/journal/JournalWriter.h"

#include <new>
#include <system_error>
#include <utility>

namespace velmor {

namespace {

constexpr std::chrono::milliseconds syncDelay{800}; // the rest of a second is for the disk
constexpr std::uint64_t largeWriteAhead = std::uint64_t{16} << 20;

std::string FaultText(const Path& file, const std::string& reason) {
    return "The journal could not be written: " + reason + ".\n" + Utf8Of(file);
}

template<class Part>
CStatus OutcomeOf(const Path& file, Part& part) {
    try {
        part();
    } catch (const CSqliteFault& fault) {
        return CStatus::Failure(FaultText(file, fault.Reason()));
    } catch (const std::system_error& fault) {
        return CStatus::Failure(FaultText(file, fault.code().message()));
    }
    return {};
}

} // namespace

CJournal::CWriter::CWriter(const Path& file, CSqlite connection, std::uint64_t seals,
                           const CJournalContents& contents)
    : m_file(file),
      m_database(std::move(connection), seals),
      m_writeAhead(file),
      m_outOfMemory(CStatus::Failure(FaultText(file, "out of memory"))) {
    for (const CJournalContents::CHeading& step : contents.steps)
        m_sizes.emplace_hint(m_sizes.end(), step.id, step.bytes);
    m_thread = std::thread([this] { Work(); });
}

CJournal::CWriter::~CWriter() {
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_queued.notify_one();
    m_thread.join();
}

void CJournal::CWriter::Write(CJournalEntry entry) {
    {
        const std::lock_guard lock(m_mutex);
        if (!m_fault)
            return;
        try {
            m_queue.push_back(std::move(entry));
        } catch (const std::bad_alloc&) {
            m_fault = std::move(m_outOfMemory);
            return;
        }
        ++m_given;
    }
    m_queued.notify_one();
}

void CJournal::CWriter::WaitUntilWritten() {
    std::unique_lock lock(m_mutex);
    m_settled.wait(lock, [this, given = m_given] { return m_written >= given || !m_fault; });
}

std::optional<JournalBytes> CJournal::CWriter::ReadBody(std::int64_t step) {
    WaitUntilWritten();
    const std::lock_guard lock(m_inDatabase);
    try {
        return m_database.ReadBody(step);
    } catch (const CSqliteFault&) {
        return std::nullopt;
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

std::uint64_t CJournal::CWriter::StoredBytes(std::int64_t step) const {
    const std::lock_guard lock(m_mutex);
    const auto found = m_sizes.find(step);
    return found != m_sizes.end() ? found->second : 0;
}

CStatus CJournal::CWriter::Fault() const {
    const std::lock_guard lock(m_mutex);
    return m_fault;
}

void CJournal::CWriter::Work() {
    for (Entries entries = WaitForEntries(); !entries.empty(); entries = WaitForEntries()) {
        Try([&] {
            Commit(entries);
            SettleIfLarge();
        });
    }
    if (m_syncAt)
        Try([&] { Sync(); });
}

CJournal::CWriter::Entries CJournal::CWriter::WaitForEntries() {
    std::unique_lock lock(m_mutex);
    const auto ready = [this] { return m_stopping || !m_queue.empty(); };
    while (true) {
        if (!m_syncAt)
            m_queued.wait(lock, ready);
        else
            m_queued.wait_until(lock, *m_syncAt, ready);
        if (m_syncAt && Clock::now() >= *m_syncAt) {
            lock.unlock();
            Try([&] { Sync(); });
            lock.lock();
        } else if (ready()) {
            return std::exchange(m_queue, {});
        }
    }
}

template<class Part>
void CJournal::CWriter::Try(Part part) {
    try {
        if (CStatus outcome = OutcomeOf(m_file, part); !outcome)
            Fail(outcome);
    } catch (const std::exception&) {
        Fail(m_outOfMemory); // the only thing that is left
    }
}

void CJournal::CWriter::Commit(Entries& entries) {
    for (CJournalEntry& entry : entries)
        for (CJournalStep& step : entry.put)
            step.body = m_compressor.Compress(step.body);
    {
        const std::lock_guard lock(m_inDatabase);
        m_database.Write(entries);
    }
    if (!m_syncAt)
        m_syncAt = Clock::now() + syncDelay;
    Count(entries);
}

void CJournal::CWriter::Sync() {
    m_syncAt.reset();
    m_writeAhead.Sync();
}

void CJournal::CWriter::SettleIfLarge() {
    if (m_writeAhead.Size() < largeWriteAhead)
        return;
    const std::lock_guard lock(m_inDatabase);
    m_database.Settle();
    m_syncAt.reset();
}

void CJournal::CWriter::Count(const Entries& written) {
    {
        const std::lock_guard lock(m_mutex);
        for (const CJournalEntry& entry : written) {
            for (const CJournalStep& step : entry.put)
                m_sizes.insert_or_assign(step.id, step.heading.size() + step.body.size());
            for (const std::int64_t step : entry.remove)
                m_sizes.erase(step);
        }
        m_written += written.size();
    }
    m_settled.notify_all();
}

void CJournal::CWriter::Fail(CStatus& fault) {
    Entries passedOver; // freed outside the lock
    {
        const std::lock_guard lock(m_mutex);
        if (m_fault)
            m_fault = std::move(fault);
        passedOver = std::exchange(m_queue, {});
    }
    m_settled.notify_all();
}

} // namespace velmor
