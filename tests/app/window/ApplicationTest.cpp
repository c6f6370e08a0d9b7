#include "app/window/Application.h"

#include "TempFolder.h"
#include "app/window/MainFrame.h"
#include "qt/ModalDriver.h"

#include <QLabel>
#include <QTest>

namespace velmor::testing {

TEST(ApplicationTest, ASecondStartBringsTheFirstWindowToTheFront) {
    const CTempFolder folder;
    const CProgramFolders folders{folder / "program", folder / "settings", folder / "data"};
    CApplication first(folders);
    ASSERT_TRUE(first.Start(false));
    first.Frame().showMinimized();
    CApplication second(folders);
    WithDialog([&] { EXPECT_FALSE(second.Start(false)); },
               [](QDialog& dialog) {
                   bool told = false;
                   for (const QLabel* label : dialog.findChildren<QLabel*>())
                       told |= label->text().contains("Personal Velmor is already running");
                   EXPECT_TRUE(told);
               });
    EXPECT_TRUE(QTest::qWaitFor([&] { return !first.Frame().isMinimized(); }));
}

} // namespace velmor::testing
