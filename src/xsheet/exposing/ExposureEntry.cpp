#include "xsheet/exposing/ExposureEntry.h"

namespace velmor {

namespace {

using Key = CEntryKey::Kind;
using Deed = CTypedExposure::Kind;

constexpr std::size_t mostDigits = 12;     ///< of a drawing
constexpr std::size_t mostCountDigits = 4; ///< of frames

} // namespace

bool CExposureEntry::Takes(CEntryKey key) const {
    switch (key.kind) {
    case Key::Digit:
    case Key::Dot:
    case Key::Minus:
    case Key::Plus:
        return true;
    case Key::ControlDigit:
        return IsOpen() || key.digit > 0;
    default:
        return IsOpen();
    }
}

CExposureEntry::Outcome CExposureEntry::Press(CEntryKey key) {
    if (!Takes(key))
        return Outcome::NotTaken;
    if (key.kind == Key::Enter)
        return Outcome::Entered;
    if (!IsOpen())
        Begin(key);
    else
        GoOn(key);
    return IsOpen() ? Outcome::Taken : Outcome::GivenUp;
}

void CExposureEntry::Begin(CEntryKey key) {
    switch (key.kind) {
    case Key::Dot:
        m_kind = Deed::Empty;
        break;
    case Key::Minus:
        m_kind = Deed::Hold;
        break;
    case Key::Plus:
        m_kind = Deed::Lengthen;
        break;
    default:
        m_kind = key.kind == Key::Digit ? Deed::Drawing : Deed::SetLength;
        AddDigit(key.digit);
    }
}

// A count has no zeros in front; a drawing may.
void CExposureEntry::AddDigit(int digit) {
    const bool isDrawing = m_kind == Deed::Drawing;
    m_choice = 0;
    if (m_digits.size() < (isDrawing ? mostDigits : mostCountDigits) &&
        (isDrawing || digit > 0 || !m_digits.empty()))
        m_digits += static_cast<char>('0' + digit);
}

void CExposureEntry::GoOn(CEntryKey key) {
    switch (key.kind) {
    case Key::Digit:
    case Key::ControlDigit:
        return AddDigit(key.digit);
    case Key::Back:
        --m_choice;
        return;
    case Key::On:
        ++m_choice;
        return;
    case Key::Backspace:
        m_choice = 0;
        if (!m_digits.empty())
            m_digits.pop_back();
        else
            return Clear();
        if (m_digits.empty() && (m_kind == Deed::Drawing || m_kind == Deed::SetLength))
            Clear();
        return;
    case Key::Escape:
        return Clear();
    default:
        return; // a sign stands at the beginning or nowhere
    }
}

std::string CExposureEntry::Text() const {
    switch (m_kind) {
    case Deed::Empty:
        return "." + m_digits;
    case Deed::Hold:
        return "-" + m_digits;
    case Deed::Lengthen:
        return "+" + m_digits;
    case Deed::SetLength:
        return "=" + m_digits;
    default:
        return m_digits;
    }
}

CTypedExposure CExposureEntry::Typed() const {
    if (m_kind == Deed::Drawing)
        return {m_kind, m_digits, 0};
    return {m_kind, "", m_digits.empty() ? 0 : std::stoi(m_digits)};
}

} // namespace velmor
