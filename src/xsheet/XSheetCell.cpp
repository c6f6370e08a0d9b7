#include "xsheet/XSheetCell.h"

#include "image/CelImg.h"

#include <array>
#include <bit>
#include <cmath>
#include <utility>

namespace velmor {

namespace {

CStatus EmptyCel(const char* operation) {
    return CStatus::Failure(std::string("Internal error : ") + operation + " called with empty xsheet cel");
}

} // namespace

bool CXSheetCell::IsIdenticalTo(const CXSheetCell& other) const {
    const auto numbers = [](const CXSheetCell& cell) {
        const CCellTransform& placed = cell.m_transform;
        return std::array{placed.posX,     placed.posY,         placed.scaleX, placed.scaleY,
                          placed.rotation, cell.m_transparency, cell.m_blurX,  cell.m_blurY};
    };
    using Bits = std::array<std::uint64_t, 8>;
    return ShowsSameAs(other) && m_size == other.m_size && m_note == other.m_note &&
           std::bit_cast<Bits>(numbers(*this)) == std::bit_cast<Bits>(numbers(other));
}

Path AssetFilePath(const Path& sceneFolder, std::string_view folder, std::string_view name) {
    // Concatenated, not joined: a name from a damaged file that looks like an absolute path stays in the scene.
    Path path = sceneFolder / "";
    path += PathOf(folder);
    path += Path::preferred_separator;
    path += PathOf(name);
    path += folder == picturesFolder ? ".rgba" : ".bit";
    return path;
}

void CXSheetCell::Expose(const CXSheetCell& shown) {
    CSheetNote note = std::move(m_note);
    *this = shown;
    m_note = std::move(note);
}

CXSheetCell CXSheetCell::WithoutNote() const {
    CXSheetCell cell;
    cell.Expose(*this);
    return cell;
}

CStatus CXSheetCell::Set(const Path& sceneFolder, const std::string& folder, const std::string& name, CSize frame) {
    CXSheetCell cell;
    cell.m_folderName = folder;
    cell.m_celName = name;
    const int middleX = frame.width / 2;
    const int middleY = frame.height / 2;
    cell.m_transform.posX = middleX;
    cell.m_transform.posY = middleY;
    CStatus status = CCelImg::GetDimensions(AssetFilePath(sceneFolder, folder, name), cell.m_size);
    *this = std::move(cell);
    return status;
}

CStatus CXSheetCell::ChangeName(const std::string& name) {
    if (!IsUsed())
        return EmptyCel("ChangeName");
    m_celName = name;
    return {};
}

CStatus CXSheetCell::CheckDimensions(const Path& sceneFolder) {
    if (!IsUsed())
        return EmptyCel("CheckDimensions");
    return CCelImg::GetDimensions(AssetFilePath(sceneFolder, m_folderName, m_celName), m_size);
}

CStatus CXSheetCell::GetCelSize(CSize& size) const {
    size = IsUsed() ? m_size : CSize{};
    return IsUsed() ? CStatus() : EmptyCel("GetCelSize");
}

CStatus CXSheetCell::Move(int dx, int dy) {
    if (!IsUsed())
        return EmptyCel("Move");
    m_transform.posX += dx;
    m_transform.posY += dy;
    return {};
}

CStatus CXSheetCell::Scale(int dx, int dy) {
    if (!IsUsed())
        return EmptyCel("Scale");
    const double width = m_size.width * m_transform.scaleX;
    const double height = m_size.height * m_transform.scaleY;
    const double growth = ((dx + width) / width + (dy + height) / height) * 0.5;
    if (std::isfinite(growth)) {
        m_transform.scaleX *= growth;
        m_transform.scaleY *= growth;
    }
    return {};
}

CStatus CXSheetCell::Rotate(double angle) {
    if (!IsUsed())
        return EmptyCel("Scale"); // turning shares the text of scaling
    m_transform.rotation += angle;
    return {};
}

CStatus CXSheetCell::SetPos(double x, double y) {
    if (!IsUsed())
        return EmptyCel("SetPos");
    m_transform.posX = x;
    m_transform.posY = y;
    return {};
}

CStatus CXSheetCell::SetRot(double rotation) {
    if (!IsUsed())
        return EmptyCel("SetRot");
    m_transform.rotation = rotation;
    return {};
}

CStatus CXSheetCell::SetScale(double scaleX, double scaleY) {
    if (!IsUsed())
        return EmptyCel("SetScale");
    m_transform.scaleX = scaleX;
    m_transform.scaleY = scaleY;
    return {};
}

CStatus CXSheetCell::SetTrans(double transparency) {
    if (!IsUsed())
        return EmptyCel("SetTrans");
    m_transparency = transparency;
    return {};
}

CStatus CXSheetCell::SetBlur(double blurX, double blurY) {
    if (!IsUsed())
        return EmptyCel("SetBlur");
    m_blurX = blurX;
    m_blurY = blurY;
    return {};
}

CXSheetCell CXSheetCell::FromFile(std::string folder, std::string name, const CCellTransform& transform,
                                  double transparency, double blurX, double blurY, CSize size) {
    CXSheetCell cell;
    cell.m_size = size;
    cell.m_celName = std::move(name);
    cell.m_folderName = std::move(folder);
    cell.m_transform = transform;
    cell.m_transparency = transparency;
    cell.m_blurX = blurX;
    cell.m_blurY = blurY;
    return cell;
}

} // namespace velmor
