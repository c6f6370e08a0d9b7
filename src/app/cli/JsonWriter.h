#pragma once

#include <concepts>
#include <ostream>
#include <string>
#include <string_view>

namespace velmor {

/// Writes indented JSON as it is told what comes, without holding it: a sheet has a million values. The text is
/// what nlohmann's dump(2) makes of the same values; bytes that are no UTF-8 become replacement characters.
class CJsonWriter {
public:
    explicit CJsonWriter(std::ostream& out) : m_out(out) {}
    CJsonWriter(const CJsonWriter&) = delete;
    CJsonWriter& operator=(const CJsonWriter&) = delete;
    ~CJsonWriter() { Flush(); }

    void BeginObject() { Begin('{'); }
    void EndObject() { End('}'); }
    void BeginArray() { Begin('['); }
    void EndArray() { End(']'); }
    /// The name of what comes next, in an object. Of printable ASCII without quotation marks and backslashes.
    CJsonWriter& Key(std::string_view name);

    void Write(std::string_view text);
    void Write(double number);
    void Write(std::integral auto number) {
        BeginValue();
        m_text += std::to_string(number);
    }
    void Write(std::string_view key, const auto& value) { Key(key).Write(value); }

private:
    void Begin(char bracket);
    void End(char bracket);
    /// Puts what stands before a value of an array.
    void BeginValue();
    void BreakLine();
    void Flush();

    std::ostream& m_out;
    std::string m_text; ///< not yet written out
    std::size_t m_depth = 0;
    bool m_isFirst = true; ///< of the innermost array or object
    bool m_hasKey = false;
};

} // namespace velmor
