#include "scene/ImportedImage.h"

#include "image/import/ImageReaders.h"
#include "image/paint/Despeckle.h"

#include <algorithm>
#include <string>

namespace velmor {

namespace {

std::string LowerExtension(const Path& file) {
    std::string extension = Utf8Of(file.extension());
    std::ranges::transform(extension, extension.begin(),
                           [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return extension;
}

CStatus Read(CCelImg& image, const Path& file, SourceMode kind, int threshold) {
    const std::string extension = LowerExtension(file);
    const std::string shownName = Utf8Of(file.filename());
    const bool asCel = kind == SourceMode::Cels;
    if (extension == ".tga")
        return asCel ? ReadTargaCel(image, file, threshold, shownName) : ReadTargaPicture(image, file, shownName);
    if (extension == ".bmp")
        return asCel ? ReadBitmapCel(image, file, threshold, shownName) : ReadBitmapPicture(image, file, shownName);
    if (extension == ".png")
        return asCel ? ReadPngCel(image, file, threshold, shownName) : ReadPngPicture(image, file, shownName);
    if (extension == ".tif" || extension == ".tiff")
        return asCel ? ReadTiffCel(image, file, threshold, shownName) : ReadTiffPicture(image, file, shownName);
    return CStatus::Failure("");
}

} // namespace

CImportedImage ReadImportedImage(const Path& file, SourceMode kind, const CLineRules& rules) {
    CImportedImage read;
    read.status = Read(read.image, file, kind, rules.threshold);
    if (read.status && kind == SourceMode::Cels) {
        read.specks = RemoveSpecks(read.image, rules.specks);
        read.image.SetModified(false); // or it would be saved in the place of the file
    }
    return read;
}

} // namespace velmor
