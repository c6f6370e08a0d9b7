#pragma once

#include <QLineEdit>
#include <initializer_list>
#include <optional>

namespace velmor {

enum class NumberKind { Decimal, Whole };

/// A field for a number. It keeps other characters out but knows no range: what may be entered is for the values'
/// owner to say.
class CNumberEdit : public QLineEdit {
public:
    /// `name` is the object's.
    CNumberEdit(const QString& name, NumberKind kind);

    void SetValue(double value);
    /// Shows what another field does.
    void ShowSameAs(const CNumberEdit& other);

    /// Nothing when the text is no number. A value that was set and not edited comes back exactly, whatever of it
    /// is shown.
    std::optional<double> Value() const;
    std::optional<int> Whole() const;
    /// The value, and not a number where there is none: no rule takes it.
    double ValueOrNan() const;

    /// Whether the field holds a number (a whole one, by its kind) from `least` to `most`. If not, it is refused.
    [[nodiscard]] bool Require(double least, double most);
    /// The same without a range.
    [[nodiscard]] bool RequireNumber();
    /// Shows the field as wrong, with the reason for those who point at it, until its text changes.
    void Mark(const QString& reason);
    /// Marks the field, says why and brings the user there.
    void Refuse(const QString& reason);
    bool IsMarked() const { return m_marked; }

    /// Makes this the field that a dialog opens on, with its text selected.
    void BeFirst();

    /// What the arrow keys up and down add and take away; with Shift it is ten times as much. 1 unless set.
    void SetStep(double step) { m_step = step; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    bool HoldsNumber() const;
    void Unmark();

    NumberKind m_kind;
    double m_step = 1;
    double m_value = 0;
    QString m_valueText; ///< what is shown for m_value
    bool m_marked = false;
};

/// Refuses the first of the fields that cannot be read, if any.
void RefuseUnreadable(std::initializer_list<CNumberEdit*> edits);

} // namespace velmor
