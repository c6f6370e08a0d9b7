#include "views/cel/PieceClipboard.h"

#include "image/select/PieceBytes.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QImage>
#include <QImageReader>
#include <QMimeData>

#include <new>
#include <span>

namespace velmor {

namespace {

constexpr const char* pieceType = "application/x-personal-velmor-piece";
constexpr const char* pngType = "image/png";

std::span<const std::uint8_t> BytesIn(const QByteArray& array) {
    return {reinterpret_cast<const std::uint8_t*>(array.constData()), static_cast<std::size_t>(array.size())};
}

// The reader's own limit of memory holds, whatever size the bytes claim.
QImage DecodedPng(const QByteArray& bytes) {
    QBuffer buffer;
    buffer.setData(bytes);
    buffer.open(QIODevice::ReadOnly);
    return QImageReader(&buffer, "png").read();
}

QImage PictureIn(const QMimeData& data) {
    if (data.hasFormat(pngType))
        if (QImage decoded = DecodedPng(data.data(pngType)); !decoded.isNull())
            return decoded;
    return data.hasImage() ? qvariant_cast<QImage>(data.imageData()) : QImage();
}

CPiece PieceOfPicture(const QImage& picture, CPoint middle) {
    const QImage rgba = picture.convertToFormat(QImage::Format_RGBA8888);
    if (rgba.isNull())
        return {};
    const CPoint corner{middle.x - rgba.width() / 2, middle.y - rgba.height() / 2};
    return PieceOfPixels({rgba.constBits(), static_cast<std::size_t>(rgba.sizeInBytes())},
                         {rgba.width(), rgba.height()}, corner);
}

} // namespace

std::unique_ptr<QMimeData> MimeOf(const CPiece& piece) {
    auto data = std::make_unique<QMimeData>();
    const std::vector<std::uint8_t> bytes = BytesOf(piece);
    data->setData(pieceType,
                  QByteArray(reinterpret_cast<const char*>(bytes.data()), static_cast<qsizetype>(bytes.size())));
    const std::vector<std::uint8_t> pixels = PixelsOf(piece);
    const qsizetype rowSize = qsizetype{4} * piece.Width();
    const QImage picture(pixels.data(), piece.Width(), piece.Height(), rowSize, QImage::Format_RGBA8888);
    data->setImageData(picture.copy()); // the bytes go, the picture stays
    return data;
}

std::optional<CPiece> PieceOf(const QMimeData& data, CPoint middle) {
    try {
        if (std::optional<CPiece> piece = ReadPiece(BytesIn(data.data(pieceType))))
            return piece;
        CPiece piece = PieceOfPicture(PictureIn(data), middle);
        return piece.IsEmpty() ? std::nullopt : std::optional(std::move(piece));
    } catch (const std::bad_alloc&) {
        return std::nullopt;
    }
}

void PutOnClipboard(const CPiece& piece) {
    QGuiApplication::clipboard()->setMimeData(MimeOf(piece).release()); // its own from here on
}

std::optional<CPiece> TakeFromClipboard(CPoint middle) {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    return data != nullptr ? PieceOf(*data, middle) : std::nullopt;
}

bool HasPieceOnClipboard() {
    const QMimeData* data = QGuiApplication::clipboard()->mimeData();
    return data != nullptr && (data->hasFormat(pieceType) || data->hasImage());
}

} // namespace velmor
