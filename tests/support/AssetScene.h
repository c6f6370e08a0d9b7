#pragma once

#include "XSheetScene.h"
#include "scene/AssetOperations.h"
#include "scene/AssetTransforms.h"
#include "scene/ImportOperations.h"
#include "scene/PaletteOperations.h"
#include "scene/SceneLifecycle.h"
#include "scene/SceneSaving.h"

#include <string>
#include <vector>

namespace velmor::testing {

/// An open scene with the operations on its assets, cel folders "Man" (the current one) and "Cat", and nothing in
/// them yet.
class CAssetScene : public CXSheetScene {
protected:
    CAssetScene() {
        model.folderName = "Man";
        for (const char* name : {"Man", "Cat", "_Pictures_", "_Sounds_"})
            static_cast<void>(CreateFolder(model.Paths().SceneFolder() / name));
    }

    Path CelFile(const std::string& name) const { return model.Paths().CelFile("Man", name); }
    Path PictureFile(const std::string& name) const { return model.Paths().PictureFile(name); }
    /// A white cel or picture with `corner` in its bottom left pixel.
    void MakeCel(const Path& file, CColor corner, int width = 20, int height = 10) {
        CCelImg image;
        EXPECT_TRUE(image.CreateCel(width, height, file));
        image.SetColorAt(0, 0, corner);
        EXPECT_TRUE(image.Save());
    }
    void MakePicture(const std::string& name, CColor corner, int width = 20, int height = 10) {
        CCelImg image;
        EXPECT_TRUE(image.CreatePicture(width, height, PictureFile(name)));
        image.SetColorAt(0, 0, corner);
        EXPECT_TRUE(image.Save());
    }
    static CCelImg Load(const Path& file) {
        CCelImg image;
        EXPECT_TRUE(image.Load(file));
        return image;
    }
    /// In the cel editor, with a change of the pixel beside the corner that is not saved yet.
    void Edit(const Path& file, CColor change) {
        model.celImg = Load(file);
        model.celImg.SetColorAt(1, 0, change);
        model.celImg.SetModified(true);
    }
    void Select(SourceMode kind, std::vector<std::string> names) {
        model.sourceMode = kind;
        model.sourceSelection = std::move(names);
    }
    void Expose(int level, int frame, const std::string& celFolder, const std::string& name) {
        static_cast<void>(
            scene.xsheet.MutableCell(level, frame).Set(model.Paths().SceneFolder(), celFolder, name, {100, 100}));
    }
    /// Something that no user can write, replace or delete like a file.
    static void PutInTheWay(const Path& file) {
        std::filesystem::remove(file);
        static_cast<void>(CreateFolder(file / "x"));
    }

    static constexpr CColor red{0, 0, 255, 255};
    static constexpr CColor blue{255, 0, 0, 255};
    static constexpr CColor white{255, 255, 255, 255};

    CPaletteOperations palettes{Context()};
    CSceneSaving saving{Context()};
    CSceneLifecycle lifecycle{Context(), palettes, sounds, saving};
    CImportOperations imports{Context(), lifecycle};
    CAssetOperations assets{Context(), lifecycle, imports, sounds};
    CAssetTransforms transforms{Context()};
};

} // namespace velmor::testing
