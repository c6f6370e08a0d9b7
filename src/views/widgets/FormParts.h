#pragma once

#include <QString>

class QCheckBox;
class QFrame;
class QGridLayout;
class QGroupBox;
class QLabel;
class QLayout;
class QWidget;

namespace velmor {

struct CCellIdentity;
class CNumberEdit;

// Parts that several dialogs are made of. What they create belongs to the layout's widget once it is in there.

/// A label, to the left of `field` and with its mnemonic.
QLabel* LabelFor(const QString& text, QWidget& field);
/// A label and its field in two columns of a row.
void AddLabeled(QGridLayout& grid, int row, int column, const QString& text, QWidget& field);
/// A label and a value that is only shown, in two columns of a row; `name` is the object's.
void AddShown(QGridLayout& grid, int row, int column, const QString& label, const QString& name,
              const QString& value);
QGroupBox* GroupOf(const QString& title, QLayout* content);
QGroupBox* GroupOf(const QString& title, QWidget* content);

/// Name, folder, frame and level of the cell that a dialog edits, with a line below.
QWidget* IdentityPanel(const CCellIdentity& cel);

/// While `preserve` is checked, `y` is disabled and shows what `x` does.
void KeepAspect(QCheckBox& preserve, CNumberEdit& x, CNumberEdit& y);

} // namespace velmor
