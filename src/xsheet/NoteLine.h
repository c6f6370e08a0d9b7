#pragma once

#include <string>
#include <string_view>

namespace velmor {

/// Writes lines of a kind and its fields with tabs between them.
class CNoteLines {
public:
    template<class... Field>
    void Line(std::string_view kind, const Field&... fields) {
        m_text += kind;
        (Add(fields), ...);
        m_text += '\n';
    }
    /// Whole lines as they are.
    void Append(std::string_view lines) { m_text += lines; }

    const std::string& Text() const { return m_text; }

private:
    void Add(int number);
    void Add(std::string_view text);

    std::string m_text;
};

/// Reads the fields of such a line in their order. One that is missing or not what is asked for gives 0 or an empty
/// text, and Failed() for good.
class CNoteFields {
public:
    explicit CNoteFields(std::string_view line) : m_rest(line) {}

    /// From -10^9 to 10^9.
    int TakeNumber();
    std::string TakeText();
    /// A text without its escapes undone.
    std::string_view TakeWord();

    bool Failed() const { return m_failed; }
    /// Whether all was well and nothing is left.
    bool IsAtEnd() const { return !m_failed && m_isAtEnd; }

private:
    std::string_view m_rest;
    bool m_isAtEnd = false;
    bool m_failed = false;
};

} // namespace velmor
