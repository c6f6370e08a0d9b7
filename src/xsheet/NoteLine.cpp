#include "xsheet/NoteLine.h"

#include <charconv>
#include <optional>

namespace velmor {

namespace {

constexpr int mostNumber = 1000000000;

std::optional<char> UnescapedLetter(char letter) {
    switch (letter) {
    case '\\':
        return '\\';
    case 'n':
        return '\n';
    case 't':
        return '\t';
    default:
        return std::nullopt;
    }
}

} // namespace

void CNoteLines::Add(int number) {
    m_text += '\t';
    m_text += std::to_string(number);
}

void CNoteLines::Add(std::string_view text) {
    m_text += '\t';
    for (const char letter : text)
        if (letter == '\\')
            m_text += "\\\\";
        else if (letter == '\n')
            m_text += "\\n";
        else if (letter == '\t')
            m_text += "\\t";
        else
            m_text += letter;
}

std::string_view CNoteFields::TakeWord() {
    if (m_isAtEnd)
        m_failed = true;
    if (m_failed)
        return {};
    const std::size_t end = m_rest.find('\t');
    const std::string_view word = m_rest.substr(0, end);
    m_isAtEnd = end == std::string_view::npos;
    m_rest.remove_prefix(m_isAtEnd ? m_rest.size() : end + 1);
    return word;
}

int CNoteFields::TakeNumber() {
    const std::string_view word = TakeWord();
    int number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    if (error != std::errc() || end != word.data() + word.size() || number < -mostNumber || number > mostNumber)
        m_failed = true;
    return m_failed ? 0 : number;
}

std::string CNoteFields::TakeText() {
    const std::string_view word = TakeWord();
    std::string text;
    text.reserve(word.size());
    for (std::size_t i = 0; i < word.size(); ++i) {
        if (word[i] != '\\') {
            text += word[i];
            continue;
        }
        const std::optional<char> letter = ++i < word.size() ? UnescapedLetter(word[i]) : std::nullopt;
        m_failed = m_failed || !letter;
        text += letter.value_or('?');
    }
    return m_failed ? std::string() : text;
}

} // namespace velmor
