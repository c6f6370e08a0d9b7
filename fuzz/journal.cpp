#include "platform/journal/Journal.h"
#include "FuzzTarget.h"
#include "MemoryFolder.h"

#include <fstream>
#include <optional>
#include <string>

namespace velmor::fuzz {

namespace {

struct CFiles {
    JournalBytes journal, ahead;
};

Path AheadOf(const Path& file) {
    return file.string() + "-wal";
}

JournalBytes Get(const Path& file) {
    const std::optional<CFileBytes> bytes = ReadWholeFile(file);
    Require(bytes.has_value());
    return {bytes->Span().begin(), bytes->Span().end()};
}

void Put(const Path& file, Bytes bytes) {
    std::ofstream stream(file, std::ios::binary);
    stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

/// A good journal, part of which has not been moved into its file. Nobody comes upon its checksums by chance.
CFiles GoodJournal() {
    const CMemoryFolder folder;
    const Path file = folder / "good";
    std::unique_ptr<CJournal> journal;
    CJournalContents contents;
    for (std::int64_t id = 1; id <= 40; ++id) {
        if (id % 20 == 1) {
            journal.reset();
            Require(static_cast<bool>(CJournal::Open(file, journal, contents)));
        }
        const auto byte = static_cast<std::uint8_t>(id);
        journal->Write({{{id, {byte, 1, 2}, JournalBytes(static_cast<std::size_t>(id * id), byte)}},
                        {id - 9},
                        {{id, id, id % 3 != 0}},
                        id - 30,
                        {{std::string(1, 'a' + static_cast<char>(id % 7)), {byte}}}});
    }
    journal->WaitUntilWritten();
    return {Get(file), Get(AheadOf(file))};
}

// Eight bytes each: what to do, where, and with which value.
void Change(CFiles& files, Bytes changes) {
    for (; changes.size() >= 8; changes = changes.subspan(8)) {
        JournalBytes& bytes = (changes[0] & 1) != 0 ? files.ahead : files.journal;
        if (bytes.empty())
            continue;
        const std::size_t at = (changes[1] * 65536U + changes[2] * 256U + changes[3]) % bytes.size();
        if ((changes[0] & 14) == 14)
            bytes.resize(at);
        else
            for (std::size_t byte = 0; byte < 4 && at + byte < bytes.size(); ++byte)
                if ((changes[0] >> (4 + byte) & 1) != 0)
                    bytes[at + byte] = changes[4 + byte];
    }
}

/// Opens it, reads all, and writes into it.
void Use(const Path& file) {
    std::unique_ptr<CJournal> journal;
    CJournalContents contents;
    if (!CJournal::Open(file, journal, contents)) {
        Require(contents.steps.empty() && contents.moves.empty() && contents.notes.empty());
        return;
    }
    CJournalEntry entry{{{1000000, {1}, JournalBytes(9000, 7)}}, {}, {{1000000, 1, true}}, 2, {{"last", {5}}}};
    for (const CJournalContents::CHeading& step : contents.steps) {
        Require(journal->StoredBytes(step.id) == step.bytes);
        journal->ReadBody(step.id);
        entry.remove.push_back(step.id + 1);
    }
    journal->Write(std::move(entry));
    journal->WaitUntilWritten();
    // A damaged file may take nothing more, but what it has taken it gives back.
    if (journal->Fault())
        Require(journal->StoredBytes(1000000) > 0);
}

} // namespace

// An input that begins with a zero is a journal; any other tells what to change in a good one.
void Read(Bytes input) {
    static const CFiles good = GoodJournal();
    if (input.empty())
        return;
    CFiles files;
    if (input[0] == 0) {
        files.journal.assign(input.begin() + 1, input.end());
    } else {
        files = good;
        Change(files, input.subspan(1));
    }
    const CMemoryFolder folder;
    Put(folder / "journal", files.journal);
    if (!files.ahead.empty())
        Put(AheadOf(folder / "journal"), files.ahead);
    Use(folder / "journal");
    Use(folder / "journal");
}

} // namespace velmor::fuzz
