#pragma once

#include "platform/journal/Journal.h"

#include <algorithm>
#include <random>

namespace velmor::testing {

/// What a journal has to hold, kept the plain way.
struct CJournalModel {
    std::map<std::int64_t, CJournalStep> steps;
    std::map<std::int64_t, CJournalMove> moves;
    std::map<std::string, JournalBytes, std::less<>> notes;

    void Apply(const CJournalEntry& entry) {
        for (const CJournalStep& step : entry.put)
            steps[step.id] = step;
        for (const std::int64_t id : entry.remove) {
            steps.erase(id);
            std::erase_if(moves, [id](const auto& move) { return move.second.step == id; });
        }
        for (const CJournalMove& move : entry.moves)
            moves[move.sequence] = move;
        std::erase_if(moves, [&](const auto& move) { return move.first <= entry.forgetMovesTo; });
        for (const auto& [name, value] : entry.notes)
            notes[name] = value;
        std::erase_if(notes, [](const auto& note) { return note.second.empty(); });
    }

    /// Whether a journal says the same, bodies left out.
    bool Lists(const CJournalContents& contents) const {
        const auto sameStep = [](const CJournalContents::CHeading& found, const auto& step) {
            return found.id == step.first && found.heading == step.second.heading;
        };
        const auto sameMove = [](const CJournalMove& found, const auto& move) {
            return found.sequence == move.first && found.step == move.second.step &&
                   found.forward == move.second.forward;
        };
        return std::equal(contents.steps.begin(), contents.steps.end(), steps.begin(), steps.end(), sameStep) &&
               std::equal(contents.moves.begin(), contents.moves.end(), moves.begin(), moves.end(), sameMove) &&
               contents.notes == notes;
    }
};

/// Makes up entries as a session has them: steps come and are replaced, the oldest go.
class CJournalSession {
public:
    explicit CJournalSession(std::uint32_t mostBodyBytes) : m_mostBodyBytes(mostBodyBytes) {}

    CJournalEntry Next() {
        CJournalEntry entry;
        for (std::uint32_t count = Below(3); count > 0; --count)
            entry.put.push_back({Below(4) == 0 ? 1 + Below(60) : ++m_lastStep, Bytes(40), Bytes(m_mostBodyBytes)});
        for (std::uint32_t count = Below(3); count > 0; --count)
            entry.moves.push_back({++m_lastMove, 1 + Below(m_lastStep + 1), Below(2) == 0});
        if (Below(4) == 0)
            entry.remove = {1 + Below(m_lastStep + 1), 1 + Below(m_lastStep + 1)};
        if (Below(9) == 0)
            entry.forgetMovesTo = Below(m_lastMove + 1);
        for (std::uint32_t count = Below(3); count > 0; --count)
            entry.notes[std::string(1 + Below(3), 'n')] = Bytes(20);
        return entry;
    }

private:
    std::uint32_t Below(std::int64_t limit) {
        return static_cast<std::uint32_t>(m_random()) % static_cast<std::uint32_t>(limit);
    }
    JournalBytes Bytes(std::uint32_t most) {
        JournalBytes bytes(Below(most));
        const std::uint32_t tones = 1 + Below(200); // from flat to noise
        std::generate(bytes.begin(), bytes.end(), [&] { return static_cast<std::uint8_t>(Below(tones)); });
        return bytes;
    }

    std::uint32_t m_mostBodyBytes;
    std::mt19937 m_random{20260112};
    std::int64_t m_lastStep = 0;
    std::int64_t m_lastMove = 0;
};

} // namespace velmor::testing
