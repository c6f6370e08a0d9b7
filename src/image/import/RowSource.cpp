#include "image/import/RowSource.h"

#include "image/import/LineThreshold.h"

#include <exception>
#include <string>
#include <vector>

namespace velmor {

namespace {

void StorePictureRow(CCelImg& picture, int y, std::span<const CColor> row) {
    const std::size_t first = picture.IndexOf(0, y);
    std::uint8_t* const red = picture.PlaneOf(Channel::Red).data() + first;
    std::uint8_t* const green = picture.PlaneOf(Channel::Green).data() + first;
    std::uint8_t* const blue = picture.PlaneOf(Channel::Blue).data() + first;
    std::uint8_t* const alpha = picture.PlaneOf(Channel::Alpha).data() + first;
    for (std::size_t x = 0; x < row.size(); ++x) {
        red[x] = row[x].red;
        green[x] = row[x].green;
        blue[x] = row[x].blue;
        alpha[x] = row[x].alpha;
    }
}

// The cel is white paper without lines before.
void StoreCelRow(CCelImg& cel, int y, std::span<const CColor> row, int threshold) {
    const CLineThreshold lines(threshold);
    const auto width = static_cast<int>(row.size());
    for (int x = 0; x < width; ++x) {
        const CColor& color = row[static_cast<std::size_t>(x)];
        if (lines.IsLine(color.red, color.green, color.blue)) {
            cel.SetLine(x, y, true);
            cel.SetColorAt(x, y, {0, 0, 0, 255});
        }
    }
}

} // namespace

CStatus ImportRows(CCelImg& image, CRowSource& source, ImportKind kind, int threshold, const Path& path,
                   const std::string& message) {
    const auto [width, height] = source.Size();
    const Path target = path; // it may be the image's own path, which is emptied first
    CStatus created = kind == ImportKind::Cel ? image.CreateCel(width, height, target)
                                              : image.CreatePicture(width, height, target);
    if (!created)
        return created;
    try {
        std::vector<CColor> row(static_cast<std::size_t>(width));
        for (int y = 0; y < height; ++y) {
            if (!source.ReadRow(row)) {
                image.Clear();
                return CStatus::Failure(message);
            }
            if (kind == ImportKind::Cel)
                StoreCelRow(image, y, row, threshold);
            else
                StorePictureRow(image, y, row);
        }
    } catch (const std::exception&) {
        image.Clear();
        return CStatus::Failure("Unable to allocate memory for cel!");
    }
    return {};
}

} // namespace velmor
