#include "app/PaneHeights.h"

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

} // namespace velmor::testing
