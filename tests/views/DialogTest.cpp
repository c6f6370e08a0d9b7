#include "views/dialogs/Dialog.h"
#include "qt/ModalDriver.h"

#include <QPushButton>

namespace velmor::testing {
namespace {

class CPickyDialog : public CDialog {
public:
    CPickyDialog() : CDialog(nullptr, "Picky") {}
    bool acceptable = false;
    int asked = 0;

protected:
    bool Accepts() override {
        ++asked;
        return acceptable;
    }
};

TEST(DialogTest, OkClosesOnlyWithAcceptedValues) {
    CPickyDialog dialog;
    int result = -1;
    WithDialog([&] { result = dialog.exec(); },
               [&](QDialog&) {
                   dialog.OkButton().click();
                   EXPECT_TRUE(dialog.isVisible());
                   dialog.acceptable = true;
                   dialog.OkButton().click();
               });
    EXPECT_EQ(result, QDialog::Accepted);
    EXPECT_EQ(dialog.asked, 2);
}

} // namespace
} // namespace velmor::testing
