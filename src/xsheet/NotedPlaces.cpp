#include "xsheet/NotedPlaces.h"

#include <algorithm>

namespace velmor {

std::vector<CNotedPlace> NotedPlaces(const CScene& scene) {
    std::vector<CNotedPlace> places;
    const int frames = std::min(scene.xsheet.FrameCount(), CFrameNotes::capacity);
    for (int frame = 0; frame < frames; ++frame) {
        if (!scene.frameNotes.At(frame).IsEmpty())
            places.push_back({frame, std::nullopt});
        for (int level = 0; level < scene.xsheet.LevelCount(); ++level)
            if (!scene.xsheet.Cell(level, frame).Note().IsEmpty())
                places.push_back({frame, level});
    }
    return places;
}

const CSheetNote& NoteAt(const CScene& scene, const CNotedPlace& place) {
    return place.level ? scene.xsheet.Cell(*place.level, place.frame).Note() : scene.frameNotes.At(place.frame);
}

} // namespace velmor
