#include "views/xsheet/SheetPictures.h"

#include "image/CelImg.h"
#include "views/AssetThumbnails.h"

#include <QImage>
#include <algorithm>
#include <utility>

namespace velmor {

namespace {

constexpr std::size_t mostKept = 1000;
constexpr std::size_t mostWanted = 500; ///< more than fit on a screen

} // namespace

CSheetPictures::CSheetPictures(double scale, std::function<void()> made) : m_scale(scale), m_told(std::move(made)) {
    m_idle.setSingleShot(true);
    QObject::connect(&m_idle, &QTimer::timeout, &m_idle, [this] { MakeNext(); });
}

void CSheetPictures::SetSize(QSize most) {
    if (std::exchange(m_size, most) == most)
        return;
    m_made.clear();
    m_wanted.clear();
}

QPixmap CSheetPictures::Find(const Path& file) {
    const auto known = m_made.find(file);
    if (known != m_made.end() && known->second.checked)
        return known->second.pixmap;
    const std::optional<CFileIdentity> identity = IdentifyFile(file);
    if (known != m_made.end() && known->second.identity == identity) {
        known->second.checked = true;
        return known->second.pixmap;
    }
    std::erase(m_wanted, file);
    m_wanted.push_back(file);
    if (m_wanted.size() > mostWanted)
        m_wanted.pop_front();
    m_idle.start(0);
    return known == m_made.end() ? QPixmap() : known->second.pixmap;
}

void CSheetPictures::Recheck() {
    for (auto& [file, entry] : m_made)
        entry.checked = false;
}

void CSheetPictures::MakeNext() {
    if (m_wanted.empty())
        return;
    const Path file = std::move(m_wanted.back());
    m_wanted.pop_back();
    if (m_made.size() >= mostKept)
        m_made.clear();
    CEntry& entry = m_made[file];
    entry = {IdentifyFile(file), {}, true};
    CCelImg image;
    if (entry.identity && image.Load(file))
        entry.pixmap = PaintThumbnail(ToQImage(image), m_size, m_scale);
    if (!m_wanted.empty())
        m_idle.start(0);
    m_told();
}

} // namespace velmor
