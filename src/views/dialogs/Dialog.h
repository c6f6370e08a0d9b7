#pragma once

#include <QDialog>
#include <QRect>
#include <QString>
#include <optional>

class QDialogButtonBox;
class QFormLayout;
class QLineEdit;
class QPushButton;
class QVBoxLayout;

namespace velmor {

/// What all dialogs share: a body, a row of buttons below it, and the rule that OK closes only when the values are
/// accepted. A dialog that can be resized keeps its size, under its object name, for the run of the program.
class CDialog : public QDialog {
public:
    CDialog(QWidget* parent, const QString& title);

    QPushButton& OkButton();
    QPushButton& CancelButton();

    void accept() override;
    /// Runs the dialog modally; wait cursors rest meanwhile.
    int exec() override;

    /// Opens the dialog so that `view`, in screen coordinates, stays in sight if there is room. One that was moved
    /// before it is shown stays where it is.
    void PlaceBeside(const QRect& view) { m_beside = view; }

protected:
    /// Asked on OK with the dialog still open; false keeps it so. Whoever refuses has said why.
    virtual bool Accepts() { return true; }

    QVBoxLayout& Body() { return *m_body; }
    /// Adds a form to the body: labels on the left, fields on the right.
    QFormLayout& AddForm();
    /// A line of muted text that explains.
    void AddHint(const QString& text);
    /// Adds a button to the row of buttons, apart from those that close the dialog; Return does not press it unless
    /// it has the focus.
    QPushButton& AddButton(const QString& name, const QString& text, const QString& toolTip);
    /// For a dialog with one way out only.
    void RemoveCancel();
    /// A field that cannot be changed looks like the dialog around it and can still be read and copied.
    static void SetReadOnly(QLineEdit& edit, bool readOnly);
    /// Puts the user where something is to be entered again.
    static void EnterAgain(QLineEdit& edit);

    void showEvent(QShowEvent* event) override;

private:
    void FocusFirstField();

    QVBoxLayout* m_body;
    QDialogButtonBox* m_buttons;
    std::optional<QRect> m_beside; ///< what it should not cover
};

} // namespace velmor
