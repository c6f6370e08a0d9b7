#include "xsheet/DialogueText.h"

#include "platform/files/TextEncoding.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <numeric>
#include <optional>

namespace velmor {

namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view colon = ": ";

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

std::string_view Trimmed(std::string_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && (IsBlank(text.back()) || text.back() == '\r'))
        text.remove_suffix(1);
    return text;
}

std::optional<int> TakeFrame(std::string_view& text) {
    int frame = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), frame);
    if (error != std::errc() || frame < 1 || frame - 1 > CDialogue::mostFrame)
        return std::nullopt;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return frame - 1;
}

// "12-25 " or "12 " at its beginning; what follows is left of the text.
bool TakeFrames(std::string_view& text, CSpokenLine& line) {
    std::string_view rest = text;
    const std::optional<int> first = TakeFrame(rest);
    std::optional<int> last = first;
    if (first && rest.starts_with('-')) {
        rest.remove_prefix(1);
        last = TakeFrame(rest);
    }
    if (!first || !last || *last < *first || rest.empty() || !IsBlank(rest.front()))
        return false;
    line.firstFrame = *first;
    line.lastFrame = *last;
    text = rest;
    return true;
}

void BlankControls(std::string& text) {
    std::ranges::replace_if(
        text, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
}

void ReadSpoken(std::string_view read, CSpokenLine& line) {
    std::string blanked(read); // what becomes a blank may end the speaker
    BlankControls(blanked);
    std::string_view text = Trimmed(blanked);
    if (const std::size_t end = text.find(colon); end != std::string_view::npos) {
        line.speaker = SpokenText(text.substr(0, end));
        text.remove_prefix(end + colon.size());
    }
    line.text = SpokenText(text);
}

// In characters, of which none is cut in two.
std::size_t LengthOf(std::string_view text) {
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

void Spread(std::vector<CSpokenLine>& lines, int firstFrame, int lastFrame) {
    const std::size_t letters =
        std::accumulate(lines.begin(), lines.end(), std::size_t{0},
                        [](std::size_t sum, const CSpokenLine& line) { return sum + LengthOf(line.text); });
    const auto frames = static_cast<std::size_t>(std::max(0, lastFrame - firstFrame + 1));
    std::size_t before = 0;
    for (CSpokenLine& line : lines) {
        line.firstFrame = firstFrame + static_cast<int>(before * frames / std::max<std::size_t>(letters, 1));
        before += LengthOf(line.text);
        line.lastFrame = firstFrame + static_cast<int>(before * frames / std::max<std::size_t>(letters, 1)) - 1;
    }
    std::erase_if(lines, [](const CSpokenLine& line) { return line.lastFrame < line.firstFrame; });
}

CStatus Unreadable(std::size_t number) {
    return CStatus::Failure("The dialogue cannot be read in its line " + std::to_string(number) +
                            ": it needs frames and a text, as in \"12-25 Ann: Hello\"");
}

CStatus ReadLines(std::string_view text, std::vector<CSpokenLine>& lines, std::size_t& withFrames) {
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = Trimmed(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.empty())
            continue;
        CSpokenLine spoken;
        const bool hasFrames = TakeFrames(line, spoken);
        ReadSpoken(line, spoken);
        withFrames += hasFrames ? 1 : 0;
        lines.push_back(std::move(spoken));
        const bool areAlike = withFrames == 0 || withFrames == lines.size();
        if (!areAlike || lines.back().text.empty() || std::ssize(lines) > CDialogue::mostLines)
            return Unreadable(number);
    }
    return {};
}

} // namespace

std::string SpokenText(std::string_view text) {
    std::string kept(text.substr(0, CDialogue::mostText));
    BlankControls(kept);
    while (!kept.empty() && !IsUtf8(kept))
        kept.pop_back();
    return std::string(Trimmed(kept));
}

std::string WriteDialogueText(const CDialogue& dialogue) {
    std::string text;
    for (const CSpokenLine& line : dialogue.Lines()) {
        text += std::to_string(line.firstFrame + 1);
        if (line.lastFrame != line.firstFrame)
            text.append("-").append(std::to_string(line.lastFrame + 1));
        text.append(" ");
        if (!line.speaker.empty() || line.text.find(colon) != std::string::npos)
            text.append(line.speaker).append(colon);
        text.append(line.text).append("\n");
    }
    return text;
}

CStatus ReadDialogueText(std::string_view text, int firstFrame, int lastFrame, CDialogue& dialogue) {
    if (text.starts_with(byteOrderMark))
        text.remove_prefix(byteOrderMark.size());
    const std::string utf8 = IsUtf8(text) ? std::string(text) : Windows1252ToUtf8(text);
    std::vector<CSpokenLine> lines;
    std::size_t withFrames = 0;
    if (CStatus read = ReadLines(utf8, lines, withFrames); !read)
        return read;
    if (withFrames == 0)
        Spread(lines, firstFrame, lastFrame);
    CDialogue changed = dialogue;
    for (CSpokenLine& line : lines)
        if (!changed.Put(std::move(line)))
            return CStatus::Failure("There are too many lines of dialogue");
    dialogue = std::move(changed);
    return {};
}

std::string SpokenAt(const CSpokenLine& line, int frame) {
    const auto frames = static_cast<std::size_t>(line.lastFrame - line.firstFrame + 1);
    const auto at = static_cast<std::size_t>(frame - line.firstFrame);
    const std::size_t length = LengthOf(line.text);
    // A character stands where its time begins, so that the first one stands at the first frame.
    const std::size_t begin = (at * length + frames - 1) / frames;
    const std::size_t end = ((at + 1) * length + frames - 1) / frames;
    std::string spoken;
    std::size_t character = 0;
    for (const char c : line.text) {
        character += (static_cast<unsigned char>(c) & 0xC0) != 0x80 ? 1 : 0;
        if (character > begin && character <= end)
            spoken.push_back(c);
    }
    return spoken;
}

} // namespace velmor
