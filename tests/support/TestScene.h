#pragma once

#include "TempFolder.h"
#include "image/CelImg.h"
#include "render/FrameRequests.h"
#include "sound/SoundFile.h"
#include "xsheet/XSheetFile.h"

#include <gtest/gtest.h>
#include <string>

namespace velmor::testing {

/// A small scene on disk, made without the document: three levels of coloured squares that move over a picture, a
/// moving camera, a sound. 64 x 48 pixels, 10 frames.
class CTestScene {
public:
    static constexpr int frames = 10;
    static constexpr int width = 64;
    static constexpr int height = 48;

    explicit CTestScene(const std::filesystem::path& database, const std::string& sceneName = "Test")
        : folder(database / (sceneName + ".scene")), name(sceneName) {
        data.geometry = {width, height, 24, MakeColorRef(250, 240, 230)};
        data.xsheet = CXSheet(3, frames);
        static_cast<void>(CreateFolder(folder / "A"));
        static_cast<void>(CreateFolder(folder / "_Pictures_"));
        static_cast<void>(CreateFolder(folder / "_Sounds_"));
        SaveSquare("1", {0, 0, 255, 255});
        SaveSquare("2", {0, 255, 0, 255});
        SavePicture();
        for (int frame = 0; frame < frames; ++frame) {
            Expose(0, frame, "A", frame < 5 ? "1" : "2", 20 + 3 * frame, 24);
            Expose(2, frame, "_Pictures_", "back", 32, 24);
            data.camera.MutableAt(frame) = {frame * 1.5, -frame * 0.5, frame * 0.02, 1 + frame * 0.05};
        }
        PlaceSound("tick", 2);
        Save();
    }

    void Save() const { EXPECT_TRUE(SaveXSheet(folder / (name + ".xsheet"), data)); }

    void Expose(int level, int frame, const std::string& celFolder, const std::string& cel, int x, int y) {
        EXPECT_TRUE(data.xsheet.MutableCell(level, frame).Set(folder, celFolder, cel, data.geometry.Frame()));
        static_cast<void>(data.xsheet.MutableCell(level, frame).SetPos(x, y));
    }

    const std::filesystem::path folder;
    const std::string name;
    CScene data;

private:
    // A square of paint with a black outline on transparent paper.
    void SaveSquare(const std::string& cel, CColor color) const {
        CCelImg image;
        EXPECT_TRUE(image.CreateCel(20, 20, folder / "A" / (cel + ".bit")));
        for (int y = 0; y < 20; ++y)
            for (int x = 0; x < 20; ++x) {
                const bool outside = x < 2 || y < 2 || x > 17 || y > 17;
                const bool line = !outside && (x == 2 || y == 2 || x == 17 || y == 17);
                image.SetLine(x, y, line);
                image.SetColorAt(x, y, outside ? CColor{128, 128, 128, 0} : line ? CColor{0, 0, 0, 255} : color);
            }
        EXPECT_TRUE(image.SaveCel());
    }

    void SavePicture() const {
        CCelImg image;
        EXPECT_TRUE(image.CreatePicture(50, 40, folder / "_Pictures_" / "back.rgba"));
        for (int y = 0; y < 40; ++y)
            for (int x = 0; x < 50; ++x)
                image.SetColorAt(x, y,
                                 {static_cast<std::uint8_t>(x * 5), static_cast<std::uint8_t>(y * 6), 90, 255});
        EXPECT_TRUE(image.SavePicture());
    }

    void PlaceSound(const std::string& sound, int frame) {
        std::vector<std::uint8_t> samples(3000);
        for (std::size_t i = 0; i < samples.size(); ++i)
            samples[i] = static_cast<std::uint8_t>(i * 7);
        EXPECT_TRUE(WriteSound(folder / "_Sounds_" / (sound + ".sound"), samplesPerSecond, samples).done);
        EXPECT_TRUE(data.sounds.Place(frame, sound));
    }
};

} // namespace velmor::testing
