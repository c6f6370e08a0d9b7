#include "app/cli/JsonWriter.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

namespace velmor {

namespace {

constexpr std::size_t bytesAtOnce = 1 << 16;

bool IsPlain(std::string_view text) {
    return std::ranges::all_of(text, [](char c) { return c >= ' ' && c < 0x7f && c != '"' && c != '\\'; });
}

// Whole numbers that are written without an exponent.
bool IsWhole(double number) {
    constexpr double least = 1e15;
    return std::abs(number) < least && number == std::trunc(number) && !(number == 0 && std::signbit(number));
}

} // namespace

CJsonWriter& CJsonWriter::Key(std::string_view name) {
    BeginValue();
    m_text.append("\"").append(name).append("\": ");
    m_hasKey = true;
    return *this;
}

void CJsonWriter::Write(std::string_view text) {
    BeginValue();
    if (IsPlain(text))
        m_text.append("\"").append(text).append("\"");
    else
        m_text += nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

void CJsonWriter::Write(double number) {
    BeginValue();
    if (IsWhole(number))
        m_text.append(std::to_string(static_cast<long long>(number))).append(".0");
    else
        m_text += nlohmann::json(number).dump();
}

void CJsonWriter::Begin(char bracket) {
    BeginValue();
    m_text += bracket;
    ++m_depth;
    m_isFirst = true;
}

void CJsonWriter::End(char bracket) {
    --m_depth;
    if (!m_isFirst)
        BreakLine();
    m_text += bracket;
    m_isFirst = false;
    if (m_text.size() > bytesAtOnce)
        Flush();
}

void CJsonWriter::BeginValue() {
    if (m_hasKey) {
        m_hasKey = false;
        return;
    }
    if (!m_isFirst)
        m_text += ',';
    if (m_depth > 0)
        BreakLine();
    m_isFirst = false;
}

void CJsonWriter::BreakLine() {
    m_text += '\n';
    m_text.append(2 * m_depth, ' ');
}

void CJsonWriter::Flush() {
    m_out.write(m_text.data(), static_cast<std::streamsize>(m_text.size()));
    m_text.clear();
}

} // namespace velmor
