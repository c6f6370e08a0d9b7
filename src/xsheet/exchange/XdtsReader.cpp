#include "xsheet/exchange/Xdts.h"
#include "xsheet/exchange/XdtsText.h"

#include <algorithm>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>

namespace velmor {

namespace {

using Json = nlohmann::json;

constexpr const char* noSheet = "This is no exchange digital time sheet";
constexpr const char* tooLarge = "The time sheet has more tracks or frames than an xsheet can have";

// What is asked of a value that may be anything: a member, a whole number, a text.
const Json& Member(const Json& object, const char* name) {
    static const Json none;
    if (!object.is_object())
        return none;
    const auto found = object.find(name);
    return found == object.end() ? none : *found;
}

std::optional<std::int64_t> NumberOf(const Json& value) {
    if (!value.is_number_integer() || (value.is_number_unsigned() && value.get<std::uint64_t>() > INT32_MAX))
        return std::nullopt;
    return value.get<std::int64_t>();
}

std::string TextOf(const Json& value) {
    const std::string* text = value.get_ptr<const std::string*>();
    return text != nullptr && text->size() <= mostExchangeText ? *text : std::string();
}

/// What begins at a frame.
struct CEntry {
    std::int64_t frame = 0;
    std::vector<std::string> values;
};

std::vector<std::string> ValuesOf(const Json& data) {
    std::vector<std::string> values;
    if (data.is_array() && !data.empty())
        for (const Json& value : Member(data.front(), "values"))
            values.push_back(TextOf(value));
    return values;
}

// By frame; of several at one frame the later one counts.
std::vector<CEntry> EntriesOf(const Json& track, int frameCount) {
    std::vector<CEntry> entries;
    for (const Json& entry : Member(track, "frames")) {
        const std::optional<std::int64_t> frame = NumberOf(Member(entry, "frame"));
        std::vector<std::string> values = ValuesOf(Member(entry, "data"));
        if (frame && *frame < frameCount && !values.empty())
            entries.push_back({*frame, std::move(values)});
    }
    std::ranges::stable_sort(entries, {}, &CEntry::frame);
    return entries;
}

bool IsMark(const std::string& value) {
    return value.empty() || value == xdts::unchanged || value == xdts::inbetween || value == xdts::reverseInbetween;
}

void ReadCells(const Json& track, int frameCount, CExchangeTrack& read) {
    read.cells.clear();
    read.inbetweens.clear();
    const std::vector<CEntry> entries = EntriesOf(track, frameCount);
    auto next = entries.begin();
    std::string shown;
    for (int frame = 0; frame < frameCount; ++frame) {
        const std::string before = shown;
        bool isMarked = false;
        for (; next != entries.end() && next->frame <= frame; ++next) {
            const std::string& value = next->values.front();
            if (!IsMark(value))
                shown = value == xdts::noCell ? std::string() : value;
            isMarked = next->frame == frame && (value == xdts::inbetween || value == xdts::reverseInbetween);
        }
        if (isMarked && shown == before)
            read.inbetweens.insert(frame);
        read.cells.push_back(shown);
    }
}

std::vector<CExchangeLine> LinesOf(const Json& track, int frameCount) {
    std::vector<CExchangeLine> lines;
    for (const CEntry& entry : EntriesOf(track, frameCount)) {
        const std::string& value = entry.values.front();
        const bool hasSpeaker = entry.values.size() > 1;
        if (IsMark(value) && !hasSpeaker)
            continue;
        const int frame = static_cast<int>(std::max<std::int64_t>(entry.frame, 0));
        if (!lines.empty() && lines.back().frame == frame)
            lines.pop_back();
        if (!lines.empty() && lines.back().endFrame > frame)
            lines.back().endFrame = frame;
        if (value != xdts::noCell)
            lines.push_back(
                {frame, frameCount, hasSpeaker ? value : std::string(), hasSpeaker ? entry.values[1] : value});
    }
    return lines;
}

class CXdtsReader {
public:
    explicit CXdtsReader(const Json& file) : m_tables(Member(file, "timeTables")) {}

    CStatus Read() {
        if (!m_tables.is_array() || m_tables.empty())
            return CStatus::Failure(noSheet);
        const Json& table = m_tables.front();
        m_sheet.name = TextOf(Member(table, "name"));
        const std::optional<std::int64_t> duration = NumberOf(Member(table, "duration"));
        if (!duration || *duration < 1)
            return CStatus::Failure("The time sheet does not say how many frames it has");
        if (*duration > mostExchangeFrames)
            return CStatus::Failure(tooLarge);
        m_sheet.frameCount = static_cast<int>(*duration);
        for (const Json& field : Member(table, "fields"))
            if (CStatus read = ReadField(field); !read)
                return read;
        ReadNames(Member(table, "timeTableHeaders"));
        std::ranges::reverse(m_sheet.tracks);
        return {};
    }

