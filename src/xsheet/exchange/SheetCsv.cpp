#include "xsheet/exchange/SheetCsv.h"

#include <algorithm>
#include <map>
#include <string_view>

namespace velmor {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view frameTitle = "Frame";
constexpr std::string_view dialogueTitle = "Dialogue";
constexpr std::string_view endOfDrawing = "x";
constexpr std::size_t mostColumns = static_cast<std::size_t>(mostExchangeTracks) + 2;
constexpr std::size_t mostRows = static_cast<std::size_t>(mostExchangeFrames) + 1;

using Row = std::vector<std::string>;

std::string Quoted(const std::string& text) {
    if (text.find_first_of("\",;\t\r\n") == std::string::npos)
        return text;
    std::string quoted(1, '"');
    for (const char c : text)
        quoted.append(c == '"' ? 2 : 1, c);
    quoted.push_back('"');
    return quoted;
}

void AppendRow(std::string& text, const Row& row) {
    for (std::size_t i = 0; i < row.size(); ++i)
        text.append(i == 0 ? "" : ",").append(Quoted(row[i]));
    text.append("\r\n");
}

// What a row says of a value that was `before` and is `now`.
std::string Change(const std::string& before, const std::string& now) {
    if (now == before)
        return {};
    return now.empty() ? std::string(endOfDrawing) : now;
}

bool IsEnd(const std::string& text) {
    return text == "x" || text == "X";
}

// With its speaker in front, and also without one where the text alone would say something else.
std::string LineText(const CExchangeLine& line) {
    const bool isPlain = line.speaker.empty() && !IsEnd(line.text) && line.text.find(": ") == std::string::npos;
    return isPlain ? line.text : line.speaker + ": " + line.text;
}

std::string Trimmed(const std::string& text) {
    const std::size_t begin = text.find_first_not_of(' ');
    return begin == std::string::npos ? std::string() : text.substr(begin, text.find_last_not_of(' ') - begin + 1);
}

// A table has a column for one of the two; what is spoken is in no other file of ours.
const std::vector<CExchangeLine>& DialogueOf(const CExchangeSheet& sheet) {
    return sheet.spoken.empty() ? sheet.lines : sheet.spoken;
}

bool HasDialogueColumn(const CExchangeSheet& sheet) {
    // A last level of that name would be taken for it.
    return !DialogueOf(sheet).empty() ||
           (!sheet.tracks.empty() && Trimmed(sheet.tracks.back().name) == dialogueTitle);
}

// Cells of dialogue by frame.
std::map<int, std::string> DialogueCells(const CExchangeSheet& sheet) {
    std::map<int, std::string> cells;
    for (const CExchangeLine& line : DialogueOf(sheet))
        if (line.endFrame < sheet.frameCount)
            cells.emplace(line.endFrame, endOfDrawing);
    for (const CExchangeLine& line : DialogueOf(sheet))
        cells[line.frame] = LineText(line);
    return cells;
}

/// Takes a table apart into rows of cells.
class CTableReader {
public:
    explicit CTableReader(std::string_view text) : m_text(text) {
        if (m_text.starts_with(byteOrderMark))
            m_text.remove_prefix(byteOrderMark.size());
        // The first title is known, so what follows it separates: a title behind it may hold anything.
        const std::size_t end = m_text.find_first_of(",;\t\n");
        if (end != std::string_view::npos && m_text[end] != '\n')
            m_separator = m_text[end];
    }

    bool AtEnd() const { return m_position >= m_text.size(); }

    /// False when a quotation mark is never closed or a cell or a row is too long.
    [[nodiscard]] bool ReadRow(Row& row) {
        row.clear();
        do {
            if (row.size() == mostColumns || !ReadCell(row.emplace_back()))
                return false;
        } while (Skip(m_separator));
        Skip('\r');
        return Skip('\n') || AtEnd();
    }

private:
    bool Skip(char c) {
        const bool isThere = !AtEnd() && m_text[m_position] == c;
        m_position += isThere ? 1 : 0;
        return isThere;
    }

    bool ReadCell(std::string& cell) {
        if (Skip('"'))
            return ReadQuoted(cell);
        const std::size_t end =
            std::min(m_text.find_first_of(std::string("\r\n") + m_separator, m_position), m_text.size());
        cell = m_text.substr(m_position, end - m_position);
        m_position = end;
        return cell.size() <= mostExchangeText;
    }

