#pragma once

#include "image/paint/ImageChange.h"
#include "xsheet/SceneChange.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace velmor {

/// The bytes of a file that are kept; copies share them. Nothing for a file that is not there.
using KeptFile = std::shared_ptr<const std::vector<std::uint8_t>>;

/// A file of the scene that a step made, replaced, removed or renamed.
struct CFileChange {
    std::string file; ///< from the scene's folder on, with '/'
    KeptFile before;
    KeptFile after;
    std::string movedFrom; ///< for a file that was renamed: its name before. `after` is then not kept
};

/// All that a step changed.
struct CStepChanges {
    CSceneChange scene;
    std::string image; ///< the file of the image that was painted on
    CImageChange painting;
    std::vector<CFileChange> files;

    bool IsEmpty() const { return scene.IsEmpty() && painting.IsEmpty() && files.empty(); }
};

std::vector<std::uint8_t> WriteChanges(const CStepChanges& changes);
/// Nothing when the bytes are not those of changes, or name a file outside the scene's folder.
std::optional<CStepChanges> ReadChanges(std::span<const std::uint8_t> bytes);

/// Whether a name leads to a file of the scene: one or two parts, none of which leads elsewhere.
bool IsSceneFile(const std::string& file);

} // namespace velmor
