#include "scene/GrabOperations.h"

#include "image/import/DibDecoder.h"
#include "image/import/ImageReaders.h"
#include "scene/ImportOperations.h"

namespace velmor {

namespace {

constexpr int celBits = 1;
constexpr int pictureBits = 24;
constexpr int anyThreshold = 128;       // a true-colour picture has none
constexpr const char* unnamed = "grab"; // an image without a path counts as not loaded

const char* FailureOf(SourceMode kind) {
    return kind == SourceMode::Cels ? "Error in import" : "Error in grab";
}

// The bits of a 1-bit bitmap in the layout of a line mask.
bool ReadScannedCel(CDibDecoder& scan, CCelImg& image) {
    const CSize size = scan.Size();
    CCelImg lines;
    if (!lines.CreateCel(size.width, size.height, unnamed))
        return false;
    // Which of the two colours a pixel has is what counts; two equal ones would leave that open.
    const CColor first = scan.ColorTable()[0];
    std::vector<CColor> row(static_cast<std::size_t>(size.width));
    for (int y = 0; y < size.height; ++y) {
        if (!scan.ReadRow(row))
            return false;
        for (int x = 0; x < size.width; ++x)
            lines.SetLine(x, y, row[static_cast<std::size_t>(x)] != first);
    }
    return static_cast<bool>(
        image.CreateCelFromBits(size.width, size.height, lines.LineMask(), {first, scan.ColorTable()[1]}, unnamed));
}

} // namespace

bool CGrabOperations::CanGrab(SourceMode kind) const {
    const CSceneModel& model = m_context.model;
    return m_context.Require(model.sceneOpen, "Internal Error : GetDataFromDIB called with no scene open") &&
           (kind == SourceMode::Pictures ||
            m_context.Require(!model.folderName.empty(),
                              "Internal Error : GetDataFromDIB called with no folder open"));
}

bool CGrabOperations::GetDataFromDIB(const Path& bitmapFile, SourceMode kind, int threshold) {
    if (!CanGrab(kind))
        return false;
    CCelImg image;
    const std::string name = Utf8Of(bitmapFile.filename());
    const CStatus read = kind == SourceMode::Cels ? ReadBitmapCel(image, bitmapFile, threshold, name)
                                                  : ReadBitmapPicture(image, bitmapFile, name);
    if (!m_context.Report(read)) {
        m_context.Show(FailureOf(kind));
        return false;
    }
    return Store(image, kind, FailureOf(kind));
}

bool CGrabOperations::GetDataFromDIB(std::span<const std::uint8_t> packedBitmap, SourceMode kind) {
    if (!CanGrab(kind) || !m_context.Require(!packedBitmap.empty(), "Could Not Lock Bitmap Memory"))
        return false;
    CDibDecoder scan;
    if (!m_context.Require(CDibDecoder::OpenPacked(packedBitmap, scan) == DibResult::Done, FailureOf(kind)))
        return false;
    const bool asCel = kind == SourceMode::Cels;
    if (!m_context.Require(scan.BitsPerPixel() == (asCel ? celBits : pictureBits),
                           asCel ? "Please scan black and white (1 bit) images only for cels."
                                 : "Please scan truecolor (24bit) images only for pictures."))
        return false;
    CCelImg image;
    const bool read =
        asCel ? ReadScannedCel(scan, image)
              : static_cast<bool>(ImportRows(image, scan, ImportKind::Picture, anyThreshold, unnamed, ""));
    return m_context.Require(read, FailureOf(kind)) && Store(image, kind, FailureOf(kind));
}

bool CGrabOperations::Store(CCelImg& image, SourceMode kind, const char* failure) {
    std::optional<std::string> name;
    while (!(name = m_imports.AskAssetName(kind)))
        if (m_context.prompter.AskYesNo("Do you want to cancel the grab operation ?")) {
            image.SetModified(false); // or it would be saved when it goes
            return false;
        }
    return m_imports.StoreImage(image, kind, *name, failure);
}

} // namespace velmor
