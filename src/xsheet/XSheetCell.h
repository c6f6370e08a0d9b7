#pragma once

#include "image/Geometry.h"
#include "platform/Status.h"
#include "platform/files/Files.h"
#include "xsheet/SheetNote.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace velmor {

/// Folder name that marks a picture.
inline constexpr std::string_view picturesFolder = "_Pictures_";

/// Position, scale and rotation of a cell.
struct CCellTransform {
    double posX = 0; ///< frame pixels, the image's centre
    double posY = 0;
    double scaleX = 1; ///< factors
    double scaleY = 1;
    double rotation = 0; ///< radians

    bool operator==(const CCellTransform&) const = default;
};

/// One cell of the xsheet: which cel or picture shows there, how it is placed, and its effects. A cell is used when
/// its cel name is not empty. An operation on an empty cell changes nothing and fails with the text to show. A note
/// can be at any cell.
class CXSheetCell {
public:
    /// With its note.
    void Clear() { *this = CXSheetCell{}; }
    /// Shows nothing any more; its note stays.
    void ClearAsset() { Expose({}); }
    /// Becomes like another cell in all but its own note, which belongs to this place of the sheet.
    void Expose(const CXSheetCell& shown);
    /// The cell without its note: what further frames of a hold are.
    CXSheetCell WithoutNote() const;
    const CSheetNote& Note() const { return m_note; }
    void SetNote(CSheetNote note) { m_note = std::move(note); }
    bool IsUsed() const { return !m_celName.empty(); }
    bool IsPicture() const { return m_folderName == picturesFolder; }
    /// Whether both show the same asset (or both are empty).
    bool ShowsSameAs(const CXSheetCell& other) const {
        return m_celName == other.m_celName && m_folderName == other.m_folderName;
    }
    bool Shows(std::string_view folder, std::string_view name) const {
        return m_celName == name && m_folderName == folder;
    }

    /// A fresh cell for an asset: its size read from its file, centred in the frame (integer halves). When the size
    /// cannot be read the cell is set all the same, with size 0 x 0, and the status is that of the reader. It has
    /// no note.
    CStatus Set(const Path& sceneFolder, const std::string& folder, const std::string& name, CSize frame);
    CStatus ChangeName(const std::string& name);
    /// Reads the size again from the image file; it stays as it is when that fails.
    CStatus CheckDimensions(const Path& sceneFolder);
    /// (0, 0) on an empty cell.
    CStatus GetCelSize(CSize& size) const;
    CStatus Move(int dx, int dy);
    /// Grows the image by as many pixels, by one factor for width and height (the mean of both growths). An image
    /// whose width or height is 0, or scaled to 0, is left alone.
    CStatus Scale(int dx, int dy);
    CStatus Rotate(double angle);
    CStatus SetPos(double x, double y);
    CStatus SetRot(double rotation);
    CStatus SetScale(double scaleX, double scaleY);
    CStatus SetTrans(double transparency);
    CStatus SetBlur(double blurX, double blurY);
    // Without a test for an empty cell.
    void SetSize(CSize size) { m_size = size; }
    void SetTransform(const CCellTransform& transform) { m_transform = transform; }
    /// For the reader of the xsheet file: everything as it stands.
    static CXSheetCell FromFile(std::string folder, std::string name, const CCellTransform& transform,
                                double transparency, double blurX, double blurY, CSize size);

    const std::string& CelName() const { return m_celName; }
    const std::string& FolderName() const { return m_folderName; }
    CSize Size() const { return m_size; }
    const CCellTransform& Transform() const { return m_transform; }
    double PosX() const { return m_transform.posX; }
    double PosY() const { return m_transform.posY; }
    double ScaleX() const { return m_transform.scaleX; }
    double ScaleY() const { return m_transform.scaleY; }
    double Rotation() const { return m_transform.rotation; }
    double Transparency() const { return m_transparency; } ///< 0 to 100
    double BlurX() const { return m_blurX; }               ///< 1 to 50, 1 means none
    double BlurY() const { return m_blurY; }

    bool operator==(const CXSheetCell&) const = default;
    /// To the bit, so that -0 is not 0: files keep the difference.
    bool IsIdenticalTo(const CXSheetCell& other) const;

private:
    CSize m_size;
    std::string m_celName;
    std::string m_folderName;
    CCellTransform m_transform;
    double m_transparency = 0;
    double m_blurX = 1;
    double m_blurY = 1;
    CSheetNote m_note;
};

/// The image file of an asset: scene folder / folder / name + ".rgba" for the pictures folder, else + ".bit". The
/// names are taken as they stand.
Path AssetFilePath(const Path& sceneFolder, std::string_view folder, std::string_view name);

} // namespace velmor
