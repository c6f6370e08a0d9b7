#include "views/widgets/NumberEdit.h"

#include "views/widgets/NumberText.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QRegularExpressionValidator>
#include <QToolTip>
#include <limits>

namespace velmor {

namespace {

constexpr int shownDigits = 9;

// Takes what may yet become a number as well: a dialog is never stuck on a half-typed one.
QRegularExpression PatternOf(NumberKind kind) {
    return QRegularExpression(kind == NumberKind::Whole ? R"(\s*[-+]?\d*\s*)"
                                                        : R"(\s*[-+]?\d*([.,]\d*)?([eE][-+]?\d*)?\s*)");
}

QColor Mixed(const QColor& a, const QColor& b, double partOfB) {
    const auto mix = [&](int x, int y) { return static_cast<int>(x + (y - x) * partOfB); };
    return QColor(mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue()));
}

} // namespace

CNumberEdit::CNumberEdit(const QString& name, NumberKind kind) : m_kind(kind) {
    setObjectName(name);
    setValidator(new QRegularExpressionValidator(PatternOf(kind), this));
    setAlignment(Qt::AlignRight);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    connect(this, &QLineEdit::textChanged, this, [this] { Unmark(); });
}

void CNumberEdit::SetValue(double value) {
    m_value = value;
    m_valueText = NumberText(value);
    setText(m_valueText);
}

void CNumberEdit::ShowSameAs(const CNumberEdit& other) {
    m_value = other.m_value;
    m_valueText = other.m_valueText;
    setText(other.text());
}

std::optional<double> CNumberEdit::Value() const {
    const std::optional<double> read = ParseNumber(text());
    return read && text() == m_valueText ? std::optional(m_value) : read;
}

std::optional<int> CNumberEdit::Whole() const {
    return ParseWhole(text());
}

double CNumberEdit::ValueOrNan() const {
    return Value().value_or(std::numeric_limits<double>::quiet_NaN());
}

bool CNumberEdit::HoldsNumber() const {
    return m_kind == NumberKind::Whole ? Whole().has_value() : Value().has_value();
}

bool CNumberEdit::Require(double least, double most) {
    const double value = ValueOrNan();
    if (HoldsNumber() && value >= least && value <= most)
        return true;
    Refuse(
        QString(m_kind == NumberKind::Whole ? "Enter a whole number from %1 to %2" : "Enter a number from %1 to %2")
            .arg(NumberText(least), NumberText(most)));
    return false;
}

bool CNumberEdit::RequireNumber() {
    if (HoldsNumber())
        return true;
    Refuse(m_kind == NumberKind::Whole ? "Enter a whole number" : "Enter a number");
    return false;
}

void CNumberEdit::Mark(const QString& reason) {
    m_marked = true;
    QPalette marked;
    marked.setColor(QPalette::Base, Mixed(palette().color(QPalette::Base), QColor(230, 40, 40), 0.35));
    setPalette(marked);
    setToolTip(reason);
}

void CNumberEdit::Refuse(const QString& reason) {
    Mark(reason);
    setFocus();
    selectAll();
    QToolTip::showText(mapToGlobal(rect().bottomLeft()), reason, this);
}

void CNumberEdit::Unmark() {
    if (!m_marked)
        return;
    m_marked = false;
    setPalette({});
    setToolTip({});
    QToolTip::hideText();
}

void CNumberEdit::BeFirst() {
    setFocus(Qt::TabFocusReason);
    selectAll();
}

void CNumberEdit::keyPressEvent(QKeyEvent* event) {
    const std::optional<double> value = Value();
    const bool up = event->key() == Qt::Key_Up;
    if ((!up && event->key() != Qt::Key_Down) || !value || isReadOnly())
        return QLineEdit::keyPressEvent(event);
    const double step = event->modifiers().testFlag(Qt::ShiftModifier) ? 10 * m_step : m_step;
    setText(NumberText(*value + (up ? step : -step)));
    selectAll();
}

QSize CNumberEdit::sizeHint() const {
    const int width = QLineEdit::minimumSizeHint().width() + fontMetrics().horizontalAdvance('0') * shownDigits;
    return {width, QLineEdit::sizeHint().height()};
}

void RefuseUnreadable(std::initializer_list<CNumberEdit*> edits) {
    for (CNumberEdit* edit : edits)
        if (!edit->RequireNumber())
            return;
}

} // namespace velmor
