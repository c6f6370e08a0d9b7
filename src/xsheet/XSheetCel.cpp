#include "xsheet/XSheetCel.h"

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

bool CXSheetCel::IsIdenticalTo(const CXSheetCel& other) const {
    const auto numbers = [](const CXSheetCel& cel) {
        const CCelTransform& placed = cel.m_transform;
        return std::array{placed.posX,     placed.posY,        placed.scaleX, placed.scaleY,
                          placed.rotation, cel.m_transparency, cel.m_blurX,   cel.m_blurY};
    };
    using Bits = std::array<std::uint64_t, 8>;
    return ShowsSameAs(other) && m_size == other.m_size &&
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

CStatus CXSheetCel::Set(const Path& sceneFolder, const std::string& folder, const std::string& name, CSize frame) {
    CXSheetCel cel;
    cel.m_folderName = folder;
    cel.m_celName = name;
    const int middleX = frame.width / 2;
    const int middleY = frame.height / 2;
    cel.m_transform.posX = middleX;
    cel.m_transform.posY = middleY;
    CStatus status = CCelImg::GetDimensions(AssetFilePath(sceneFolder, folder, name), cel.m_size);
    *this = std::move(cel);
    return status;
}

CStatus CXSheetCel::ChangeName(const std::string& name) {
    if (!IsUsed())
        return EmptyCel("ChangeName");
    m_celName = name;
    return {};
}

CStatus CXSheetCel::CheckDimensions(const Path& sceneFolder) {
    if (!IsUsed())
        return EmptyCel("CheckDimensions");
    return CCelImg::GetDimensions(AssetFilePath(sceneFolder, m_folderName, m_celName), m_size);
}

CStatus CXSheetCel::GetCelSize(CSize& size) const {
    size = IsUsed() ? m_size : CSize{};
    return IsUsed() ? CStatus() : EmptyCel("GetCelSize");
}

CStatus CXSheetCel::Move(int dx, int dy) {
    if (!IsUsed())
        return EmptyCel("Move");
    m_transform.posX += dx;
    m_transform.posY += dy;
    return {};
}

CStatus CXSheetCel::Scale(int dx, int dy) {
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

CStatus CXSheetCel::Rotate(double angle) {
    if (!IsUsed())
        return EmptyCel("Scale"); // turning shares the text of scaling
    m_transform.rotation += angle;
    return {};
}

CStatus CXSheetCel::SetPos(double x, double y) {
    if (!IsUsed())
        return EmptyCel("SetPos");
    m_transform.posX = x;
    m_transform.posY = y;
    return {};
}

CStatus CXSheetCel::SetRot(double rotation) {
    if (!IsUsed())
        return EmptyCel("SetRot");
    m_transform.rotation = rotation;
    return {};
}

CStatus CXSheetCel::SetScale(double scaleX, double scaleY) {
    if (!IsUsed())
        return EmptyCel("SetScale");
    m_transform.scaleX = scaleX;
    m_transform.scaleY = scaleY;
    return {};
}

CStatus CXSheetCel::SetTrans(double transparency) {
    if (!IsUsed())
        return EmptyCel("SetTrans");
    m_transparency = transparency;
    return {};
}

CStatus CXSheetCel::SetBlur(double blurX, double blurY) {
    if (!IsUsed())
        return EmptyCel("SetBlur");
    m_blurX = blurX;
    m_blurY = blurY;
    return {};
}

CXSheetCel CXSheetCel::FromFile(std::string folder, std::string name, const CCelTransform& transform,
                                double transparency, double blurX, double blurY, CSize size) {
    CXSheetCel cel;
    cel.m_size = size;
    cel.m_celName = std::move(name);
    cel.m_folderName = std::move(folder);
    cel.m_transform = transform;
    cel.m_transparency = transparency;
    cel.m_blurX = blurX;
    cel.m_blurY = blurY;
    return cel;
}

} // namespace velmor
