#include "scene/history/PaintingStep.h"

#include "scene/SceneModel.h"

#include <algorithm>
#include <new>

namespace velmor {

namespace {

constexpr int leastShown =
    96; ///< pixels of the image that a picture shows across, so that a dot has its surroundings

// A part of an image with the proportions of the picture, with the rectangle in its middle as far as it goes.
CRect ShownPart(const CRect& around, int width, int height) {
    const int wanted =
        std::max({around.endX - around.x + 16, leastShown,
                  (around.endY - around.y + 16) * CHistoryPicture::mostWidth / CHistoryPicture::mostHeight});
    const int shownWidth = std::min(wanted, width);
    const int shownHeight = std::min(wanted * CHistoryPicture::mostHeight / CHistoryPicture::mostWidth, height);
    const int x = std::clamp((around.x + around.endX - shownWidth) / 2, 0, width - shownWidth);
    const int y = std::clamp((around.y + around.endY - shownHeight) / 2, 0, height - shownHeight);
    return {x, y, x + shownWidth, y + shownHeight};
}

std::uint8_t OnPaper(int value, int alpha) {
    return static_cast<std::uint8_t>(255 + (value - 255) * alpha / 255);
}

// The darkest of a few pixels, so that lines stay.
CColor Darkest(const CCelImg& image, const CRect& pixels) {
    CColor darkest{255, 255, 255, 255};
    int least = 3 * 255 + 1;
    const int stepX = std::max(1, (pixels.endX - pixels.x) / 3);
    const int stepY = std::max(1, (pixels.endY - pixels.y) / 3);
    for (int y = pixels.y; y < pixels.endY; y += stepY)
        for (int x = pixels.x; x < pixels.endX; x += stepX) {
            const CColor color = image.ColorAt(x, y);
            const CColor shown{OnPaper(color.blue, color.alpha), OnPaper(color.green, color.alpha),
                               OnPaper(color.red, color.alpha), 255};
            if (const int sum = shown.blue + shown.green + shown.red; sum < least) {
                least = sum;
                darkest = shown;
            }
        }
    return darkest;
}

void DropLostAlpha(CCelImg& image, CKeptTiles& before) {
    if (!image.IsAlphaLostInFile())
        return;
    before.Keep(image, {0, 0, image.Width(), image.Height()});
    std::ranges::fill(image.PlaneOf(Channel::Alpha), std::uint8_t{255});
}

} // namespace

CHistoryPicture MakePicture(const CCelImg& image, const CRect& around) {
    if (image.GetLoadState() == LoadState::Nothing)
        return {};
    const CRect part = ShownPart(around, image.Width(), image.Height());
    const int partWidth = part.endX - part.x;
    const int partHeight = part.endY - part.y;
    CHistoryPicture picture;
    picture.width = std::min(CHistoryPicture::mostWidth, partWidth);
    picture.height = std::clamp(picture.width * partHeight / partWidth, 1, CHistoryPicture::mostHeight);
    picture.rgb.reserve(static_cast<std::size_t>(picture.width * picture.height * 3));
    for (int row = picture.height - 1; row >= 0; --row)
        for (int column = 0; column < picture.width; ++column) {
            const int x = part.x + column * partWidth / picture.width;
            const int y = part.y + row * partHeight / picture.height;
            const int endX = std::max(x + 1, part.x + (column + 1) * partWidth / picture.width);
            const int endY = std::max(y + 1, part.y + (row + 1) * partHeight / picture.height);
            const CColor color = Darkest(image, {x, y, endX, endY});
            picture.rgb.insert(picture.rgb.end(), {color.red, color.green, color.blue});
        }
    return picture;
}

void LeavePaintingStep(CSceneModel& model, const std::string& name, CKeptTiles& before) {
    CHistory& history = model.history;
    const std::string file = model.SceneFile(model.celImg.FilePath());
    if (file.empty() || !history.IsOn())
        return;
    try {
        DropLostAlpha(model.celImg, before);
        CStepChanges changes;
        changes.image = file;
        changes.painting = CImageChange(before, model.celImg);
        if (changes.painting.IsEmpty())
            return;
        CStepHeading heading;
        heading.name = name + " on " + TitleOfFile(file);
        heading.picture = MakePicture(model.celImg, changes.painting.Bounds());
        history.Record(std::move(heading), changes, model.Scene().xsheet, model.Session());
    } catch (const std::bad_alloc&) {
        history.AddBreak(name); // what was painted stays; the way back is lost
    }
}

} // namespace velmor
