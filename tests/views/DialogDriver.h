#pragma once

#include "qt/ModalDriver.h"
#include "views/dialogs/Dialog.h"
#include "views/prompter/QtPrompter.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QTest>
#include <string>

namespace velmor::testing {

/// A window with the prompter whose dialogs are under test.
class CDialogFixture : public ::testing::Test {
protected:
    CDialogFixture() { window.show(); }

    QWidget window;
    CQtPrompter prompter{window};
};

/// Types over what a field shows.
inline void Type(QWidget& dialog, const char* name, const QString& text) {
    auto& edit = Child<QLineEdit>(dialog, name);
    edit.setFocus();
    edit.selectAll();
    QTest::keyClick(&edit, Qt::Key_Delete);
    QTest::keyClicks(&edit, text);
}

inline std::string TextOf(QWidget& dialog, const char* name) {
    return Child<QLineEdit>(dialog, name).text().toStdString();
}

inline std::string LabelOf(QWidget& dialog, const char* name) {
    return Child<QLabel>(dialog, name).text().toStdString();
}

inline void PressOk(QDialog& dialog) {
    dynamic_cast<CDialog&>(dialog).OkButton().click();
}

/// Chooses in a group of radio buttons.
inline void Choose(QWidget& dialog, const char* group, int index) {
    Child<QWidget>(dialog, group).findChildren<QRadioButton*>().at(index)->click();
}

} // namespace velmor::testing
