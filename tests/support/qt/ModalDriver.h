#pragma once

#include <QApplication>
#include <QDialog>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <gtest/gtest.h>
#include <string>

namespace velmor::testing {

/// Runs `action`, which opens a modal dialog, and hands the dialog to `use` as soon as it is up. A dialog that
/// `use` leaves open is rejected. Fails when no dialog comes.
inline void WithDialog(const std::function<void()>& action, const std::function<void(QDialog&)>& use) {
    bool used = false;
    QTimer driver;
    driver.setInterval(1);
    QObject::connect(&driver, &QTimer::timeout, &driver, [&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr)
            return;
        driver.stop();
        used = true;
        use(*dialog);
        if (dialog->isVisible())
            dialog->reject();
    });
    driver.start();
    action();
    EXPECT_TRUE(used) << "no dialog was opened";
}

/// The child of a class and object name; the test fails where there is none.
template<class Widget>
Widget& Child(QWidget& parent, const char* name) {
    auto* child = parent.findChild<Widget*>(name);
    if (child == nullptr)
        throw std::runtime_error(std::string("there is no child named ") + name);
    return *child;
}

} // namespace velmor::testing
