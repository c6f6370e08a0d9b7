#include "xsheet/MouthChart.h"

#include <algorithm>
#include <cstdint>
#include <sstream>
#include <string_view>

namespace velmor {

namespace {

constexpr std::size_t mostMouths = 1000;
constexpr std::size_t mostChartBytes = 1 << 16;

// Small letters of ASCII, and of what else Western languages have.
std::string InSmallLetters(std::string text) {
    constexpr unsigned char latinLead = 0xC3; // U+00C0 to U+00FF
    unsigned char before = 0;
    for (char& c : text) {
        const auto byte = static_cast<unsigned char>(c);
        const bool isLarge =
            (byte >= 'A' && byte <= 'Z') || (before == latinLead && byte >= 0x80 && byte <= 0x9E && byte != 0x97);
        if (isLarge)
            c = static_cast<char>(byte + 0x20);
        before = byte;
    }
    return text;
}

CStatus Unreadable(std::size_t line) {
    return CStatus::Failure("The mouth chart cannot be read in its line " + std::to_string(line) +
                            ": it needs \"sounds = drawing\"");
}

std::vector<std::string> WordsOf(const std::string& text) {
    std::istringstream stream(text);
    std::vector<std::string> words;
    for (std::string word; stream >> word;)
        words.push_back(std::move(word));
    return words;
}

} // namespace

CStatus CMouthChart::Parse(const std::string& text, CMouthChart& chart) {
    if (text.size() > mostChartBytes)
        return CStatus::Failure("The mouth chart is too long");
    CMouthChart read;
    std::istringstream lines(text);
    std::size_t number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        const std::size_t equals = line.rfind('=');
        const std::vector<std::string> sounds = WordsOf(line.substr(0, equals));
        if (sounds.empty() && equals == std::string::npos)
            continue;
        if (!sounds.empty() && sounds.front().front() == '#')
            continue;
        const std::vector<std::string> drawing =
            equals == std::string::npos ? std::vector<std::string>() : WordsOf(line.substr(equals + 1));
        if (sounds.empty() || drawing.size() != 1 || read.m_mouths.size() + sounds.size() > mostMouths)
            return Unreadable(number);
        for (const std::string& sound : sounds) {
            if (InSmallLetters(sound) == restWord)
                read.m_rest = drawing.front();
            else
                read.m_mouths.push_back({InSmallLetters(sound), drawing.front()});
        }
    }
    std::ranges::stable_sort(read.m_mouths,
                             [](const CMouth& a, const CMouth& b) { return a.sound.size() > b.sound.size(); });
    chart = std::move(read);
    return {};
}

// The longest sound that fits at each place; what the chart does not know is passed over.
std::vector<std::string> CMouthChart::DrawingsOf(const std::string& text) const {
    const std::string small = InSmallLetters(text);
    std::string_view left = small;
    std::vector<std::string> drawings;
    while (!left.empty()) {
        const auto mouth =
            std::ranges::find_if(m_mouths, [&left](const CMouth& known) { return left.starts_with(known.sound); });
        if (mouth != m_mouths.end())
            drawings.push_back(mouth->drawing);
        left.remove_prefix(mouth != m_mouths.end() ? mouth->sound.size() : 1);
    }
    return drawings;
}

std::vector<std::string> CMouthChart::MouthsOf(const CSpokenLine& line, int hold) const {
    const std::vector<std::string> drawings = DrawingsOf(line.text);
    const auto frames = static_cast<std::size_t>(line.lastFrame - line.firstFrame + 1);
    const auto held = static_cast<std::size_t>(std::max(hold, 1));
    const std::size_t places = (frames + held - 1) / held;
    std::vector<std::string> mouths(frames);
    if (drawings.empty())
        return mouths;
    for (std::size_t frame = 0; frame < frames; ++frame)
        mouths[frame] = drawings[(2 * (frame / held) + 1) * drawings.size() / (2 * places)];
    return mouths;
}

std::vector<std::string> MouthsOf(const CDialogue& dialogue, const CMouthChart& chart, int firstFrame,
                                  int lastFrame, int hold) {
    std::vector<std::string> mouths(static_cast<std::size_t>(std::max(0, lastFrame - firstFrame + 1)),
                                    chart.Rest());
    for (const CSpokenLine& line : dialogue.Lines()) {
        const std::vector<std::string> spoken = chart.MouthsOf(line, hold);
        const int end = std::min(line.lastFrame, lastFrame);
        for (int frame = std::max(line.firstFrame, firstFrame); frame <= end; ++frame)
            mouths[static_cast<std::size_t>(frame - firstFrame)] =
                spoken[static_cast<std::size_t>(frame - line.firstFrame)];
    }
    return mouths;
}

} // namespace velmor
