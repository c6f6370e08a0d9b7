#include "app/window/PaneHeights.h"

#include <gtest/gtest.h>

namespace velmor::testing {

TEST(PaneHeightsTest, APaneThatIsShownTakesAllThatTheOthersLeave) {
    EXPECT_EQ(DividePanes(cameraHeights, 800), (PaneHeights{760, 20, 20}));
    EXPECT_EQ(DividePanes(xsheetHeights, 800), (PaneHeights{20, 760, 20}));
    EXPECT_EQ(DividePanes(celEditorHeights, 800), (PaneHeights{20, 20, 760}));
    EXPECT_EQ(DividePanes({500, 500, 21}, 800), (PaneHeights{500, 280, 20}));
    EXPECT_EQ(DividePanes({500, 500, 21}, 1300), (PaneHeights{500, 500, 300}));
    EXPECT_EQ(DividePanes({500, 500, 21}, 30), (PaneHeights{20, 20, 20})) << "a window lower than the least";
}

TEST(PaneHeightsTest, SharingShowsTheXsheetWhateverWasShownBefore) {
    EXPECT_EQ(DividePanes(SharedHeights({500, 300, 20}, 800), 800), (PaneHeights{400, 380, 20}));
    EXPECT_EQ(DividePanes(SharedHeights(cameraHeights, 800), 800), (PaneHeights{400, 380, 20}));
    EXPECT_EQ(DividePanes(SharedHeights(xsheetHeights, 800), 800), (PaneHeights{400, 380, 20}));
}

TEST(PaneHeightsTest, APaneOpensBesideThoseThatAreOpen) {
    EXPECT_EQ(DividePanes(OpenedHeights(celEditorHeights, StackedPane::Xsheet, 800), 800),
              (PaneHeights{20, 400, 380}));
    EXPECT_EQ(DividePanes(OpenedHeights(cameraHeights, StackedPane::CelEditor, 800), 800),
              (PaneHeights{400, 20, 380}));
    EXPECT_EQ(DividePanes(OpenedHeights({400, 400, 10}, StackedPane::CelEditor, 900), 900),
              (PaneHeights{225, 225, 450}));
}

} // namespace velmor::testing
