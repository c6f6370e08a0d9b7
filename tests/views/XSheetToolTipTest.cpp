#include "SceneAccess.h"
#include "TempFolder.h"
#include "image/CelImg.h"
#include "scene/SceneModel.h"
#include "views/AssetThumbnails.h"
#include "views/xsheet/XSheetToolTips.h"

#include <QImage>
#include <gtest/gtest.h>

namespace velmor::testing {
namespace {

// Blue below, and transparent above.
CCelImg TwoRows(int width, const Path& path) {
    CCelImg image;
    EXPECT_TRUE(image.CreatePicture(width, 2, path));
    for (int x = 0; x < width; ++x) {
        image.SetColorAt(x, 0, {255, 0, 0, 255});
        image.SetColorAt(x, 1, {0, 0, 255, 0});
    }
    EXPECT_TRUE(image.SavePicture());
    return image;
}

TEST(AssetThumbnailsTest, TheBottomRowOfAnImageIsTheLastOnTheScreen) {
    const CTempFolder folder;
    const QImage image = ToQImage(TwoRows(3, folder / "a.rgba"));
    EXPECT_EQ(image.pixelColor(2, 1), QColor(0, 0, 255));
    EXPECT_EQ(image.pixelColor(2, 0).alpha(), 0);
    EXPECT_TRUE(ToQImage(CCelImg()).isNull());
}

TEST(AssetThumbnailsTest, ThumbnailsFitAndFollowTheirFiles) {
    const CTempFolder folder;
    const Path file = folder / "a.rgba";
    TwoRows(40, file);
    CAssetThumbnails thumbnails(2);
    const QPixmap small = thumbnails.Find(file);
    EXPECT_EQ(small.deviceIndependentSize(), QSizeF(40, 2)) << "never larger than the image";
    EXPECT_EQ(small.size(), QSize(80, 4));
    const QColor above = small.toImage().pixelColor(0, 0);
    EXPECT_EQ(above.red(), above.blue()) << "the checkerboard shows through";
    EXPECT_EQ(thumbnails.Find(file).cacheKey(), small.cacheKey());

    CCelImg wide;
    ASSERT_TRUE(wide.CreatePicture(800, 300, file));
    ASSERT_TRUE(wide.SavePicture());
    EXPECT_EQ(thumbnails.Find(file).deviceIndependentSize(), QSizeF(160, 60));

    WriteBytes(file, std::vector<std::uint8_t>(100));
    EXPECT_TRUE(thumbnails.Find(file).isNull());
    static_cast<void>(RemoveFile(file));
    EXPECT_TRUE(thumbnails.Find(file).isNull());
}

TEST(AssetThumbnailsTest, TheOldestAreForgotten) {
    const CTempFolder folder;
    CAssetThumbnails thumbnails(1);
    const auto fileOf = [&](std::size_t i) { return folder / (std::to_string(i) + ".rgba"); };
    for (std::size_t i = 0; i <= CAssetThumbnails::mostKept; ++i)
        TwoRows(2, fileOf(i));
    const qint64 first = thumbnails.Find(fileOf(0)).cacheKey();
    const qint64 second = thumbnails.Find(fileOf(1)).cacheKey();
    for (std::size_t i = 2; i < CAssetThumbnails::mostKept; ++i)
        thumbnails.Find(fileOf(i));
    EXPECT_EQ(thumbnails.Find(fileOf(0)).cacheKey(), first);
    thumbnails.Find(fileOf(CAssetThumbnails::mostKept));
    EXPECT_EQ(thumbnails.Find(fileOf(0)).cacheKey(), first) << "used a moment ago";
    EXPECT_NE(thumbnails.Find(fileOf(1)).cacheKey(), second);
}

TEST(XSheetToolTipTest, SaysHowACelIsPlaced) {
    CSceneModel model;
    CScene& scene = testing::CSceneAccess::Of(model);
    scene.xsheet = CXSheet(2, 5);
    scene.xsheet.SetLevelName(1, "<Sky>");
    scene.xsheet.MutableCell(1, 3) =
        CXSheetCell::FromFile("Man & dog", "12b", {10.5, -3, 0.5, 0.5, -0.5}, 25, 1, 4, {320, 200});
    QPixmap thumbnail(4, 3);
    thumbnail.fill(Qt::red);
    const QString text = CellToolTip(model, {1, 3}, thumbnail);
    for (const char* part :
         {"12b", "Man &amp; dog", "320 x 200", "Level 2 \"&lt;Sky&gt;\"", "frame 4", "10.5, -3", "scale 50%",
          "rotation -28", "Transparency 25%", "Blur 1 x 4", "<img width=4 height=3"})
        EXPECT_TRUE(text.contains(part)) << part << " in " << text.toStdString();

    scene.xsheet.MutableCell(0, 0) = CXSheetCell::FromFile("_Pictures_", "back", {}, 0, 1, 1, {8, 8});
    const QString plain = CellToolTip(model, {0, 0}, {});
    EXPECT_TRUE(plain.contains("picture"));
    for (const char* part : {"scale", "rotation", "Transparency", "Blur", "img", "_Pictures_"})
        EXPECT_FALSE(plain.contains(part)) << part;
}

} // namespace
} // namespace velmor::testing
