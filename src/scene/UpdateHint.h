#pragma once

namespace velmor {

/// What a change touches, told to every view. The values are those that all senders and views agree on.
enum class UpdateHint : unsigned {
    None = 0,
    EditedImage = 1,     ///< the cel editor's image was closed or replaced
    AssetLists = 2,      ///< folders and assets on disk
    CameraRedraw = 4,    ///< the camera picture is to be drawn again
    Cells = 8,           ///< xsheet cells or placed sounds
    Palette = 16,        ///< colours of the palette
    Colors = 32,         ///< foreground or background colour
    Tools = 64,          ///< brush, pen or bucket mode
    Levels = 128,        ///< levels added or removed
    CameraCompose = 256, ///< the camera picture is to be composed again
    Paper = 512,         ///< what shines through the drawing under edit
    Preview = 1024       ///< what is played in place: another frame, begun, ended. Nothing of the scene
};

constexpr UpdateHint operator|(UpdateHint a, UpdateHint b) {
    return static_cast<UpdateHint>(static_cast<unsigned>(a) | static_cast<unsigned>(b));
}
/// Whether `hint` holds any bit of `bits`.
constexpr bool Holds(UpdateHint hint, UpdateHint bits) {
    return (static_cast<unsigned>(hint) & static_cast<unsigned>(bits)) != 0;
}

// The sums that are sent.
inline constexpr UpdateHint newFolderHint = UpdateHint::EditedImage | UpdateHint::AssetLists;   // 3
inline constexpr UpdateHint selectionHint = UpdateHint::CameraRedraw | UpdateHint::Cells;       // 12
inline constexpr UpdateHint paletteReloadHint = UpdateHint::AssetLists | UpdateHint::Palette;   // 18
inline constexpr UpdateHint folderHint = UpdateHint::EditedImage | paletteReloadHint;           // 19
inline constexpr UpdateHint structureHint = UpdateHint::Cells | UpdateHint::Levels;             // 136
inline constexpr UpdateHint pictureHint = UpdateHint::CameraRedraw | UpdateHint::CameraCompose; // 260
inline constexpr UpdateHint cellsAndPictureHint = pictureHint | UpdateHint::Cells;              // 268
inline constexpr UpdateHint folderDeletedHint = cellsAndPictureHint | newFolderHint;            // 271
inline constexpr UpdateHint structureAndPictureHint = cellsAndPictureHint | UpdateHint::Levels; // 396
inline constexpr UpdateHint everythingHint = static_cast<UpdateHint>(511);

} // namespace velmor
