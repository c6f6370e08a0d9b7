#include "platform/files/Profile.h"

// The library's code is compiled here and nowhere else.
#define SI_NO_CONVERSION
#define SI_IMPLEMENTATION
#include <SimpleIni.h>

#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>

namespace velmor {

namespace {

constexpr std::uint64_t longestProfile = std::uint64_t{1} << 24;

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

bool IsControl(char c) {
    return static_cast<unsigned char>(c) < 0x20;
}

bool StandsAsItIs(std::string_view value) {
    if (value.empty())
        return true;
    for (const char c : value)
        if (IsControl(c))
            return false;
    return !IsBlank(value.front()) && !IsBlank(value.back()) && value.front() != '"';
}

// A line of the file keeps neither blanks at its ends nor control characters. Such a value, and one that starts
// with a quotation mark, is written in quotation marks; inside them a backslash stands before a quotation mark and
// a backslash, and before x and two hexadecimal digits of a control character.
std::string ToLine(std::string_view value) {
    if (StandsAsItIs(value))
        return std::string(value);
    constexpr std::string_view digits = "0123456789abcdef";
    std::string line = "\"";
    for (const char c : value) {
        if (IsControl(c)) {
            line += "\\x";
            line += digits[static_cast<unsigned char>(c) >> 4];
            line += digits[static_cast<unsigned char>(c) & 15];
        } else {
            if (c == '"' || c == '\\')
                line += '\\';
            line += c;
        }
    }
    return line + '"';
}

// Takes what follows a backslash off the front of `text`; nothing when ToLine() does not write it.
std::optional<char> TakeEscaped(std::string_view& text) {
    if (text.empty())
        return std::nullopt;
    const char kind = text.front();
    text.remove_prefix(1);
    if (kind == '"' || kind == '\\')
        return kind;
    if (kind != 'x' || text.size() < 2)
        return std::nullopt;
    std::uint8_t code = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + 2, code, 16);
    if (error != std::errc{} || end != text.data() + 2)
        return std::nullopt;
    text.remove_prefix(2);
    return static_cast<char>(code);
}

// Undoes ToLine(); a line that it does not write is the value as it stands.
std::string FromLine(std::string_view line) {
    if (line.size() < 2 || line.front() != '"' || line.back() != '"')
        return std::string(line);
    std::string value;
    std::string_view rest = line.substr(1, line.size() - 2);
    while (!rest.empty()) {
        char c = rest.front();
        rest.remove_prefix(1);
        if (c == '\\') {
            const std::optional<char> escaped = TakeEscaped(rest);
            if (!escaped)
                return std::string(line);
            c = *escaped;
        }
        value += c;
    }
    return value;
}

} // namespace

class CProfile::CStore {
public:
    CStore() : m_ini(true, false, false) { m_ini.SetSpaces(false); }

    void Load(std::span<const std::uint8_t> bytes) {
        m_ini.LoadData(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    }
    std::optional<std::string> Find(const std::string& section, const std::string& key) const {
        const char* line = m_ini.GetValue(section.c_str(), key.c_str(), nullptr);
        return line ? std::optional(FromLine(line)) : std::nullopt;
    }
    bool Set(const std::string& section, const std::string& key, std::string_view value) {
        return m_ini.SetValue(section.c_str(), key.c_str(), ToLine(value).c_str()) >= 0;
    }
    std::optional<std::string> Text() const {
        std::string text;
        return m_ini.Save(text) >= 0 ? std::optional(std::move(text)) : std::nullopt;
    }

private:
    CSimpleIniCaseA m_ini;
};

CProfile::CProfile() : m_store(std::make_unique<CStore>()) {}

CProfile::CProfile(Path file) : m_file(std::move(file)), m_store(std::make_unique<CStore>()) {
    if (const std::optional<CFileBytes> bytes = ReadWholeFile(m_file, longestProfile))
        m_store->Load(bytes->Span());
}

CProfile::CProfile(CProfile&&) noexcept = default;
CProfile& CProfile::operator=(CProfile&&) noexcept = default;
CProfile::~CProfile() = default;

int CProfile::GetInt(const std::string& section, const std::string& key, int defaultValue) const {
    const std::string text = GetString(section, key, "");
    std::int32_t value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc{} && end == text.data() + text.size() ? value : defaultValue;
}

std::string CProfile::GetString(const std::string& section, const std::string& key,
                                const std::string& defaultValue) const {
    return m_store->Find(section, key).value_or(defaultValue);
}

bool CProfile::WriteInt(const std::string& section, const std::string& key, int value) {
    return WriteString(section, key, std::to_string(value));
}

bool CProfile::WriteString(const std::string& section, const std::string& key, const std::string& value) {
    return m_store->Set(section, key, value) && Save();
}

bool CProfile::Save() const {
    if (m_file.empty())
        return true;
    const std::optional<std::string> text = m_store->Text();
    return text && CreateFolder(m_file.has_parent_path() ? m_file.parent_path() : Path(".")) &&
           WriteFileAtomically(m_file, {reinterpret_cast<const std::uint8_t*>(text->data()), text->size()});
}

} // namespace velmor