    CExchangeSheet Take() { return std::move(m_sheet); }

private:
    CStatus ReadField(const Json& field) {
        const std::optional<std::int64_t> id = NumberOf(Member(field, "fieldId"));
        const Json& tracks = Member(field, "tracks");
        if (id == xdts::cellField)
            return ReadTracks(tracks);
        if (id == xdts::dialogueField) {
            m_sheet.hasDialogue = true;
            for (const Json& track : tracks)
                std::ranges::move(LinesOf(track, m_sheet.frameCount),
                                  std::back_inserter(IsSpoken(track) ? m_sheet.spoken : m_sheet.lines));
            std::ranges::stable_sort(m_sheet.lines, {}, &CExchangeLine::frame);
            std::ranges::stable_sort(m_sheet.spoken, {}, &CExchangeLine::frame);
        }
        m_sheet.hasCamera = m_sheet.hasCamera || (id == xdts::cameraField && !tracks.empty());
        return {};
    }

    // Whether a track of the dialogue is the one that nothing but what is spoken stands in.
    bool IsSpoken(const Json& track) const {
        const std::optional<std::int64_t> number = NumberOf(Member(track, "trackNo"));
        for (const Json& header : Member(m_tables.front(), "timeTableHeaders")) {
            const Json& names = Member(header, "names");
            if (number && *number >= 0 && NumberOf(Member(header, "fieldId")) == xdts::dialogueField &&
                names.is_array() && static_cast<std::size_t>(*number) < names.size())
                return TextOf(names[static_cast<std::size_t>(*number)]) == xdts::spokenTrack;
        }
        return false;
    }

    CStatus ReadTracks(const Json& tracks) {
        for (const Json& track : tracks) {
            const std::optional<std::int64_t> number = NumberOf(Member(track, "trackNo"));
            if (!number || *number < 0)
                continue;
            if (*number >= mostExchangeTracks)
                return CStatus::Failure(tooLarge);
            const auto index = static_cast<std::size_t>(*number);
            AddTracksUpTo(index + 1);
            ReadCells(track, m_sheet.frameCount, m_sheet.tracks[index]);
        }
        return {};
    }

    void AddTracksUpTo(std::size_t count) {
        while (m_sheet.tracks.size() < count)
            m_sheet.tracks.push_back({"Track " + std::to_string(m_sheet.tracks.size() + 1),
                                      std::vector<std::string>(static_cast<std::size_t>(m_sheet.frameCount))});
    }

    // A track may have a name and no exposure.
    void ReadNames(const Json& headers) {
        for (const Json& header : headers) {
            const Json& names = Member(header, "names");
            if (NumberOf(Member(header, "fieldId")) != xdts::cellField || !names.is_array())
                continue;
            const std::size_t count = std::min<std::size_t>(names.size(), mostExchangeTracks);
            AddTracksUpTo(count);
            for (std::size_t track = 0; track < count; ++track)
                if (names[track].is_string())
                    m_sheet.tracks[track].name = TextOf(names[track]);
        }
    }

    const Json& m_tables;
    CExchangeSheet m_sheet;
};

// The first line without a byte order mark and carriage return; the rest is JSON.
std::optional<std::string_view> JsonOf(std::string_view text) {
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    if (text.starts_with(mark))
        text.remove_prefix(mark.size());
    const std::size_t end = text.find('\n');
    std::string_view line = text.substr(0, end);
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    if (end == std::string_view::npos || line != xdts::firstLine)
        return std::nullopt;
    return text.substr(end + 1);
}

} // namespace

CStatus ReadXdts(std::span<const std::uint8_t> file, CExchangeSheet& sheet) {
    const auto text = JsonOf({reinterpret_cast<const char*>(file.data()), file.size()});
    if (!text || file.size() > mostExchangeBytes)
        return CStatus::Failure(noSheet);
    const Json parsed = Json::parse(*text, nullptr, false);
    if (parsed.is_discarded())
        return CStatus::Failure("The time sheet is damaged");
    CXdtsReader reader(parsed);
    CStatus read = reader.Read();
    if (read)
        sheet = reader.Take();
    return read;
}

} // namespace velmor