    bool ReadQuoted(std::string& cell) {
        while (!AtEnd() && cell.size() <= mostExchangeText) {
            const char c = m_text[m_position++];
            if (c == '"' && !Skip('"'))
                return true;
            cell.push_back(c);
        }
        return false;
    }

    std::string_view m_text;
    std::size_t m_position = 0;
    char m_separator = ',';
};

std::vector<std::string> ColumnCells(const std::vector<Row>& rows, std::size_t column) {
    std::vector<std::string> cells;
    std::string shown;
    for (const Row& row : rows) {
        if (const std::string text = column < row.size() ? Trimmed(row[column]) : std::string(); !text.empty())
            shown = IsEnd(text) ? std::string() : text;
        cells.push_back(shown);
    }
    return cells;
}

void ReadDialogue(const std::vector<Row>& rows, std::size_t column, CExchangeSheet& sheet) {
    sheet.hasDialogue = true;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const std::string text = column < rows[i].size() ? Trimmed(rows[i][column]) : std::string();
        const int frame = static_cast<int>(i);
        if (text.empty())
            continue;
        if (!sheet.lines.empty() && sheet.lines.back().endFrame > frame)
            sheet.lines.back().endFrame = frame;
        const std::size_t colon = text.find(": ");
        if (!IsEnd(text))
            sheet.lines.push_back({frame, sheet.frameCount,
                                   colon == std::string::npos ? std::string() : text.substr(0, colon),
                                   colon == std::string::npos ? text : text.substr(colon + 2)});
    }
}

} // namespace

std::string WriteSheetCsv(const CExchangeSheet& sheet) {
    std::string text(byteOrderMark);
    Row row = {std::string(frameTitle)};
    for (const CExchangeTrack& track : sheet.tracks)
        row.push_back(track.name);
    if (HasDialogueColumn(sheet))
        row.emplace_back(dialogueTitle);
    AppendRow(text, row);
    const std::map<int, std::string> dialogue = DialogueCells(sheet);
    for (int frame = 0; frame < sheet.frameCount; ++frame) {
        const auto index = static_cast<std::size_t>(frame);
        row = {std::to_string(frame + 1)};
        for (const CExchangeTrack& track : sheet.tracks)
            row.push_back(Change(frame == 0 ? std::string() : track.cells[index - 1], track.cells[index]));
        if (HasDialogueColumn(sheet))
            row.push_back(dialogue.contains(frame) ? dialogue.at(frame) : std::string());
        AppendRow(text, row);
    }
    return text;
}

CStatus ReadSheetCsv(std::span<const std::uint8_t> file, CExchangeSheet& sheet) {
    CTableReader reader({reinterpret_cast<const char*>(file.data()), file.size()});
    std::vector<Row> rows;
    while (!reader.AtEnd()) {
        if (rows.size() > mostRows)
            return CStatus::Failure("The table has more rows than an xsheet has frames");
        if (!reader.ReadRow(rows.emplace_back()))
            return CStatus::Failure("The table cannot be read in its row " + std::to_string(rows.size()));
    }
    while (rows.size() > 2 && rows.back().size() == 1 && rows.back().front().empty())
        rows.pop_back();
    if (rows.size() < 2 || Trimmed(rows.front().front()) != frameTitle)
        return CStatus::Failure("The table does not begin with a row of \"Frame\" and the names of levels");
    if (rows.size() > mostRows)
        return CStatus::Failure("The table has more rows than an xsheet has frames");
    const Row titles = std::move(rows.front());
    rows.erase(rows.begin());
    CExchangeSheet read;
    read.frameCount = static_cast<int>(rows.size());
    for (std::size_t column = 1; column < titles.size(); ++column) {
        if (column + 1 == titles.size() && Trimmed(titles[column]) == dialogueTitle)
            ReadDialogue(rows, column, read);
        else
            read.tracks.push_back({titles[column], ColumnCells(rows, column)});
    }
    if (read.tracks.size() > static_cast<std::size_t>(mostExchangeTracks))
        return CStatus::Failure("The table has more columns than an xsheet has levels");
    sheet = std::move(read);
    return {};
}

} // namespace velmor
